// SPDX-License-Identifier: MIT
#include "reading/xml_document.h"

#include "foundation/safe_file.h"
#include "reading/xml_text.h"

#include <tinyxml.h>
#include <utility>

namespace Quenza {

namespace {

/// Of a text that has been checked.
std::unique_ptr<TiXmlDocument> parseXML(const std::string& text) {
    auto document = std::make_unique<TiXmlDocument>();
    document->Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
    return document;
}

} // namespace

XMLDocument::XMLDocument() : document_(std::make_unique<TiXmlDocument>()) {}
XMLDocument::~XMLDocument() = default;

void XMLDocument::loadDocument(const String& path) {
    path_ = path;
    document_ = std::make_unique<TiXmlDocument>();
    document_ = parseXML(loadXMLText(path));
}

void XMLDocument::parseText(std::string_view text, const String& label) {
    path_ = label;
    document_ = std::make_unique<TiXmlDocument>();
    std::string copy(text);
    prepareXMLText(copy, label);
    document_ = parseXML(copy);
}

void XMLDocument::saveDocument(const String& path) {
    TiXmlPrinter printer;
    document_->Accept(&printer);
    SafeFile file(path, SafeFile::Mode::TEXT);
    file.write(printer.CStr(), printer.Size());
    if (!file.commit())
        throw QuenzaXMLDocExcep("Failed to save XML document to '" + path + "': " + file.failureReason());
}

const TiXmlElement& XMLDocument::rootElement() const {
    const TiXmlElement* const root = std::as_const(*document_).RootElement();
    // The words are meant: scripts look for them.
    if (!root)
        throw QuenzaXMLDocExcep("Could not root element in file '" + path_ + "'");
    return *root;
}

const TiXmlElement& XMLDocument::rootElementNamed(const char* name) const {
    const TiXmlElement* const root = std::as_const(*document_).FirstChildElement(name);
    if (!root)
        throw QuenzaXMLDocExcep(String("Could not find root '") + name + "' element in file '" + path_ + "'");
    return *root;
}

} // namespace Quenza
