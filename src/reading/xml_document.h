// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/string.h"

#include <memory>
#include <string_view>

class TiXmlDocument;
class TiXmlElement;

namespace Quenza {

class QuenzaXMLDocExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

/// An XML document with the path that it came from. Failures throw QuenzaXMLDocExcep with path, line and
/// column. Texts are UTF-8; what TinyXML would take wrongly, or not survive, is refused before it sees it
/// (see reading/xml_precheck.h).
class XMLDocument {
public:
    XMLDocument();
    ~XMLDocument();
    XMLDocument(const XMLDocument&) = delete;
    XMLDocument& operator=(const XMLDocument&) = delete;

    void loadDocument(const String& path);
    /// The same for a text that no file holds; `label` stands in the messages for the path.
    void parseText(std::string_view text, const String& label);
    /// Replaces the file, whole or not at all.
    void saveDocument(const String& path);

    const TiXmlElement& rootElement() const;
    const TiXmlElement& rootElementNamed(const char* name) const;

    TiXmlDocument& document() { return *document_; }
    const String& path() const { return path_; }

private:
    std::unique_ptr<TiXmlDocument> document_;
    String path_;
};

} // namespace Quenza
