// SPDX-License-Identifier: MIT
// Any bytes as a model file of the format that the build names: reading ends in a mesh with sound indices, or
// in the loader's own exception.
#include "fuzz/fuzz_input.h"
#include "reading/model_loader.h"
#include "scene/mesh.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Quenza::String path = fuzz::writeInput("model." QUENZA_MODEL_FORMAT, data, size);
    static const Quenza::ModelLoader loader;
    Quenza::Mesh mesh;
    try {
        loader.streamModel(path, mesh, 1.0);
    } catch (const Quenza::ModelLoaderExcep&) {
        return 0;
    }
    mesh.checkAllIndices();
    return 0;
}
