// SPDX-License-Identifier: MIT
#pragma once

/// The calls of the RPly library that read files; names and meanings are that library's, so that the two can
/// take each other's place. Functions that return an int return 1 for success and 0 for failure.
///
/// A file is opened, its header read, callbacks are set, and the body read, which calls them back for each
/// value in the order of the file. This implementation reads ASCII and both binary orders, takes memory only
/// for the header, and never reads beyond the file.
///
/// It is more lenient than it must be in three places: lines of the header may end in LF, CRLF or CR; unknown
/// lines before the first element are skipped; and elements without properties take no time.
extern "C" {

typedef struct t_ply_* p_ply;
typedef struct t_ply_element_* p_ply_element;
typedef struct t_ply_property_* p_ply_property;
typedef struct t_ply_argument_* p_ply_argument;

/// Receives the reason of each failure.
typedef void (*p_ply_error_cb)(p_ply ply, const char* message);
/// Receives a value; 0 stops the reading.
typedef int (*p_ply_read_cb)(p_ply_argument argument);

/// Null when the file can't be opened or doesn't begin as a PLY file. Without a callback, errors are printed
/// to stderr. `idata` and `pdata` are kept for ply_get_ply_user_data.
p_ply ply_open(const char* name, p_ply_error_cb error_cb, long idata, void* pdata);
int ply_get_ply_user_data(p_ply ply, void** pdata, long* idata);

int ply_read_header(p_ply ply);

/// Returns the number of instances of the element, or 0 when there is no such element or property.
long ply_set_read_cb(p_ply ply, const char* element_name, const char* property_name, p_ply_read_cb read_cb,
                     void* pdata, long idata);

int ply_read(p_ply ply);

/// Frees everything; the handle is gone in any case.
int ply_close(p_ply ply);

// What a callback may ask of its argument. Pointers may be null where the answer isn't wanted.

/// Instances count from 0.
int ply_get_argument_element(p_ply_argument argument, p_ply_element* element, long* instance_index);
/// `length` is the length of the list, 1 for a scalar. `value_index` is the place in the list, 0 for a
/// scalar, and -1 when the value is the list's length, which comes first.
int ply_get_argument_property(p_ply_argument argument, p_ply_property* property, long* length,
                              long* value_index);
int ply_get_argument_user_data(p_ply_argument argument, void** pdata, long* idata);
double ply_get_argument_value(p_ply_argument argument);

} // extern "C"
