// SPDX-License-Identifier: MIT
#include "ply_reader/rply.h"

#include "foundation/mapped_file.h"
#include "ply_reader/body.h"
#include "ply_reader/header.h"
#include "ply_reader/layout.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <memory>

struct t_ply_ {
    t_ply_(const char* name, p_ply_error_cb error, long i, void* p)
        : file(name), error_cb(error), idata(i), pdata(p) {}

    Quenza::MappedFile file;
    Quenza::Ply::Layout layout;
    std::size_t body = 0; ///< Place of the body in the file; 0 until the header was read.
    p_ply_error_cb error_cb;
    long idata;
    void* pdata;
};

namespace {

void printError(p_ply /*ply*/, const char* message) {
    std::fprintf(stderr, "RPly: %s\n", message);
}

/// Runs one step. Nothing may be thrown at callers, who may be C.
template <class Step>
int succeeds(p_ply ply, p_ply_error_cb error_cb, Step&& step) {
    try {
        step();
        return 1;
    } catch (const std::exception& e) {
        error_cb(ply, e.what());
        return 0;
    }
}

} // namespace

p_ply ply_open(const char* name, p_ply_error_cb error_cb, long idata, void* pdata) {
    const p_ply_error_cb report = error_cb ? error_cb : printError;
    std::unique_ptr<t_ply_> ply;
    succeeds(nullptr, report, [&] {
        auto opened = std::make_unique<t_ply_>(name, report, idata, pdata);
        if (!Quenza::Ply::hasMagic(opened->file.bytes()))
            throw Quenza::Ply::Error("not a PLY file");
        ply = std::move(opened);
    });
    return ply.release();
}

int ply_get_ply_user_data(p_ply ply, void** pdata, long* idata) {
    if (pdata)
        *pdata = ply->pdata;
    if (idata)
        *idata = ply->idata;
    return 1;
}

int ply_read_header(p_ply ply) {
    return succeeds(ply, ply->error_cb,
                    [ply] { ply->body = Quenza::Ply::readHeader(ply->file.bytes(), ply->layout); });
}

long ply_set_read_cb(p_ply ply, const char* element_name, const char* property_name, p_ply_read_cb read_cb,
                     void* pdata, long idata) {
    auto& elements = ply->layout.elements;
    const auto element =
        std::find_if(elements.begin(), elements.end(),
                     [element_name](const t_ply_element_& e) { return e.name == element_name; });
    if (element == elements.end())
        return 0;
    auto& properties = element->properties;
    const auto property =
        std::find_if(properties.begin(), properties.end(),
                     [property_name](const t_ply_property_& p) { return p.name == property_name; });
    if (property == properties.end())
        return 0;
    property->read_cb = read_cb;
    property->pdata = pdata;
    property->idata = idata;
    return element->instances;
}

int ply_read(p_ply ply) {
    return succeeds(ply, ply->error_cb, [ply] {
        if (ply->body == 0)
            throw Quenza::Ply::Error("the header was not read");
        Quenza::Ply::readBody(ply->file.bytes().substr(ply->body), ply->layout);
    });
}

int ply_close(p_ply ply) {
    delete ply;
    return 1;
}

int ply_get_argument_element(p_ply_argument argument, p_ply_element* element, long* instance_index) {
    if (element)
        *element = argument->element;
    if (instance_index)
        *instance_index = argument->instance_index;
    return 1;
}

int ply_get_argument_property(p_ply_argument argument, p_ply_property* property, long* length,
                              long* value_index) {
    if (property)
        *property = argument->property;
    if (length)
        *length = argument->length;
    if (value_index)
        *value_index = argument->value_index;
    return 1;
}

int ply_get_argument_user_data(p_ply_argument argument, void** pdata, long* idata) {
    if (pdata)
        *pdata = argument->property->pdata;
    if (idata)
        *idata = argument->property->idata;
    return 1;
}

double ply_get_argument_value(p_ply_argument argument) {
    return argument->value;
}
