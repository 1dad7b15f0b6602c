// SPDX-License-Identifier: MIT
#include "render/xml_file.h"

#include "foundation/file_utils.h"
#include "foundation/safe_file.h"
#include "reading/xml_text.h"
#include "shared/text.h"

#include <tinyxml.h>

bool loadXmlDocument(TiXmlDocument& document, const Filename& file) {
    try {
        const std::string text = Quenza::FileUtils::readEntireFile(toSceneString(file));
        Quenza::keepWhiteSpaceOfTexts(); // folder names may hold blanks side by side
        document.Parse(text.c_str(), nullptr, TIXML_ENCODING_UTF8);
        return !document.Error();
    } catch (const Quenza::FileUtils::FileUtilsExcep&) {
        return false;
    }
}

bool saveXmlDocument(const TiXmlDocument& document, const Filename& file) {
    TiXmlPrinter printer;
    document.Accept(&printer);
    Quenza::SafeFile out(toSceneString(file), Quenza::SafeFile::Mode::TEXT);
    out.write(printer.CStr(), printer.Size());
    return out.commit();
}
