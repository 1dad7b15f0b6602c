// SPDX-License-Identifier: MIT
#pragma once

#include "reading/format_decoder.h"

namespace Quenza {

/// Wavefront OBJ: the lines "v", "vt", "vn", "f" and "usemtl"; all others are ignored.
/// Texts are UTF-8, with or without a mark at the start of the file.
///
/// Each distinct combination of indices becomes a vertex with, where the file has them, a normal and a UV
/// entry of its own. So normals are the file's own, corner by corner; the mesh takes normals for all vertices
/// or for none, and a file that gives them to some only is refused with the mesh's text. Corners without
/// texture coordinates have (0, 0) where others have some.
///
/// A material's name is the rest of its line. Faces before the first "usemtl" have material index 0, which
/// belongs to the first name, or to "default" when there is none.
class FormatDecoderObj : public FormatDecoder {
public:
    String getExtension() const override { return "obj"; }
    void streamModel(const String& path, Mesh& mesh, double scale) override;
};

} // namespace Quenza
