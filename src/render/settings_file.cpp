// SPDX-License-Identifier: MIT
#include "render/settings_file.h"

#include "render/xml_file.h"

#include <tinyxml.h>

namespace {

TiXmlElement* findGlobalSettings(TiXmlDocument& document) {
    TiXmlElement* element = document.FirstChildElement("global_settings");
    while (element && element->NoChildren()) {
        element = element->NextSiblingElement("global_settings");
    }
    return element;
}

/// White space at the ends is a hand editor's line break, not part of a folder's name.
std::string trimmed(const std::string& text) {
    constexpr const char* WHITE_SPACE = " \t\r\n";
    const size_t first = text.find_first_not_of(WHITE_SPACE);
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(WHITE_SPACE) + 1 - first);
}

} // namespace

bool readSettings(const Filename& file, Filename& rendererDirectory) {
    TiXmlDocument document;
    if (!loadXmlDocument(document, file)) {
        return false;
    }
    TiXmlElement* const settings = findGlobalSettings(document);
    const TiXmlElement* const path = settings ? settings->FirstChildElement("PATH") : nullptr;
    if (!path) {
        return false;
    }
    const char* const text = path->GetText();
    rendererDirectory = Filename(String(trimmed(text ? text : "")));
    return true;
}

bool writeSettings(const Filename& file, const Filename* rendererDirectory) {
    TiXmlDocument document;
    loadXmlDocument(document, file);
    document.ClearError();
    if (rendererDirectory) {
        if (TiXmlElement* const old = findGlobalSettings(document)) {
            document.RemoveChild(old);
        }
        TiXmlElement settings("global_settings");
        TiXmlElement path("PATH");
        path.InsertEndChild(TiXmlText(rendererDirectory->GetUtf8()));
        settings.InsertEndChild(path);
        document.InsertEndChild(settings);
    }
    return saveXmlDocument(document, file);
}
