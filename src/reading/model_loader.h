// SPDX-License-Identifier: MIT
#pragma once

#include "reading/format_decoder.h"

#include <map>
#include <memory>
#include <string>

namespace Quenza {

/// Reads model files of all formats: ".obj", ".ply" and ".qzmesh".
class ModelLoader {
public:
    ModelLoader();

    /// Fills a new mesh, its positions multiplied by `scale`, and ends it with endOfModel. All failures are
    /// ModelLoaderExceps; the mesh is then to be dropped. The decoder is chosen by the path's extension:
    ///   "filename too short: '" + path + "'"    below 4 characters
    ///   "key '" + extension + "' not found"
    void streamModel(const String& path, Mesh& mesh, double scale) const;

    /// True for paths of a format that has a decoder.
    bool knowsFormatOf(const String& path) const;

private:
    void addDecoder(std::unique_ptr<FormatDecoder> decoder);
    FormatDecoder& decoderFor(const String& path) const;

    std::map<std::string, std::unique_ptr<FormatDecoder>> decoders_; ///< By extension.
};

/// Lets the meshes of scenes come from all these formats; see setMeshLoader.
void installModelLoader();

} // namespace Quenza
