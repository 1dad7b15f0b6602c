// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Quenza {

/// Deepest nesting of elements. TinyXML recurses and takes quadratic time with depth; scenes stay below 20.
inline constexpr u32 MAX_XML_DEPTH = 256;
/// Most attributes of one element, for which TinyXML takes quadratic time. Scenes have none.
inline constexpr u32 MAX_XML_ATTRIBUTES = 100;

/// What is wrong with an XML text, and where.
struct XMLFault {
    std::string description;
    u32 line = 1; ///< As in XMLPlace.
    u32 column = 1;
    /// TinyXML finds the fault itself and has words for it when it is given this many bytes of the text; 0
    /// when it would take the text, or not survive it.
    u64 told_by_tinyxml = 0;
    /// The text has no element at all.
    bool no_root = false;
};

/// Where the elements of a document stand: offsets into its text.
struct XMLOutline {
    std::string root_name;
    std::vector<u64> child_ends;     ///< Behind the children of the root.
    std::vector<u64> element_begins; ///< Of all elements but the root, in the order of their start tags.
};

/// Goes through a text once, in linear time and with constant memory but for the names of open elements, and
/// finds the first place that is no well-formed UTF-8 XML, or too deep or too crowded for TinyXML.
///
/// Comments inside a text are moved behind it, so that TinyXML gives the text in one piece; it would drop the
/// white space on both sides of them. Lines stay as they are.
/// `outline` is filled where it isn't null; its offsets hold for the text as it is afterwards.
std::optional<XMLFault> precheckXML(std::string& text, XMLOutline* outline = nullptr);

} // namespace Quenza
