// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <tinyxml.h>

namespace Quenza {

/// Tables of readers: rows with a member `element`, the name of the element that the row is about.

template <class Row, std::size_t N>
constexpr std::array<const char*, N> elementNames(const Row (&rows)[N]) {
    std::array<const char*, N> names{};
    for (std::size_t i = 0; i < N; ++i)
        names[i] = rows[i].element;
    return names;
}

/// The row of the element's name, or null.
template <class Row, std::size_t N>
const Row* rowOf(const Row (&rows)[N], const TiXmlElement& element) {
    for (const Row& row : rows)
        if (std::strcmp(row.element, element.Value()) == 0)
            return &row;
    return nullptr;
}

/// The first child element of `parent` that the table has a row for, or null.
template <class Row, std::size_t N>
const TiXmlElement* firstChildInTable(const Row (&rows)[N], const TiXmlElement& parent) {
    for (const TiXmlElement* child = parent.FirstChildElement(); child; child = child->NextSiblingElement())
        if (rowOf(rows, *child))
            return child;
    return nullptr;
}

} // namespace Quenza
