// SPDX-License-Identifier: MIT
#pragma once

#include "reading/parser_state.h"

class TiXmlElement;

namespace Quenza {

/// True for the element that stands for the content of another file.
bool isInclude(const TiXmlElement& element);

/// Reads a child of `scene` or `scenedata` other than `include` by the table of all element names. Appends
/// the nodes that it makes; some only change the state. Throws QuenzaModelParserExcep ("Unknown element type"
/// among others) and what the readers of values and meshes throw.
void readNodeElement(ParserState& state, const TiXmlElement& element, NodeList& nodes);

} // namespace Quenza
