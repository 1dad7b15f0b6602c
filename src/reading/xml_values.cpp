// SPDX-License-Identifier: MIT
#include "reading/xml_values.h"

#include "foundation/text_cursor.h"
#include "scene/rotation.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <tinyxml.h>
#include <vector>

namespace Quenza::SceneParseUtils {

namespace {

[[noreturn]] void fail(const std::string& message, const TiXmlNode& element) {
    throw SceneParseUtilsExcep(message + errorContext(element));
}

[[noreturn]] void failAtChild(const TiXmlNode& child) {
    fail("Found unexpected element '" + child.ValueTStr() + "'", child);
}

/// A text as people mean it who indent it: nothing around it, and a blank for white space side by side. Texts
/// that must not lose any stand in CDATA; a single line feed is kept, since writers make an entity of it.
std::string condensed(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i;
        while (end < text.size() && TextCursor::isWhitespace(text[end]))
            ++end;
        if (end == i)
            out += text[i++];
        else if (i > 0 && end < text.size())
            out += end - i == 1 ? text[i] : ' ';
        i = std::max(i, end);
    }
    return out;
}

/// The text of an element, copied only where it comes in several pieces. The element must outlive it.
class ElementText {
public:
    explicit ElementText(const TiXmlElement& element) {
        const TiXmlNode* const first = element.FirstChild();
        if (!first)
            return;
        if (first == element.LastChild() && first->ToText())
            view_ = first->ValueTStr();
        else
            join(element);
    }
    ElementText(const ElementText&) = delete;
    ElementText& operator=(const ElementText&) = delete;

    std::string_view view() const { return view_; }

private:
    void join(const TiXmlElement& element) {
        for (const TiXmlNode* node = element.FirstChild(); node; node = node->NextSibling()) {
            if (node->ToText())
                joined_ += node->ValueTStr();
            else if (node->ToElement())
                failAtChild(*node);
        }
        view_ = joined_;
    }

    std::string joined_;
    std::string_view view_;
};

/// The element's text must be a value and nothing more. `word` names the kind in messages; `parse(cursor,
/// value)` is false where no value begins.
template <class Value, class Parse>
Value parseWhole(const TiXmlElement& element, const char* word, const Parse& parse) {
    const ElementText text(element);
    TextCursor cursor(text.view());
    Value value{};
    cursor.skipWhitespace();
    if (!parse(cursor, value))
        fail(std::string("Failed to parse ") + word + " from '" + elementText(element) + "'", element);
    cursor.skipWhitespace();
    if (!cursor.atEnd())
        fail(std::string("Parse error while parsing ") + word + " from '" + elementText(element) + "'",
             element);
    return value;
}

/// Numbers with white space between them.
bool parseNumbers(TextCursor& cursor, double* values, u32 count) {
    for (u32 i = 0; i < count; ++i) {
        const char* const end_of_last = cursor.position();
        cursor.skipWhitespace();
        if ((i > 0 && cursor.position() == end_of_last) || !cursor.parseDouble(values[i]))
            return false;
    }
    return true;
}

template <class Matrix>
Matrix parseMatrixNumbers(const TiXmlElement& element, u32 count, const char* message) {
    const ElementText text(element);
    TextCursor cursor(text.view());
    Matrix matrix;
    const bool parsed = parseNumbers(cursor, matrix.e, count);
    cursor.skipWhitespace();
    if (!parsed || !cursor.atEnd())
        fail(message, element);
    return matrix;
}

const TiXmlElement& valueElement(const TiXmlElement& parent, const char* name) {
    const TiXmlElement* const element = parent.FirstChildElement(name);
    if (!element)
        fail(std::string("could not find element '") + name + "'", parent);
    return *element;
}

template <class Value, class Read>
Value parseOptional(const TiXmlElement& parent, const char* name, const Value& default_value,
                    const Read& read) {
    const TiXmlElement* const element = parent.FirstChildElement(name);
    return element ? read(*element) : default_value;
}

/// Index of the element's name in the list, or its size.
std::size_t indexIn(std::span<const char* const> names, const TiXmlElement& element) {
    const std::string& name = element.ValueTStr();
    return std::size_t(std::find(names.begin(), names.end(), name) - names.begin());
}

} // namespace

std::string errorContext(const TiXmlNode& element) {
    return "  (In element '" + element.ValueTStr() + "', around line " + std::to_string(element.Row()) +
           ", column " + std::to_string(element.Column()) + ")";
}

