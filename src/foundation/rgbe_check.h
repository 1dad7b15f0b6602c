// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Quenza {

/// Whether a Radiance picture (.hdr, with rows from top to bottom, pixels from left to right) holds all of
/// its pixels. To be asked before stb_image decodes one: a run of length zero, which is also what it reads
/// behind the end, holds it in a loop for ever. True for bytes that are no such picture; the decoder tells
/// those itself. Runs: Greg Ward, "Real Pixels", Graphics Gems II, 1991, with the later format of rows, each
/// component apart.
bool hasAllRadiancePixels(std::string_view bytes);

} // namespace Quenza
