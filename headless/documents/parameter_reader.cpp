// SPDX-License-Identifier: MIT
#include "headless/documents/parameter_reader.h"

#include "foundation/file_utils.h"
#include "headless/documents/document_units.h"
#include "headless/documents/names.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "host/inexclude.h"

#include <algorithm>
#include <charconv>

namespace headless {

namespace {

GeData readCycleOrInteger(const JsonCursor& cursor, const Parameter* parameter) {
    if (!cursor.json().is_string()) {
        return cursor.json().is_boolean() ? GeData(cursor.boolean()) : GeData(cursor.integer());
    }
    std::string known;
    if (parameter && parameter->entry) {
        for (const resources::CycleItem& item : parameter->entry->cycle) {
            if (item.symbol == cursor.text() || item.label == cursor.text()) {
                return GeData(item.value);
            }
            known += (known.empty() ? "" : ", ") + item.symbol;
        }
    }
    cursor.fail("\"" + cursor.text() + "\" is no value of this parameter" +
                (known.empty() ? "; a whole number is expected" : "; known are " + known));
}

GeData readInExclude(const JsonCursor& cursor, Node& node, int32_t id, LinkTable& links) {
    for (size_t i = 0, count = cursor.arraySize(); i < count; ++i) {
        const JsonCursor element = cursor.at(i);
        const bool hasFlags = element.json().is_array();
        if (hasFlags) {
            element.expectCount(2);
        }
        const int32_t flags = hasFlags ? element.at(size_t{1}).integer() : 0;
        // Each adds itself when its node stands, so that the list keeps its order.
        links.link(hasFlags ? element.at(size_t{0}) : element, Obase, [&node, id, flags](Node& target) {
            if (auto* const list = node.data.GetCustomDataType(id, CUSTOMDATATYPE_INEXCLUDE_LIST)) {
                static_cast<InExcludeData*>(list)->InsertObject(toHost(&target), flags);
            }
        });
    }
    return GeData(InExcludeData());
}

GeData readLink(const JsonCursor& cursor, Node& node, int32_t id, LinkTable& links) {
    if (!cursor.json().is_null()) {
        links.link(cursor, 0, [&node, id](Node& target) {
            node.restoreParameter(id, GeData(BaseLink(toHost(&target))));
        });
    }
    return GeData(BaseLink());
}

BaseTime readTime(const JsonCursor& cursor) {
    cursor.expectCount(2);
    const double denominator = cursor.at(size_t{1}).number();
    if (!(denominator > 0.0)) {
        cursor.fail("the second number of a time must be above 0");
    }
    return BaseTime(cursor.at(size_t{0}).number(), denominator);
}

GeData readTyped(const JsonCursor& cursor, Node& node, int32_t id, LinkTable& links) {
    if (cursor.json().size() != 1) {
        cursor.fail("one key that names the value's type is expected, such as {\"real\": 1}");
    }
    const std::string type = cursor.json().begin().key();
    const JsonCursor value = cursor.at(type.c_str());
    if (type == "bool") {
        return GeData(value.boolean());
    }
    if (type == "long") {
        return GeData(value.integer());
    }
    if (type == "real") {
        return GeData(value.real());
    }
    if (type == "degrees") {
        return GeData(readAngle(value));
    }
    if (type == "text") {
        return GeData(String(value.text()));
    }
    if (type == "file") {
        return GeData(readPath(value));
    }
    if (type == "vector") {
        return GeData(readVector(value));
    }
    if (type == "matrix") {
        return GeData(readMatrix(value));
    }
    if (type == "time") {
        return GeData(readTime(value));
    }
    if (type == "link") {
        return readLink(value, node, id, links);
    }
    if (type == "inExclude") {
        return readInExclude(value, node, id, links);
    }
    cursor.fail("unknown type \"" + type +
                "\"; known are bool, long, real, degrees, text, file, vector, matrix, time, link, inExclude");
}

GeData readByJsonType(const JsonCursor& cursor) {
    const Json& json = cursor.json();
    if (json.is_boolean()) {
        return GeData(json.get<bool>());
    }
    if (json.is_number_integer()) {
        return GeData(cursor.integer());
    }
    if (json.is_number()) {
        return GeData(cursor.real());
    }
    if (json.is_string()) {
        return GeData(String(cursor.text()));
    }
    if (json.is_array()) {
        return GeData(readVector(cursor));
    }
    cursor.fail("null is no value of this parameter");
}

} // namespace

Vector readVector(const JsonCursor& cursor) {
    cursor.expectCount(3);
    return {cursor.at(size_t{0}).real(), cursor.at(size_t{1}).real(), cursor.at(size_t{2}).real()};
}

float readAngle(const JsonCursor& cursor) {
    return radiansOf(cursor.number());
}

Vector readAngles(const JsonCursor& cursor) {
    cursor.expectCount(3);
    return {readAngle(cursor.at(size_t{0})), readAngle(cursor.at(size_t{1})),
            readAngle(cursor.at(size_t{2}))};
}

Matrix readMatrix(const JsonCursor& cursor) {
    cursor.expectCount(12);
    float values[12];
    for (size_t i = 0; i < 12; ++i) {
        values[i] = cursor.at(i).real();
    }
    const auto vector = [&values](size_t at) { return Vector(values[at], values[at + 1], values[at + 2]); };
    return {vector(0), vector(3), vector(6), vector(9)};
}

Filename readPath(const JsonCursor& cursor) {
    if (cursor.text().empty()) {
        return Filename();
    }
    return Filename(String(
        Quenza::FileUtils::join(Quenza::FileUtils::getDirectory(cursor.file()), cursor.text()).view()));
}

int32_t readWord(const JsonCursor& cursor, std::initializer_list<NamedValue> table) {
    if (cursor.json().is_number()) {
        const int32_t value = cursor.integer();
        if (!nameOfValue(table, value)) {
            cursor.fail(std::to_string(value) + " is unknown; known are " + listOfNames(table));
        }
        return value;
    }
    const std::optional<int32_t> value = valueOfName(table, cursor.text());
    if (!value) {
        cursor.fail("\"" + cursor.text() + "\" is unknown; known are " + listOfNames(table));
    }
    return *value;
}

int32_t parameterNumber(const JsonCursor& cursor, const Node& node, const std::string& key) {
    int32_t id = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), id);
    if (error == std::errc() && end == key.data() + key.size()) {
        return id;
    }
    const std::optional<Parameter> parameter = findParameter(node.type(), key);
    if (!parameter) {
        cursor.fail("the node's type has no parameter \"" + key + "\"; a number works as well");
    }
    return parameter->id;
}