i32 parseIntText(const TiXmlElement& element) {
    return parseWhole<i32>(element, "integer", [](TextCursor& c, i32& value) { return c.parseInt(value); });
}
u32 parseUIntText(const TiXmlElement& element) {
    return parseWhole<u32>(element, "unsigned integer",
                           [](TextCursor& c, u32& value) { return c.parseUInt(value); });
}
u64 parseUInt64Text(const TiXmlElement& element) {
    return parseWhole<u64>(element, "unsigned integer",
                           [](TextCursor& c, u64& value) { return c.parseUInt64(value); });
}
float parseFloatText(const TiXmlElement& element) {
    return parseWhole<float>(element, "float",
                             [](TextCursor& c, float& value) { return c.parseFloat(value); });
}
double parseDoubleText(const TiXmlElement& element) {
    return parseWhole<double>(element, "double",
                              [](TextCursor& c, double& value) { return c.parseDouble(value); });
}

bool parseBoolText(const TiXmlElement& element) {
    const ElementText text(element);
    if (text.view() != "true" && text.view() != "false")
        fail("Invalid boolean value (Should be 'true' or 'false').", element);
    return text.view() == "true";
}

Vec2d parseVec2Text(const TiXmlElement& element) {
    return parseWhole<Vec2d>(element, "Vec2", [](TextCursor& cursor, Vec2d& value) {
        double numbers[2];
        const bool parsed = parseNumbers(cursor, numbers, 2);
        if (parsed)
            value = {numbers[0], numbers[1]};
        return parsed;
    });
}
Vec3d parseVec3Text(const TiXmlElement& element) {
    return parseWhole<Vec3d>(element, "Vec3", [](TextCursor& cursor, Vec3d& value) {
        double numbers[3];
        const bool parsed = parseNumbers(cursor, numbers, 3);
        if (parsed)
            value = {numbers[0], numbers[1], numbers[2]};
        return parsed;
    });
}

Matrix2d parseMatrix2Text(const TiXmlElement& element) {
    return parseMatrixNumbers<Matrix2d>(element, 4, "syntax error while parsing Matrix2.");
}
Matrix3d parseMatrix3Text(const TiXmlElement& element) {
    return parseMatrixNumbers<Matrix3d>(element, 9, "syntax error while parsing Matrix.");
}
Matrix3d parseMatrix3Of(const TiXmlElement& holder) {
    if (const TiXmlElement* const matrix = holder.FirstChildElement("matrix"))
        return parseMatrix3Text(*matrix);
    if (const TiXmlElement* const turn = holder.FirstChildElement("axis_rotation"))
        return axisAngleMatrix(parseVec3(*turn, "axis"), parseDouble(*turn, "angle"));
    throw SceneParseUtilsExcep("Internal Error.");
}

std::string elementText(const TiXmlElement& element) {
    std::string text;
    for (const TiXmlNode* node = element.FirstChild(); node; node = node->NextSibling()) {
        if (const TiXmlText* const piece = node->ToText())
            text += piece->CDATA() ? piece->ValueTStr() : condensed(piece->ValueTStr());
        else if (node->ToElement())
            failAtChild(*node);
    }
    return text;
}

i32 parseInt(const TiXmlElement& parent, const char* name) {
    return parseIntText(valueElement(parent, name));
}
u32 parseUInt(const TiXmlElement& parent, const char* name) {
    return parseUIntText(valueElement(parent, name));
}
u64 parseUInt64(const TiXmlElement& parent, const char* name) {
    return parseUInt64Text(valueElement(parent, name));
}
float parseFloat(const TiXmlElement& parent, const char* name) {
    return parseFloatText(valueElement(parent, name));
}
double parseDouble(const TiXmlElement& parent, const char* name) {
    return parseDoubleText(valueElement(parent, name));
}
bool parseBool(const TiXmlElement& parent, const char* name) {
    return parseBoolText(valueElement(parent, name));
}
std::string parseString(const TiXmlElement& parent, const char* name) {
    return elementText(valueElement(parent, name));
}
Vec2d parseVec2(const TiXmlElement& parent, const char* name) {
    return parseVec2Text(valueElement(parent, name));
}
Vec3d parseVec3(const TiXmlElement& parent, const char* name) {
    return parseVec3Text(valueElement(parent, name));
}
Matrix2d parseMatrix2(const TiXmlElement& parent, const char* name) {
    return parseMatrix2Text(valueElement(parent, name));
}
Matrix3d parseMatrix3(const TiXmlElement& parent, const char* name) {
    return parseMatrix3Of(valueElement(parent, name));
}

