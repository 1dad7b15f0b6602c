// SPDX-License-Identifier: MIT
#include "headless/import/texture_import.h"

#include "foundation/native_path.h"
#include "foundation/safe_file.h"
#include "foundation/string_utils.h"
#include "headless/images/image_files.h"
#include "headless/import/model_text.h"
#include "headless/runtime/texture_search.h"
#include "host/ids.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace headless {

namespace {

namespace fs = std::filesystem;

int hexDigit(char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                  : -1;
}

/// A reference that is a URL as a path.
std::string fromUrl(std::string_view url) {
    constexpr std::string_view SCHEME = "file://";
    if (url.starts_with(SCHEME)) {
        url.remove_prefix(SCHEME.size());
    }
    std::string path;
    for (size_t i = 0; i < url.size(); ++i) {
        const int high = url[i] == '%' && i + 2 < url.size() ? hexDigit(url[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(url[i + 2]) : -1;
        path += low >= 0 ? static_cast<char>(high * 16 + low) : url[i];
        i += low >= 0 ? 2 : 0;
    }
    return path;
}

/// "\\..\\images\\a.png" is meant from the model's folder, though it begins as a full path does.
std::string fromFolder(std::string path) {
    std::ranges::replace(path, '\\', '/');
    return path.starts_with("/..") ? path.substr(1) : path;
}

/// The last part of a path of any platform, without its suffix, as a name that every platform takes.
std::string plainStem(std::string path) {
    std::ranges::replace(path, '\\', '/');
    std::string stem = path.substr(path.rfind('/') + 1);
    if (const size_t dot = stem.rfind('.'); dot != std::string::npos && dot > 0) {
        stem.resize(dot);
    }
    const auto isPlain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
               c == '_';
    };
    std::ranges::replace_if(
        stem, [&](char c) { return !isPlain(c); }, '_');
    constexpr size_t LONGEST = 64;
    stem.resize(std::min(stem.size(), LONGEST));
    return stem.empty() ? "texture" : stem;
}

/// The format's suffix as the model tells it: "png", "jpg"; "" for one that isn't a plain word.
std::string suffixOf(const aiTexture& texture) {
    const std::string_view hint(
        texture.achFormatHint,
        static_cast<size_t>(
            std::find(texture.achFormatHint, texture.achFormatHint + HINTMAXTEXTURELEN, '\0') -
            texture.achFormatHint));
    const bool isPlain = std::ranges::all_of(hint, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    });
    return isPlain && !hint.empty() ? "." + Quenza::toLowerCase(hint) : ".img";
}

void save(const fs::path& path, const Image& image) {
    if (writeImage(path, image, {.filter = FILTER_PNG}) != IMAGERESULT_OK) {
        throw std::runtime_error("can't be written to " + Quenza::utf8Path(path));
    }
}

void saveTexels(const fs::path& path, const aiTexture& texture) {
    Image image;
    if (!texture.pcData || image.init(texture.mWidth, texture.mHeight, 24) != IMAGERESULT_OK) {
        throw std::runtime_error("inside the model file has a size that makes no sense");
    }
    uint8_t* byte = image.bytes();
    const size_t count = static_cast<size_t>(texture.mWidth) * texture.mHeight;
    for (size_t i = 0; i < count; ++i) {
        const aiTexel& texel = texture.pcData[i];
        *byte++ = texel.r;
        *byte++ = texel.g;
        *byte++ = texel.b;
    }
    save(path, image);
}

void saveBytes(const fs::path& path, const aiTexture& texture) {
    if (!texture.pcData || texture.mWidth == 0) {
        throw std::runtime_error("inside the model file is empty");
    }
    Quenza::SafeFile file(Quenza::utf8Path(path), Quenza::SafeFile::Mode::BINARY);
    file.write(texture.pcData, texture.mWidth);
    if (!file.commit()) {
        throw std::runtime_error("can't be written to " + Quenza::utf8Path(path));
    }
}

bool areEqual(const fs::path& a, const fs::path& b) {
    std::ifstream first(a, std::ios::binary);
    std::ifstream second(b, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return first && second && std::equal(Bytes(first), Bytes(), Bytes(second), Bytes());
}

bool isOpaque(const Image& alpha) {
    const uint8_t* const bytes = alpha.bytes();
    const size_t count = static_cast<size_t>(alpha.width()) * static_cast<size_t>(alpha.height()) * 3;
    return std::all_of(bytes, bytes + count, [](uint8_t byte) { return byte == 255; });
}

} // namespace

TextureImport::TextureImport(const aiScene& scene, std::string modelFile, const std::string& folder)
    : scene_(scene), modelFile_(std::move(modelFile)), folder_(Quenza::nativePath(folder)) {}

std::string TextureImport::fileOf(const aiString& reference) {
    if (const aiTexture* const embedded = scene_.GetEmbeddedTexture(reference.C_Str())) {
        return writeEmbedded(*embedded);
    }
    return findFile(modelText(reference));
}

std::string TextureImport::findFile(const std::string& reference) const {
    const Filename model{String(modelFile_)};
    // Files often name a place on the computer of whoever made them: the search then looks beside the model.
    for (const std::string& path : {fromFolder(reference), fromUrl(reference)}) {
        Filename found;
        if (findTexture(model.GetDirectory(), Filename(String(path)), Filename(), &found) &&
            found.Content()) {
            return Quenza::utf8Path(Quenza::nativePath(found.GetUtf8()).lexically_normal());
        }
    }
    throw std::runtime_error("\"" + reference + "\" was not found");
}

std::string TextureImport::writeEmbedded(const aiTexture& texture) {
    if (const auto known = written_.find(&texture); known != written_.end()) {
        return known->second;
    }
    const bool hasTexels = texture.mHeight > 0;
    return written_[&texture] = store(modelText(texture.mFilename), hasTexels ? ".png" : suffixOf(texture),
                                      [&](const fs::path& path) {
                                          hasTexels ? saveTexels(path, texture) : saveBytes(path, texture);
                                      });
}

std::optional<std::string> TextureImport::alphaOf(const aiString& reference) {
    const std::string file = fileOf(reference);
    const auto [entry, isNew] = alphas_.try_emplace(file);
    if (!isNew) {
        return entry->second;
    }
    Image alpha;
    if (readAlpha(Quenza::nativePath(file), alpha) == IMAGERESULT_OK && !isOpaque(alpha)) {
        entry->second =
            store(plainStem(file) + "_alpha", ".png", [&](const fs::path& path) { save(path, alpha); });
    }
    return entry->second;
}

std::string TextureImport::store(const std::string& name, const std::string& suffix,
                                 const std::function<void(const fs::path&)>& write) const {
    if (folder_.empty()) {
        throw std::runtime_error("would need a file of its own and is left out");
    }
    std::error_code error;
    fs::create_directories(folder_, error);
    const std::string stem = plainStem(name);
    const fs::path fresh = folder_ / (stem + ".new" + suffix);
    write(fresh);
    fs::path target = folder_ / (stem + suffix);
    for (int number = 2; fs::exists(target, error) && !areEqual(fresh, target); ++number) {
        target = folder_ / (stem + "_" + std::to_string(number) + suffix);
    }
    fs::rename(fresh, target, error);
    if (error) {
        throw std::runtime_error("can't be written to " + Quenza::utf8Path(target) + ": " + error.message());
    }
    return Quenza::utf8Path(target);
}

} // namespace headless
