// SPDX-License-Identifier: MIT
#include "headless/documents/model_texture_folders.h"

#include "foundation/native_path.h"

#include <filesystem>

namespace headless {

std::string ModelTextureFolders::next(const std::string& modelFile) {
    if (root_.empty()) {
        return "";
    }
    const std::string model = Quenza::utf8Path(Quenza::nativePath(modelFile).stem()) + "_textures";
    std::string name = model;
    for (int number = 2; !taken_.insert(name).second; ++number) {
        name = model + "_" + std::to_string(number);
    }
    return Quenza::utf8Path(Quenza::nativePath(root_) / Quenza::nativePath(name));
}

} // namespace headless
