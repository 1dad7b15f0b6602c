// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "reading/xml_precheck.h"

#include <string>

namespace Quenza {

/// To be called before TinyXML parses anything: it would trim and fold the white space of all texts, and
/// "true " be a boolean. It has one flag for the whole process, which this sets at the first call and nobody
/// changes later, so that readers in several threads don't meet over it.
void keepWhiteSpaceOfTexts();

/// The text of an XML file that TinyXML can take: checked by precheckXML, with LF for all line ends, as
/// TinyXML has it for files. Throws QuenzaXMLDocExcep.
std::string loadXMLText(const String& path, XMLOutline* outline = nullptr);

/// The same for a text at hand; `label` stands in the messages for the path.
void prepareXMLText(std::string& text, const String& label, XMLOutline* outline = nullptr);

} // namespace Quenza