GeData readValue(const JsonCursor& cursor, Node& node, int32_t id, LinkTable& links) {
    if (cursor.json().is_object()) {
        return readTyped(cursor, node, id, links);
    }
    const std::optional<Parameter> parameter = findParameter(node.type(), id);
    switch (parameter ? parameter->kind : ParameterKind::other) {
    case ParameterKind::boolean:
        return GeData(cursor.json().is_number() ? cursor.integer(0, 1) != 0 : cursor.boolean());
    case ParameterKind::integer:
        return readCycleOrInteger(cursor, &*parameter);
    case ParameterKind::real:
        return GeData(cursor.real());
    case ParameterKind::vector:
        return GeData(readVector(cursor));
    case ParameterKind::string:
        return GeData(String(cursor.text()));
    case ParameterKind::filename:
        return GeData(readPath(cursor));
    case ParameterKind::link:
        return readLink(cursor, node, id, links);
    case ParameterKind::time:
        return GeData(readTime(cursor));
    case ParameterKind::inExclude:
        return readInExclude(cursor, node, id, links);
    case ParameterKind::other:
        break;
    }
    return readByJsonType(cursor);
}

void readParameters(const JsonCursor& cursor, Node& node, LinkTable& links) {
    if (!cursor.json().is_object()) {
        cursor.fail("an object {\"number or name\": value, ...} is expected");
    }
    // By rising number, whatever the keys are: of a camera that tells more than its lens needs, the field of
    // view has the last word.
    std::vector<std::pair<int32_t, std::string>> order;
    for (const auto& [key, json] : cursor.json().items()) {
        order.emplace_back(parameterNumber(cursor.at(key.c_str()), node, key), key);
    }
    std::sort(order.begin(), order.end());
    for (const auto& [id, key] : order) {
        const JsonCursor value = cursor.at(key.c_str());
        node.restoreParameter(id, readValue(value, node, id, links));
    }
}

} // namespace headless
