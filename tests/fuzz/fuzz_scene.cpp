// SPDX-License-Identifier: MIT
// Any bytes as a scene: reading ends in a scene that can be written, or in the parser's own exception.
#include "foundation/exceptions.h"
#include "fuzz/fuzz_input.h"
#include "reading/scene_parser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Quenza::String path = fuzz::writeInput("scene.qzs", data, size);
    try {
        Quenza::Ref<Quenza::SceneNodeRoot> root;
        Quenza::QuenzaModelParser().parseScene(root, path, {}, "");
        try {
            root->finalise(path);
            root->checkValidity();
            root->toXMLString();
        } catch (const Quenza::QuenzaException&) {
            // A scene with dangling references or missing meshes is read, but neither bound nor written.
        }
    } catch (const Quenza::QuenzaModelParserExcep&) {
    }
    return 0;
}
