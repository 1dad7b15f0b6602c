// SPDX-License-Identifier: MIT
#include "reading/xml_file.h"

#include "foundation/file_utils.h"

#include <tinyxml.h>

namespace Quenza {

namespace {

std::string place(int row, int column) {
    return "line " + std::to_string(row) + ", column " + std::to_string(column) + ": ";
}

} // namespace

std::string placeOf(const TiXmlNode& node) {
    return place(node.Row(), node.Column());
}

bool loadXMLFile(const std::string& path, TiXmlDocument& document, std::string& fault) {
    std::string text;
    try {
        text = FileUtils::readEntireFile(path);
    } catch (const FileUtils::FileUtilsExcep& excep) {
        fault = excep.what();
        return false;
    }
    // TinyXML reads up to the first zero byte and calls the rest well.
    const size_t zero = text.find('\0');
    if (zero != std::string::npos) {
        fault = "a zero byte stands in the file, at byte " + std::to_string(zero);
        return false;
    }
    document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
    if (document.Error()) {
        fault = place(document.ErrorRow(), document.ErrorCol()) + document.ErrorDesc();
        return false;
    }
    return true;
}

} // namespace Quenza
