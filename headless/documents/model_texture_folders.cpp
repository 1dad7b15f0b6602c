// SPDX-License-Identifier: MIT
#include "headless/documents/model_texture_folders.h"

#include "headless/runtime/platform.h"

#include <filesystem>

namespace headless {

std::string ModelTextureFolders::next(const std::string& modelFile) {
    if (root_.empty()) {
        return "";
    }
    const std::string model = platform::utf8FromPath(platform::pathFromUtf8(modelFile).stem()) + "_textures";
    std::string name = model;
    for (int number = 2; !taken_.insert(name).second; ++number) {
        name = model + "_" + std::to_string(number);
    }
    return platform::utf8FromPath(platform::pathFromUtf8(root_) / platform::pathFromUtf8(name));
}

} // namespace headless
