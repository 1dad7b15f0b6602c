// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

namespace headless {

/// Names a folder for the images of each model file of a document.
class ModelTextureFolders {
public:
    ModelTextureFolders() = default;
    /// Below `root`; "" gives no folders.
    explicit ModelTextureFolders(std::string root) : root_(std::move(root)) {}

    /// "<root>/<model>_textures", with a number behind it for another model of that name; "" without a root.
    std::string next(const std::string& modelFile);

private:
    std::string root_;
    std::set<std::string> taken_;
};

} // namespace headless
