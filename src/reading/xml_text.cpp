// SPDX-License-Identifier: MIT
#include "reading/xml_text.h"

#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "reading/xml_document.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <tinyxml.h>

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
    auto out = text.begin() + i64(std::min(text.find('\r'), text.size())); // by memchr
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

/// What TinyXML has to say when it gets as much of the text as it can take.
void askTinyXML(std::string& text, XMLFault& fault) {
    text.resize(fault.told_by_tinyxml);
    TiXmlDocument document;
    document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
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

} // namespace

void keepWhiteSpaceOfTexts() {
    [[maybe_unused]] static const bool is_set = [] {
        TiXmlBase::SetCondenseWhiteSpace(false);
        return true;
    }();
}

std::string loadXMLText(const String& path, XMLOutline* outline) {
    // A pipe or a device would block, or never end; for a directory the system has its own words.
    if (PlatformUtils::isSpecialFile(path) && !FileUtils::directoryExists(path))
        throw QuenzaXMLDocExcep("Failed to open XML doc from path '" + path + "': not a file");
    std::string text;
    if (!readFile(path, text))
        throw QuenzaXMLDocExcep("Failed to open XML doc from path '" + path +
                                "': " + PlatformUtils::lastErrorText());
    prepareXMLText(text, path, outline);
    return text;
}

void prepareXMLText(std::string& text, const String& label, XMLOutline* outline) {
    keepWhiteSpaceOfTexts();
    unifyLineEnds(text);
    std::optional<XMLFault> fault = precheckXML(text, outline);
    if (!fault)
        return;
    if (fault->told_by_tinyxml > 0)
        askTinyXML(text, *fault);
    if (fault->no_root)
        throw QuenzaXMLDocExcep("Could not root element in file '" + label + "'" + placeText(*fault));
    throw QuenzaXMLDocExcep("failed to load XML doc from path '" + label + "': " + fault->description +
                            placeText(*fault));
}

} // namespace Quenza
