// SPDX-License-Identifier: MIT
#pragma once

#include "reading/format_decoder.h"

namespace Quenza {

/// PLY in its three forms: the positions of the element "vertex" and the faces of "face", whose list is
/// called "vertex_indices" or, as many exporters have it, "vertex_index". All faces have the material
/// "default".
///
/// Faces of other than three or four corners are not split but throw, as in OBJ files. Positions that are no
/// finite numbers make the body unreadable.
class FormatDecoderPLY : public FormatDecoder {
public:
    String getExtension() const override { return "ply"; }
    void streamModel(const String& path, Mesh& mesh, double scale) override;
};

} // namespace Quenza
