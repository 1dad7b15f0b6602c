// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/material.h"
#include "scene/param.h"

#include <span>

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// An element that older files have in the place of a parameter.
struct OlderForm {
    enum Content {
        NUMBER,
        COLOUR,   ///< Three numbers, of gamma 2.2.
        SPECTRUM, ///< One of the spectrum elements.
        TEXTURE,  ///< A `texture_index`, or a texture's own elements.
    };

    const char* parameter;
    const char* element;
    Content content;
};

/// The older forms of the parameter `element`, in one piece of the table.
std::span<const OlderForm> olderFormsOf(const char* element);

/// Reads an older form. A texture of its own joins those of `material`. Throw QuenzaModelParserExcep or
/// SceneParseUtilsExcep.
void parseOlderForm(const ParserState& state, const TiXmlElement& element, OlderForm::Content content,
                    Material& material, Ref<WavelengthDependentParam>& param);
void parseOlderForm(const ParserState& state, const TiXmlElement& element, OlderForm::Content content,
                    Material& material, Ref<DisplacementParam>& param);

} // namespace Quenza
