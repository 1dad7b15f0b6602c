// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class TiXmlDocument;
class TiXmlNode;

namespace Quenza {

/// Reads and parses a whole XML file as UTF-8. False with `fault` told: what, and at which line and column.
bool loadXMLFile(const std::string& path, TiXmlDocument& document, std::string& fault);

/// "line 3, column 7: ", for messages about a node.
std::string placeOf(const TiXmlNode& node);

} // namespace Quenza
