// SPDX-License-Identifier: MIT
#include "scene/xml_elements.h"

#include "foundation/file_utils.h"
#include "foundation/number_format.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace Quenza {

namespace {

constexpr char HEX_DIGITS[] = "0123456789ABCDEF";

/// Collects the text of one element in the stream's memory for it, and hands it to the stream at once.
class ElementText {
public:
    ElementText(OStream& stream, u32 depth) : stream_(stream), text_(stream.element_text) {
        text_.clear();
        put(depth, '\t');
    }
    ElementText(const ElementText&) = delete;
    ElementText& operator=(const ElementText&) = delete;

    /// `content_chars` more characters may be put by pointer.
    char* room(u64 content_chars) {
        const u64 size = text_.size();
        text_.resize(size + content_chars);
        return text_.data() + size;
    }
    void endAt(const char* end) { text_.resize(u64(end - text_.data())); }
    void put(u64 count, char c) {
        if (count > 0)
            std::memset(room(count), c, count);
    }
    void put(std::string_view chars) { text_.append(chars.data(), chars.size()); }
    void send() {
        stream_.writeString(text_);
        if (text_.capacity() > MAX_KEPT_BYTES)
            text_ = String();
    }

private:
    static constexpr u64 MAX_KEPT_BYTES = 65536;

    OStream& stream_;
    String& text_;
};

char* copyChars(char* out, const char* chars, u64 count) {
    std::memcpy(out, chars, count);
    return out + count;
}

/// Writes a whole element whose content `write(out)` puts at a pointer, returning its end, in at most
/// `max_content` characters.
template <class Write>
void writeShortElement(OStream& stream, u32 depth, const char* name, u64 max_content, const Write& write) {
    ElementText text(stream, depth);
    const u64 name_size = std::strlen(name);
    char* out = text.room(2 * name_size + 6 + max_content);
    *out++ = '<';
    out = copyChars(out, name, name_size);
    *out++ = '>';
    out = write(out);
    *out++ = '<';
    *out++ = '/';
    out = copyChars(out, name, name_size);
    *out++ = '>';
    *out++ = '\n';
    text.endAt(out);
    text.send();
}

char* writeNumbers(char* out, const double* values, u32 count) {
    for (u32 i = 0; i < count; ++i) {
        if (i > 0)
            *out++ = ' ';
        out = NumberFormat::writeDouble(out, values[i]);
    }
    return out;
}

void writeVectorElement(OStream& stream, u32 depth, const char* name, const double* values, u32 count) {
    writeShortElement(stream, depth, name, count * (NumberFormat::MAX_CHARS + 1),
                      [values, count](char* out) { return writeNumbers(out, values, count); });
}

void writeTag(OStream& stream, u32 depth, std::string_view before, const char* name, std::string_view after) {
    ElementText text(stream, depth);
    text.put(before);
    text.put(name);
    text.put(after);
    text.send();
}

bool isXMLWhitespace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool needsCDATA(std::string_view value) {
    if (value.empty())
        return false;
    if (isXMLWhitespace(value.front()) || isXMLWhitespace(value.back()))
        return true;
    for (std::size_t i = 1; i < value.size(); ++i)
        if (isXMLWhitespace(value[i]) && isXMLWhitespace(value[i - 1]))
            return true;
    return false;
}

bool needsEscape(std::string_view value) {
    for (const char c : value)
        if (static_cast<unsigned char>(c) < 32 || c == '&' || c == '<' || c == '>' || c == '"' || c == '\'')
            return true;
    return false;
}

void appendEscaped(std::string& out, char c) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '&')
        out += "&amp;";
    else if (c == '<')
        out += "&lt;";
    else if (c == '>')
        out += "&gt;";
    else if (c == '"')
        out += "&quot;";
    else if (c == '\'')
        out += "&apos;";
    else if (byte < 32)
        out.append("&#x").append(1, HEX_DIGITS[byte / 16]).append(1, HEX_DIGITS[byte % 16]).append(1, ';');
    else
        out += c;
}

