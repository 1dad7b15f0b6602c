// SPDX-License-Identifier: MIT
#pragma once

#include "reading/parser_state.h"

class TiXmlElement;

namespace Quenza {

/// Short forms of lights. Each appends the nodes that it stands for, which refer to each other. These throw
/// QuenzaModelParserExcep, SceneParseUtilsExcep or what the loader of a mesh throws.
///
/// An `efficacy_scale` says how much such a light emits: `value`, and the `measure` that it is of, which is
/// "luminous_flux" (lm) when absent.

/// `rectanglelight`: material, mesh and model of a rectangle about `pos`, `width` metres along X and `height`
/// metres along Y, that faces down (-Z).
void readRectangleLight(ParserState& state, const TiXmlElement& element, NodeList& nodes);

/// `meshlight`: material and model that make a mesh shine with its `spectrum`, times its `texture`. All of
/// the mesh's materials are that one, so an external mesh is loaded to count them. An IES file is given by
/// `ies_profile` or by its `path` alone.
void readMeshLight(ParserState& state, const TiXmlElement& element, NodeList& nodes);

/// `exit_portal`: material and model; the mesh as for a mesh light.
void readExitPortal(ParserState& state, const TiXmlElement& element, NodeList& nodes);

} // namespace Quenza
