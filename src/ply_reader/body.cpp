// SPDX-License-Identifier: MIT
#include "ply_reader/body.h"

#include "ply_reader/ascii_values.h"
#include "ply_reader/binary_values.h"
#include "ply_reader/header.h"

#include <limits>

namespace Quenza::Ply {

namespace {

void call(t_ply_argument_& argument) {
    if (!argument.property->read_cb(&argument))
        throw Error("stopped by the callback");
}

template <class Values>
void readList(Values& values, t_ply_argument_& argument) {
    const t_ply_property_& property = *argument.property;
    const double length = values.read(property.length_type);
    if (length < 0)
        throw Error("a list has a negative length");
    // On Windows a long has 32 bits.
    if (length >= double(std::numeric_limits<long>::max()))
        throw Error("a list is too long");
    argument.length = long(length);
    if (!property.read_cb) {
        values.skip(property.type, argument.length);
        return;
    }
    argument.value_index = -1;
    argument.value = length;
    call(argument);
    for (argument.value_index = 0; argument.value_index < argument.length; ++argument.value_index) {
        argument.value = values.read(property.type);
        call(argument);
    }
}

template <class Values>
void readInstance(Values& values, t_ply_argument_& argument) {
    for (t_ply_property_& property : argument.element->properties) {
        argument.property = &property;
        if (property.is_list) {
            readList(values, argument);
        } else if (property.read_cb) {
            argument.length = 1;
            argument.value_index = 0;
            argument.value = values.read(property.type);
            call(argument);
        } else {
            values.skip(property.type, 1);
        }
    }
}

template <class Values>
void readElements(Values values, Layout& layout) {
    for (t_ply_element_& element : layout.elements) {
        // Each value takes bytes of the file, which so bounds the loop; without properties nothing does.
        if (element.properties.empty())
            continue;
        t_ply_argument_ argument = {};
        argument.element = &element;
        for (argument.instance_index = 0; argument.instance_index < element.instances;
             ++argument.instance_index)
            readInstance(values, argument);
    }
}

} // namespace

void readBody(std::string_view body, Layout& layout) {
    switch (layout.format) {
    case Format::ASCII:
        readElements(AsciiValues(body), layout);
        break;
    case Format::LITTLE_ENDIAN_BINARY:
        readElements(BinaryValues<std::endian::little>(body), layout);
        break;
    case Format::BIG_ENDIAN_BINARY:
        readElements(BinaryValues<std::endian::big>(body), layout);
        break;
    }
}

} // namespace Quenza::Ply
