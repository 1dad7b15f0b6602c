// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "reading/xml_document.h"
#include "support/thrown_message.h"

#include <string>

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

/// A text that a reader refuses, and what it says.
struct BadElement {
    const char* text;
    const char* message;
};

/// The message with which `read(element)` refuses the text.
template <class Read>
std::string refusal(const std::string& text, const Read& read) {
    const ParsedElement element(text);
    return thrownMessage<MessageExcep>([&] { read(element); });
}

} // namespace Quenza
