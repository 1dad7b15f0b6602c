// SPDX-License-Identifier: MIT
#include "reading/xml_precheck.h"

#include "foundation/utf8.h"
#include "reading/byte_order_mark.h"
#include "reading/xml_place.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Quenza {

namespace {

// TinyXML's words for the faults that it finds as well.
constexpr const char* READING_END_TAG = "Error reading end tag.";
constexpr const char* READING_ATTRIBUTES = "Error reading Attributes.";
constexpr const char* PARSING_ELEMENT = "Error parsing Element.";
constexpr const char* DOCUMENT_EMPTY = "Error document empty.";

constexpr u64 NONE = std::string_view::npos;

enum CharacterClass : unsigned char { SPACE = 1, NAME_BEGIN = 2, NAME_PART = 4 };

/// Names begin with letters, "_" and, as TinyXML has it, everything beyond ASCII.
constexpr std::array<unsigned char, 256> makeClasses() {
    std::array<unsigned char, 256> classes{};
    for (u32 c = 0; c < 256; ++c) {
        const u32 lower = c | 0x20;
        const bool begins_name = (lower >= 'a' && lower <= 'z') || c == '_' || c >= 127;
        const bool is_part = (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
        const bool is_space = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        classes[c] = static_cast<unsigned char>((is_space ? SPACE : 0) | (begins_name ? NAME_BEGIN : 0) |
                                                (begins_name || is_part ? NAME_PART : 0));
    }
    return classes;
}

constexpr std::array<unsigned char, 256> CLASSES = makeClasses();

bool isA(CharacterClass kind, char c) {
    return (CLASSES[static_cast<unsigned char>(c)] & kind) != 0;
}

/// One pass over a text. A step that meets a fault keeps it and returns false.
class Precheck {
public:
    Precheck(std::string& text, XMLOutline* outline) : text_(text), view_(text), outline_(outline) {}

    std::optional<XMLFault> run() {
        check();
        return std::move(fault_);
    }

private:
    /// A part of what stands between two tags of elements.
    struct Piece {
        u64 begin, end;
        bool comment;
    };

    bool check() {
        if (const u64 zero = view_.find('\0'); zero != NONE)
            return fail(zero, "a zero byte stands in the text");
        // TinyXML goes by lead bytes: a cut character would make it swallow the "<" behind.
        if (const u64 bad = findInvalidUTF8(view_); bad != NONE)
            return fail(bad, "the text isn't UTF-8");
        if (view_.starts_with(BYTE_ORDER_MARK))
            at_ = BYTE_ORDER_MARK.size();
        while (at_ < view_.size())
            if (!(view_[at_] == '<' ? checkMarkup() : checkCharacters()))
                return false;
        if (!open_.empty())
            return failAsTinyXML(view_.size(), READING_END_TAG, view_.size());
        return had_root_ || failWithoutRoot();
    }

    bool fail(u64 offset, std::string description) {
        XMLPlace place;
        place.advance(view_.substr(0, offset));
        fault_ = XMLFault{std::move(description), place.line, place.column, 0, false};
        return false;
    }
    bool failAsTinyXML(u64 offset, const char* description, u64 bytes) {
        fail(offset, description);
        fault_->told_by_tinyxml = bytes;
        return false;
    }
    bool failWithoutRoot() {
        if (!had_markup_)
            return fail(view_.size(), DOCUMENT_EMPTY);
        fail(view_.size(), "there is no root element");
        fault_->no_root = true;
        return false;
    }

    bool isAt(std::string_view word) const { return view_.substr(at_, word.size()) == word; }
    /// The byte at the cursor; the zero at the end of the text, which has no other.
    char peek() const { return text_.c_str()[at_]; }
    void skip(CharacterClass kind) {
        while (isA(kind, peek()))
            ++at_;
    }

    bool checkCharacters() {
        skip(SPACE);
        if (peek() != '<' && at_ < view_.size()) {
            if (open_.empty())
                return fail(at_, "there is text outside of the root element");
            has_text_ = true;
        }
        for (; peek() != '<' && at_ < view_.size(); ++at_)
            if (peek() == '&' && !checkReference(at_))
                return false;
        return true;
    }

    /// Character references must be whole. An "&" before anything else is TinyXML's to keep.
    bool checkReference(u64 at) {
        if (at + 1 >= view_.size() || view_[at + 1] != '#')
            return true;
        const bool hexadecimal = at + 2 < view_.size() && view_[at + 2] == 'x';
        u64 digit = at + (hexadecimal ? 3 : 2);
        u64 code = 0;
        for (; digit < view_.size() && view_[digit] != ';' && code <= LAST_CODE_POINT; ++digit) {
            const char c = view_[digit];
            const char lower = char(c | 0x20);
            const bool letter = hexadecimal && lower >= 'a' && lower <= 'f';
            if (!letter && !(c >= '0' && c <= '9'))
                break;
            code = code * (hexadecimal ? 16 : 10) + u64(letter ? lower - 'a' + 10 : c - '0');
        }
        const bool closed = digit < view_.size() && view_[digit] == ';';
        const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
        if (!closed || code == 0 || code > LAST_CODE_POINT || surrogate)
            return fail(at, "the character reference isn't one");
        return true;
    }

    bool checkMarkup() {
        const char next = text_.c_str()[at_ + 1];
        had_markup_ = true;
        if (isA(NAME_BEGIN, next))
            return checkStartTag();
        if (next == '/')
            return checkEndTag();
        if (isAt("<!--"))
            return checkEnclosed("<!--", "-->", "the comment isn't closed", true);
        if (isAt("<![CDATA["))
            return open_.empty() ? fail(at_, "there is text outside of the root element")
                                 : checkEnclosed("<![CDATA[", "]]>", "the CDATA section isn't closed", false);
        if (next == '!')
            return checkDocumentType();
        if (next == '?')
            return checkInstruction();
        return fail(at_, "the '<' begins no tag");
    }

    bool checkEnclosed(std::string_view begin, std::string_view end, const char* message, bool comment) {
        const u64 found = view_.find(end, at_ + begin.size());
        if (found == NONE)
            return fail(at_, message);
        has_text_ |= !comment;
        addPiece(found + end.size(), comment);
        return true;
    }

    /// Without declarations of its own, which TinyXML would take for text.
    bool checkDocumentType() {
        const u64 end = view_.find_first_of("<>", at_ + 1);
        if (!open_.empty() || had_root_)
            return fail(at_, "the '<' begins no tag");
        if (end == NONE || view_[end] == '<')
            return fail(at_, "the document type isn't closed");
        at_ = end + 1;
        return true;
    }

    bool checkInstruction() {
        constexpr std::string_view NAME = "<?xml";
        std::string begin(view_.substr(at_, NAME.size()));
        std::transform(begin.begin(), begin.end(), begin.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? char(c | 0x20) : c; });
        if (begin == NAME) // TinyXML reads everything of that name as a declaration
            return checkDeclaration();
        const u64 begin_of_content = at_ + 2;
        const u64 end = view_.find_first_of("<>", begin_of_content);
        if (end == NONE || view_[end] == '<' || end == begin_of_content || view_[end - 1] != '?')
            return fail(at_, "the processing instruction isn't closed");
        addPiece(end + 1, true);
        return true;
    }

    /// From the cursor to `end`, behind the text that stands before the cursor.
    void addPiece(u64 end, bool comment) {
        pieces_.push_back({pieces_.empty() ? text_begin_ : pieces_.back().end, at_, false});
        pieces_.push_back({at_, end, comment});
        has_comment_ |= comment;
        at_ = end;
    }

    bool checkDeclaration() {
        const u64 begin = at_;
        if (view_.substr(0, begin).find_first_not_of("\xEF\xBB\xBF \t\n") != NONE)
            return fail(begin, "a declaration stands behind the document's begin");
        at_ += 5;
        u64 value_begin = 0;
        u64 value_end = 0;
        for (;;) {
            const u64 name_begin = skipSpaceOver();
            if (isAt("?>")) {
                at_ += 2;
                return true;
            }
            if (name_begin == NONE || !skipName() ||
                !isDeclared(view_.substr(name_begin, at_ - name_begin)) || !skipEquals() || !isAtQuote() ||
                !skipQuoted(value_begin, value_end) ||
                view_.substr(value_begin, value_end - value_begin).find_first_of("<>") != NONE)
                return fail(begin, "the declaration isn't well-formed or isn't closed");
        }
    }

    static bool isDeclared(std::string_view name) {
        return name == "version" || name == "encoding" || name == "standalone";
    }

    /// Offset behind white space, NONE when there is none.
    u64 skipSpaceOver() {
        const u64 before = at_;
        skip(SPACE);
        return at_ == before ? NONE : at_;
    }

    bool skipName() {
        if (!isA(NAME_BEGIN, peek()))
            return false;
        skip(NAME_PART);
        return true;
    }

    /// The "=" between name and value.
    bool skipEquals() {
        skip(SPACE);
        if (peek() != '=')
            return false;
        ++at_;
        skip(SPACE);
        return true;
    }

    bool isAtQuote() const { return peek() == '"' || peek() == '\''; }

    /// The text between the quotes at the cursor, which goes behind them; false when the second is missing.
    bool skipQuoted(u64& begin, u64& end) {
        begin = at_ + 1;
        end = view_.find(view_[at_], begin);
        at_ = end == NONE ? at_ : end + 1;
        return end != NONE;
    }

    bool checkStartTag() {
        const u64 begin = at_++;
        finishText(begin);
        if (open_.empty() && had_root_)
            return fail(begin, "there is a second root element");
        if (open_.size() >= MAX_XML_DEPTH)
            return fail(begin, "elements are nested more than " + std::to_string(MAX_XML_DEPTH) + " deep");
        const u64 name_begin = at_;
        skipName();
        const std::string_view name = view_.substr(name_begin, at_ - name_begin);
        beginElement(begin, name);
        attribute_names_.clear();
        for (;;) {
            skip(SPACE);
            if (peek() == '>') {
                text_begin_ = ++at_;
                open_.push_back(name);
                return true;
            }
            if (isAt("/>")) {
                at_ += 2;
                endElement();
                return true;
            }
            if (at_ >= view_.size())
                return failAsTinyXML(begin, READING_ATTRIBUTES, view_.size());
            if (attribute_names_.size() == MAX_XML_ATTRIBUTES)
                return fail(begin,
                            "an element has more than " + std::to_string(MAX_XML_ATTRIBUTES) + " attributes");
            if (!checkAttribute())
                return false;
        }
    }

    void beginElement(u64 begin, std::string_view name) {
        had_root_ = true;
        if (outline_ && open_.empty())
            outline_->root_name = name;
        else if (outline_)
            outline_->element_begins.push_back(begin);
    }

    void endElement() {
        text_begin_ = at_;
        if (outline_ && open_.size() == 1)
            outline_->child_ends.push_back(at_);
    }

    bool checkAttribute() {
        const u64 begin = at_;
        u64 value_begin = 0;
        u64 value_end = 0;
        if (!skipName())
            return failAsTinyXML(begin, READING_ATTRIBUTES, endOfTag());
        const std::string_view name = view_.substr(begin, at_ - begin);
        if (!skipEquals())
            return failAsTinyXML(begin, READING_ATTRIBUTES, endOfTag());
        if (!isAtQuote())
            return fail(begin, "the attribute's value has no quotes");
        if (!skipQuoted(value_begin, value_end))
            return failAsTinyXML(begin, READING_ATTRIBUTES, endOfTag());
        if (std::find(attribute_names_.begin(), attribute_names_.end(), name) != attribute_names_.end())
            return failAsTinyXML(begin, PARSING_ELEMENT, at_);
        attribute_names_.push_back(name);
        for (u64 at = value_begin; at < value_end; ++at)
            if (view_[at] == '&' && !checkReference(at))
                return false;
        return true;
    }

    /// Offset behind the next "<" or ">": far enough for TinyXML to see what is wrong with a tag.
    u64 endOfTag() const { return std::min(view_.find_first_of("<>", at_), view_.size() - 1) + 1; }

    bool checkEndTag() {
        const u64 begin = at_;
        finishText(begin);
        if (open_.empty())
            return fail(begin, "the end tag ends no element");
        at_ += 2;
        const bool matches = isAt(open_.back());
        at_ += matches ? open_.back().size() : 0;
        skip(SPACE);
        if (!matches || peek() != '>')
            return failAsTinyXML(begin, READING_END_TAG,
                                 std::min(view_.find('>', at_), view_.size() - 1) + 1);
        ++at_;
        open_.pop_back();
        endElement();
        return true;
    }

    /// At the tag that ends a stretch of text.
    void finishText(u64 end) {
        if (has_comment_ && has_text_)
            moveComments(end);
        pieces_.clear();
        has_comment_ = false;
        has_text_ = false;
    }

    /// To the end of their stretch of text.
    void moveComments(u64 end) {
        pieces_.push_back({pieces_.back().end, end, false});
        std::string moved;
        moved.reserve(end - text_begin_);
        for (const bool comments : {false, true})
            for (const Piece& piece : pieces_)
                if (piece.comment == comments)
                    moved.append(text_, piece.begin, piece.end - piece.begin);
        text_.replace(text_begin_, moved.size(), moved);
    }

    static constexpr u64 LAST_CODE_POINT = 0x10FFFF;

    std::string& text_;
    const std::string_view view_; ///< Of `text_`, whose bytes stay where they are.
    XMLOutline* const outline_;
    u64 at_ = 0;
    std::vector<std::string_view> open_;            ///< Names of the elements around the place.
    std::vector<Piece> pieces_;                     ///< Since the last tag, when there is more than text.
    u64 text_begin_ = 0;                            ///< Offset behind the last tag.
    std::vector<std::string_view> attribute_names_; ///< Of the tag at the place.
    bool has_comment_ = false;
    bool has_text_ = false;
    bool had_root_ = false;
    bool had_markup_ = false;
    std::optional<XMLFault> fault_;
};

} // namespace

std::optional<XMLFault> precheckXML(std::string& text, XMLOutline* outline) {
    return Precheck(text, outline).run();
}

} // namespace Quenza
