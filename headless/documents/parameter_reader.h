// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/json_cursor.h"
#include "headless/documents/link_table.h"
#include "headless/documents/names.h"
#include "headless/model/node.h"

namespace headless {

Vector readVector(const JsonCursor& cursor);
/// Degrees, as radians.
float readAngle(const JsonCursor& cursor);
Vector readAngles(const JsonCursor& cursor);
/// Twelve numbers: offset, then the three axes.
Matrix readMatrix(const JsonCursor& cursor);
/// A path; relative ones start at the document's folder.
Filename readPath(const JsonCursor& cursor);
/// A word of the table or its number.
int32_t readWord(const JsonCursor& cursor, std::initializer_list<NamedValue> table);

/// Reads an object of parameters by number or name into the node. Values take the type that the node's type
/// declares, else that of the JSON value: true, 1, 1.0, "text", [x, y, z]; or say it: {"real": 1},
/// {"degrees": 90}, {"file": "a.png"}, {"link": "id"}, {"inExclude": ["id", ["id", flags], ...]},
/// {"time": [numerator, denominator]}, {"matrix": [...]}.
void readParameters(const JsonCursor& cursor, Node& node, LinkTable& links);

/// One value for parameter `id` of the node, as above.
GeData readValue(const JsonCursor& cursor, Node& node, int32_t id, LinkTable& links);
/// The number of a parameter that `key` names; fails at `cursor` for an unknown name.
int32_t parameterNumber(const JsonCursor& cursor, const Node& node, const std::string& key);

} // namespace headless
