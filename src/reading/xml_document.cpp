// SPDX-License-Identifier: MIT
#include "reading/xml_document.h"

#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "foundation/safe_file.h"
#include "reading/xml_precheck.h"

#include <algorithm>
#include <cstdio>
#include <tinyxml.h>
#include <utility>

namespace Quenza {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// False with the reason left to PlatformUtils::lastErrorText.
bool readFile(const String& path, std::string& text) {
    const std::unique_ptr<std::FILE, CloseFile> file(PlatformUtils::openFile(path, "rb"));
    const i64 size = file ? PlatformUtils::openFileSize(file.get()) : -1;
    if (size < 0)
        return false;
    text.resize(u64(size));
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    return std::ferror(file.get()) == 0;
}

/// CR LF and CR become LF, as TinyXML has it for files.
void unifyLineEnds(std::string& text) {
    auto out = std::find(text.begin(), text.end(), '\r');
    for (auto in = out; in != text.end(); ++in) {
        if (*in == '\r') {
            *out++ = '\n';
            if (in + 1 != text.end() && in[1] == '\n')
                ++in;
        } else {
            *out++ = *in;
        }
    }
    text.erase(out, text.end());
}

void parseWithTinyXML(TiXmlDocument& document, const std::string& text) {
    document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
}

/// What TinyXML has to say when it gets as much of the text as it can take.
void askTinyXML(std::string& text, XMLFault& fault) {
    text.resize(fault.told_by_tinyxml);
    TiXmlDocument document;
    parseWithTinyXML(document, text);
    if (!document.Error())
        return;
    fault.description = document.ErrorDesc();
    if (document.ErrorRow() > 0) { // some faults have no place there
        fault.line = u32(document.ErrorRow());
        fault.column = u32(document.ErrorCol());
    }
}

std::string placeText(const XMLFault& fault) {
    return "  (Line " + std::to_string(fault.line) + ", column " + std::to_string(fault.column) + ".)";
}

[[noreturn]] void failToParse(const String& path, const XMLFault& fault) {
    throw QuenzaXMLDocExcep("failed to load XML doc from path '" + path + "': " + fault.description +
                            placeText(fault));
}

} // namespace

XMLDocument::XMLDocument() : document_(std::make_unique<TiXmlDocument>()) {}
XMLDocument::~XMLDocument() = default;

void XMLDocument::loadDocument(const String& path) {
    path_ = path;
    document_ = std::make_unique<TiXmlDocument>();
    std::string text;
    if (!readFile(path, text))
        throw QuenzaXMLDocExcep("Failed to open XML doc from path '" + path +
                                "': " + PlatformUtils::lastErrorText());
    parse(text);
}

void XMLDocument::parseText(std::string_view text, const String& label) {
    path_ = label;
    document_ = std::make_unique<TiXmlDocument>();
    std::string copy(text);
    parse(copy);
}

void XMLDocument::parse(std::string& text) {
    unifyLineEnds(text);
    if (std::optional<XMLFault> fault = precheckXML(text)) {
        if (fault->told_by_tinyxml > 0)
            askTinyXML(text, *fault);
        if (fault->no_root)
            throw QuenzaXMLDocExcep("Could not root element in file '" + path_ + "'" + placeText(*fault));
        failToParse(path_, *fault);
    }
    auto parsed = std::make_unique<TiXmlDocument>();
    parseWithTinyXML(*parsed, text);
    if (parsed->Error())
        failToParse(path_, {parsed->ErrorDesc(), u32(std::max(parsed->ErrorRow(), 1)),
                            u32(std::max(parsed->ErrorCol(), 1)), 0, false});
    document_ = std::move(parsed);
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