/// TinyXML's string encoding. It isn't called, since packagers patch it: some builds of it escape the "&" of
/// a character reference "&#x41;", which the file format leaves alone. Without a ";" the reference ends
/// before the last character.
std::string escaped(std::string_view value) {
    std::string out;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (i + 2 < value.size() && value.substr(i, 3) == "&#x") {
            const std::size_t end = std::min(value.find(';', i), value.size() - 1);
            out.append(value.substr(i, end - i));
            i = end;
        }
        appendEscaped(out, value[i]);
    }
    return out;
}

} // namespace

void writeIndent(OStream& stream, u32 depth) {
    ElementText(stream, depth).send();
}

void writeOpenTag(OStream& stream, u32 depth, const char* name) {
    writeTag(stream, depth, "<", name, ">\n");
}

void writeCloseTag(OStream& stream, u32 depth, const char* name) {
    writeTag(stream, depth, "</", name, ">\n");
}

void writeEmptyElement(OStream& stream, u32 depth, const char* name) {
    writeTag(stream, depth, "<", name, "/>\n");
}

void writeDoubleElement(OStream& stream, u32 depth, const char* name, double value) {
    writeVectorElement(stream, depth, name, &value, 1);
}

void writeIntElement(OStream& stream, u32 depth, const char* name, i32 value) {
    writeShortElement(stream, depth, name, NumberFormat::MAX_CHARS,
                      [value](char* out) { return NumberFormat::writeInteger(out, value); });
}

void writeUIntElement(OStream& stream, u32 depth, const char* name, u32 value) {
    writeShortElement(stream, depth, name, NumberFormat::MAX_CHARS,
                      [value](char* out) { return NumberFormat::writeInteger(out, value); });
}

void writeBoolElement(OStream& stream, u32 depth, const char* name, bool value) {
    const std::string_view word = value ? "true" : "false";
    writeShortElement(stream, depth, name, word.size(),
                      [word](char* out) { return copyChars(out, word.data(), word.size()); });
}

void writeStringElement(OStream& stream, u32 depth, const char* name, const String& value) {
    ElementText text(stream, depth);
    const bool cdata = needsCDATA(value.view());
    text.put("<");
    text.put(name);
    text.put(cdata ? "><![CDATA[" : ">");
    if (cdata || !needsEscape(value.view())) {
        text.put(value.view());
    } else {
        text.put(escaped(value.view()));
    }
    text.put(cdata ? "]]></" : "</");
    text.put(name);
    text.put(">\n");
    text.send();
}

void writePathElement(OStream& stream, u32 depth, const char* name, const String& path,
                      const XMLWriteOptions& options) {
    const bool join = options.write_absolute_paths && !path.empty();
    writeStringElement(stream, depth, name, join ? FileUtils::join(options.base_path, path) : path);
}

void writeVec2Element(OStream& stream, u32 depth, const char* name, const double value[2]) {
    writeVectorElement(stream, depth, name, value, 2);
}

void writeVec3Element(OStream& stream, u32 depth, const char* name, const double value[3]) {
    writeVectorElement(stream, depth, name, value, 3);
}

void writeVec4Element(OStream& stream, u32 depth, const char* name, const double value[4]) {
    writeVectorElement(stream, depth, name, value, 4);
}

void writeVec2Element(OStream& stream, u32 depth, const char* name, const Vec2d& value) {
    const double values[2] = {value.x, value.y};
    writeVectorElement(stream, depth, name, values, 2);
}

void writeVec3Element(OStream& stream, u32 depth, const char* name, const Vec3d& value) {
    const double values[3] = {value.x, value.y, value.z};
    writeVectorElement(stream, depth, name, values, 3);
}

void writeVec4Element(OStream& stream, u32 depth, const char* name, const Matrix2d& value) {
    writeVectorElement(stream, depth, name, value.e, 4);
}

void writeMatrixLine(OStream& stream, u32 depth, const Matrix3d& value) {
    ElementText text(stream, depth);
    char* end = writeNumbers(text.room(9 * (NumberFormat::MAX_CHARS + 1) + 1), value.e, 9);
    *end++ = '\n';
    text.endAt(end);
    text.send();
}

} // namespace Quenza
