// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "reading/xml_document.h"
#include "support/thrown_message.h"

#include <string>
#include <vector>

class TiXmlElement;

namespace Quenza {

/// The root element of a text, for tests of element readers.
class ParsedElement {
public:
    explicit ParsedElement(const std::string& text) { document_.parseText(text, "test"); }
    operator const TiXmlElement&() const { return document_.rootElement(); }

private:
    XMLDocument document_;
};

/// The text with an element that nobody knows as the last child of each element in turn, of those that end
/// behind `start`.
inline std::vector<std::string> withStrangers(const std::string& text, std::size_t start = 0) {
    std::vector<std::string> strange;
    for (std::size_t at = text.find("</", start); at != std::string::npos; at = text.find("</", at + 1))
        strange.push_back(std::string(text).insert(at, "<zzz/>"));
    return strange;
}
/// What begins the message about it.
inline constexpr const char* STRANGER = "Found unexpected element 'zzz'  (In element 'zzz', around line ";

/// The message with which `read(element)` refuses the text.
template <class Read>
std::string refusal(const std::string& text, const Read& read) {
    const ParsedElement element(text);
    return thrownMessage<MessageExcep>([&] { read(element); });
}

} // namespace Quenza
