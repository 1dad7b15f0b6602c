// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vector.h"

#include <string>
#include <vector>

/// Files by UTF-8 paths. Failures throw FileUtilsExcep.
namespace Quenza::FileUtils {

class FileUtilsExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

/// `path` alone when it is absolute or `dir` is empty, else both with the platform's separator between.
String join(const String& dir, const String& path);

/// The text before the last separator; "" when there is none.
String getDirectory(const String& path);

/// The text behind the last separator.
String getFilename(const String& path);

/// A path without the extension of its file name: the last dot of that name and what follows.
String removeExtension(const String& path);

/// True for files and directories.
bool fileExists(const String& path);

bool directoryExists(const String& path);

/// Creates one directory: "Failed to create directory '" + path + "'".
void createDir(const String& path);

/// Names of files and folders, in byte order: "Failed to open dir '" + path + "': " + system text.
Vector<String> getFilesInDir(const String& path);

/// In bytes: "CreateFile failed: " or "GetFileSizeEx failed: " + system text, on every platform.
u64 getFileSize(const String& path);

/// Replaces the file: "Could not open '" + path + "' for writing." or "Write to '" + path + "' failed.".
void writeEntireFile(const String& path, const void* data, u64 size);
void writeEntireFile(const String& path, const std::string& data);
void writeEntireFile(const String& path, const std::vector<unsigned char>& data);

/// "could not open '" + path + "' for reading.".
std::string readEntireFile(const String& path);

/// Replaces `b`: "Failed to copy file '" + a + "' to '" + b + "'".
void copyFile(const String& a, const String& b);

/// Replaces `b`: "Failed to move file '" + a + "' to '" + b + "'".
void moveFile(const String& a, const String& b);

/// "Failed to delete file '" + path + "'".
void deleteFile(const String& path);

/// An empty directory: "Failed to delete directory '" + path + "'".
void deleteDirectory(const String& path);

/// The path with the case that its parts have on disk: "Could not find file '" + path + "'". An exact match
/// goes before one that differs in ASCII case.
String getActualOSPath(const String& path);

/// Time of a file's last change in UTC, such as "Wed, 02 Jan 2013 10:20:30".
String getFileTimeText(const String& path);

/// The text form behind getFileTimeText; `seconds` since 1970 UTC.
String fileTimeToString(i64 seconds);

} // namespace Quenza::FileUtils