i32 parseOptionalInt(const TiXmlElement& parent, const char* name, i32 default_value) {
    return parseOptional(parent, name, default_value, parseIntText);
}
u32 parseOptionalUInt(const TiXmlElement& parent, const char* name, u32 default_value) {
    return parseOptional(parent, name, default_value, parseUIntText);
}
u64 parseOptionalUInt64(const TiXmlElement& parent, const char* name, u64 default_value) {
    return parseOptional(parent, name, default_value, parseUInt64Text);
}
float parseOptionalFloat(const TiXmlElement& parent, const char* name, float default_value) {
    return parseOptional(parent, name, default_value, parseFloatText);
}
double parseOptionalDouble(const TiXmlElement& parent, const char* name, double default_value) {
    return parseOptional(parent, name, default_value, parseDoubleText);
}
bool parseOptionalBool(const TiXmlElement& parent, const char* name, bool default_value) {
    return parseOptional(parent, name, default_value, parseBoolText);
}
std::string parseOptionalString(const TiXmlElement& parent, const char* name,
                                const std::string& default_value) {
    return parseOptional(parent, name, default_value, elementText);
}
Vec2d parseOptionalVec2(const TiXmlElement& parent, const char* name, const Vec2d& default_value) {
    return parseOptional(parent, name, default_value, parseVec2Text);
}
Vec3d parseOptionalVec3(const TiXmlElement& parent, const char* name, const Vec3d& default_value) {
    return parseOptional(parent, name, default_value, parseVec3Text);
}
Matrix2d parseOptionalMatrix2(const TiXmlElement& parent, const char* name, const Matrix2d& default_value) {
    return parseOptional(parent, name, default_value, parseMatrix2Text);
}
Matrix3d parseOptionalMatrix3(const TiXmlElement& parent, const char* name, const Matrix3d& default_value) {
    return parseOptional(parent, name, default_value, parseMatrix3Of);
}

const TiXmlElement& childElement(const TiXmlElement& parent, const char* name) {
    const TiXmlElement* const element = parent.FirstChildElement(name);
    if (!element)
        fail(std::string("Failed to find expected element '") + name + "'", parent);
    return *element;
}

const TiXmlElement* optionalChildElement(const TiXmlElement& parent, const char* name) {
    return parent.FirstChildElement(name);
}

const TiXmlElement* firstChildOf(const TiXmlElement& parent, std::initializer_list<const char*> names) {
    const std::span<const char* const> list(names.begin(), names.size());
    for (const TiXmlElement* child = parent.FirstChildElement(); child; child = child->NextSiblingElement())
        if (indexIn(list, *child) < list.size())
            return child;
    return nullptr;
}

const TiXmlElement& checkOnlyOneOf(const TiXmlElement& parent, std::span<const char* const> names) {
    const TiXmlElement* found = nullptr;
    for (const TiXmlElement* child = parent.FirstChildElement(); child; child = child->NextSiblingElement()) {
        if (indexIn(names, *child) == names.size())
            continue;
        // Two blanks behind the comma: scripts look for this text.
        if (found)
            fail("Found unexpected element '" + child->ValueTStr() +
                     "',  already parsed mutually exclusive element '" + found->ValueTStr() + "'",
                 *child);
        found = child;
    }
    if (found)
        return *found;
    std::string list;
    for (const char* const name : names)
        list.append(list.empty() ? "" : "', '").append(name);
    fail("Failed to find child for element '" + parent.ValueTStr() + "' - Child should be one of '" + list +
             "'",
         parent);
}

void checkChildrenAreIn(const TiXmlElement& parent, std::span<const char* const> names) {
    for (const TiXmlElement* child = parent.FirstChildElement(); child; child = child->NextSiblingElement())
        if (indexIn(names, *child) == names.size())
            fail("Found unexpected element '" + child->ValueTStr() + "'", *child);
}

void checkChildrenAreInOnce(const TiXmlElement& parent, std::span<const char* const> names) {
    std::vector<bool> seen(names.size());
    for (const TiXmlElement* child = parent.FirstChildElement(); child; child = child->NextSiblingElement()) {
        const std::size_t index = indexIn(names, *child);
        if (index == names.size())
            fail("Found unexpected element '" + child->ValueTStr() + "'", *child);
        if (seen[index])
            throw SceneParseUtilsExcep(
                "Found unexpected element '" + child->ValueTStr() + "' (Already parsed element called '" +
                child->ValueTStr() + "') in element '" + parent.ValueTStr() + "'. (Around line " +
                std::to_string(child->Row()) + ", column " + std::to_string(child->Column()) + ")");
        seen[index] = true;
    }
}

} // namespace Quenza::SceneParseUtils
