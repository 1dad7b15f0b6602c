// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "reading/xml_precheck.h"

#include <string>

namespace Quenza {

/// The text of an XML file that TinyXML can take: checked by precheckXML, with LF for all line ends, as
/// TinyXML has it for files. Throws QuenzaXMLDocExcep.
std::string loadXMLText(const String& path, XMLOutline* outline = nullptr);

/// The same for a text at hand; `label` stands in the messages for the path.
void prepareXMLText(std::string& text, const String& label, XMLOutline* outline = nullptr);

} // namespace Quenza
