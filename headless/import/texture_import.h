// SPDX-License-Identifier: MIT
#pragma once

#include <assimp/scene.h>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace headless {

/// Finds the images that a model's materials name, and takes those out that lie inside the model file.
class TextureImport {
public:
    /// `folder` is where images from inside the file go; it is made when there is one. "" leaves them out.
    TextureImport(const aiScene& scene, std::string modelFile, const std::string& folder);

    /// The file with the image. Throws std::runtime_error, with a text that goes on "its texture ...", when
    /// there is none.
    std::string fileOf(const aiString& reference);
    /// An image of the alpha of the image of `fileOf`, written to the folder; nothing when that is opaque.
    /// Throws as `fileOf` does.
    std::optional<std::string> alphaOf(const aiString& reference);

private:
    std::string findFile(const std::string& reference) const;
    std::string writeEmbedded(const aiTexture& texture);
    /// Lets `write` write a file of the folder, and gives its path. `name` may be any text. A file that is
    /// there already is used when it is the same, and never overwritten.
    std::string store(const std::string& name, const std::string& suffix,
                      const std::function<void(const std::filesystem::path&)>& write) const;

    const aiScene& scene_;
    std::string modelFile_;
    std::filesystem::path folder_;
    std::unordered_map<const aiTexture*, std::string> written_;
    std::unordered_map<std::string, std::optional<std::string>> alphas_;
};

} // namespace headless
