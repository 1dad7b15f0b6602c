// SPDX-License-Identifier: MIT
#include "render/xml_file.h"

#include "foundation/file_utils.h"
#include "foundation/safe_file.h"
#include "shared/text.h"

#include <tinyxml.h>

namespace {

/// Folder names may hold blanks side by side, which TinyXML folds into one unless told not to.
class KeepWhiteSpace {
public:
    KeepWhiteSpace() : before_(TiXmlBase::IsWhiteSpaceCondensed()) {
        TiXmlBase::SetCondenseWhiteSpace(false);
    }
    ~KeepWhiteSpace() { TiXmlBase::SetCondenseWhiteSpace(before_); }
    KeepWhiteSpace(const KeepWhiteSpace&) = delete;
    KeepWhiteSpace& operator=(const KeepWhiteSpace&) = delete;

private:
    bool before_;
};

} // namespace

bool loadXmlDocument(TiXmlDocument& document, const Filename& file) {
    try {
        const std::string text = Quenza::FileUtils::readEntireFile(toSceneString(file));
        const KeepWhiteSpace keep;
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
