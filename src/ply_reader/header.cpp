// SPDX-License-Identifier: MIT
#include "ply_reader/header.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace Quenza::Ply {

namespace {

constexpr std::string_view MAGIC = "ply";
constexpr std::string_view BLANKS = " \t";

struct ScalarName {
    std::string_view name;
    Scalar type;
};

constexpr ScalarName SCALAR_NAMES[] = {
    {"int8", Scalar::INT8},       {"char", Scalar::INT8},     {"uint8", Scalar::UINT8},
    {"uchar", Scalar::UINT8},     {"int16", Scalar::INT16},   {"short", Scalar::INT16},
    {"uint16", Scalar::UINT16},   {"ushort", Scalar::UINT16}, {"int32", Scalar::INT32},
    {"int", Scalar::INT32},       {"uint32", Scalar::UINT32}, {"uint", Scalar::UINT32},
    {"float32", Scalar::FLOAT32}, {"float", Scalar::FLOAT32}, {"float64", Scalar::FLOAT64},
    {"double", Scalar::FLOAT64},
};

Scalar scalarNamed(std::string_view name) {
    const auto* const found = std::find_if(std::begin(SCALAR_NAMES), std::end(SCALAR_NAMES),
                                           [name](const ScalarName& scalar) { return scalar.name == name; });
    if (found == std::end(SCALAR_NAMES))
        throw Error("unknown type '" + std::string(name) + "'");
    return found->type;
}

Format formatNamed(std::string_view name) {
    if (name == "ascii")
        return Format::ASCII;
    if (name == "binary_little_endian")
        return Format::LITTLE_ENDIAN_BINARY;
    if (name == "binary_big_endian")
        return Format::BIG_ENDIAN_BINARY;
    throw Error("unknown format '" + std::string(name) + "'");
}

/// Takes the text up to the next blank off the line; "" at its end.
std::string_view takeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(BLANKS), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(BLANKS));
    line.remove_prefix(word.size());
    return word;
}

void expectEnd(std::string_view line) {
    if (!takeWord(line).empty())
        throw Error("more words in a line of the header than expected");
}

/// Lines that end as the first one does: a binary body may begin with a byte that looks like a line end.
class Lines {
public:
    explicit Lines(std::string_view file) : file_(file) {
        const std::size_t end = file.find_first_of("\r\n");
        if (end < file.size() && file[end] == '\r')
            end_ = file.substr(end, 2) == "\r\n" ? "\r\n" : "\r";
    }

    std::size_t position() const { return at_; }

    std::string_view next() {
        const std::size_t end = file_.find(end_, at_);
        if (end == std::string_view::npos)
            throw Error("the header doesn't end");
        const std::string_view line = file_.substr(at_, end - at_);
        at_ = end + end_.size();
        return line;
    }

private:
    std::string_view file_;
    std::string_view end_ = "\n";
    std::size_t at_ = 0;
};

t_ply_element_ readElement(std::string_view line) {
    t_ply_element_ element;
    element.name = takeWord(line);
    const std::string_view count = takeWord(line);
    const auto [end, error] = std::from_chars(count.data(), count.data() + count.size(), element.instances);
    if (error != std::errc() || end != count.data() + count.size() || element.instances < 0)
        throw Error("bad count of element '" + element.name + "'");
    expectEnd(line);
    return element;
}

t_ply_property_ readProperty(std::string_view line) {
    t_ply_property_ property;
    std::string_view type = takeWord(line);
    if (type == "list") {
        property.is_list = true;
        property.length_type = scalarNamed(takeWord(line));
        if (property.length_type == Scalar::FLOAT32 || property.length_type == Scalar::FLOAT64)
            throw Error("the length of a list must be an integer");
        type = takeWord(line);
    }
    property.type = scalarNamed(type);
    property.name = takeWord(line);
    if (property.name.empty())
        throw Error("a property has no name");
    expectEnd(line);
    return property;
}

} // namespace

bool hasMagic(std::string_view file) {
    return file.size() > MAGIC.size() && file.substr(0, MAGIC.size()) == MAGIC &&
           std::string_view("\r\n \t").find(file[MAGIC.size()]) != std::string_view::npos;
}

std::size_t readHeader(std::string_view file, Layout& layout) {
    Lines lines(file);
    lines.next();
    bool has_format = false;
    for (;;) {
        std::string_view line = lines.next();
        const std::string_view word = takeWord(line);
        if (word == "end_header") {
            break;
        } else if (word == "format") {
            layout.format = formatNamed(takeWord(line));
            if (takeWord(line) != "1.0")
                throw Error("unknown version of the format");
            expectEnd(line);
            has_format = true;
        } else if (word == "element") {
            layout.elements.push_back(readElement(line));
        } else if (word == "property" && !layout.elements.empty()) {
            layout.elements.back().properties.push_back(readProperty(line));
        } else if (word != "comment" && word != "obj_info" && !layout.elements.empty()) {
            // Before the elements such a line can't say anything about the body; there are exporters that
            // forget the word "comment".
            throw Error("unknown line '" + std::string(word) + "' in the header");
        }
    }
    if (!has_format)
        throw Error("the header names no format");
    return lines.position();
}

} // namespace Quenza::Ply
