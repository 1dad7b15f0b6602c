// SPDX-License-Identifier: MIT
#pragma once

#include "reading/format_decoder.h"

namespace Quenza {

/// The renderer's own mesh files; the format is told at class Mesh.
class FormatDecoderMeshFile : public FormatDecoder {
public:
    String getExtension() const override { return "qzmesh"; }
    void streamModel(const String& path, Mesh& mesh, double scale) override;
};

} // namespace Quenza
