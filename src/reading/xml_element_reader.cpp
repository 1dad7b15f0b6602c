// SPDX-License-Identifier: MIT
#include "reading/xml_element_reader.h"

#include "reading/xml_text.h"

#include <string_view>
#include <tinyxml.h>
#include <utility>

namespace Quenza {

namespace {

/// Nodes keep their place to themselves.
struct Node : TiXmlBase {
    static TiXmlCursor& cursor(TiXmlBase& node) { return node.*&Node::location; }
};

} // namespace

XMLElementReader::XMLElementReader(const String& path)
    : text_(loadXMLText(path, &outline_)), document_(std::make_unique<TiXmlDocument>()) {
    // TinyXML doesn't count lines and columns then, for which it takes a fifth of its time.
    document_->SetTabSize(0);
}

XMLElementReader::~XMLElementReader() = default;

const TiXmlElement* XMLElementReader::next() {
    document_->Clear();
    if (next_child_ == outline_.child_ends.size())
        return nullptr;
    const u64 begin = outline_.element_begins[next_element_];
    const u64 end = outline_.child_ends[next_child_++];
    const char behind = std::exchange(text_[end], '\0'); // where TinyXML stops
    document_->Parse(text_.c_str() + begin, nullptr, TIXML_ENCODING_UTF8);
    text_[end] = behind;
    TiXmlElement* const element = document_->RootElement();
    setPlaces(*element);
    return element;
}

/// Of an element and those in it, in the order of their start tags.
void XMLElementReader::setPlaces(TiXmlElement& element) {
    const u64 begin = outline_.element_begins[next_element_++];
    place_.advance(std::string_view(text_).substr(offset_, begin - offset_));
    offset_ = begin;
    TiXmlCursor& cursor = Node::cursor(element);
    cursor.row = i32(place_.line) - 1;
    cursor.col = i32(place_.column) - 1;
    for (TiXmlNode* child = element.FirstChild(); child; child = child->NextSibling())
        if (TiXmlElement* const child_element = child->ToElement())
            setPlaces(*child_element);
}

} // namespace Quenza
