// SPDX-License-Identifier: MIT

// In the place of its namesake in headless/images where there is no OpenImageIO: TIFF and OpenEXR files are
// of an unknown format then.

#include "foundation/native_path.h"
#include "foundation/rgbe_check.h"
#include "headless/images/image_files.h"
#include "headless/runtime/files.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <string_view>

namespace {

/// What one allocation of the decoder may take: it inflates whatever a PNG holds, however small the image is.
constexpr size_t ALLOCATION_LIMIT = size_t{1} << 31;

void* limitedRealloc(void* block, size_t size) {
    return size <= ALLOCATION_LIMIT ? std::realloc(block, size) : nullptr;
}

} // namespace

#define STBI_MALLOC(size) limitedRealloc(nullptr, size)
#define STBI_REALLOC(block, size) limitedRealloc(block, size)
#define STBI_FREE(block) std::free(block)
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_NO_STDIO
#define STBI_NO_GIF
#define STBI_NO_PSD
#define STBI_NO_PIC
#define STBI_NO_PNM
#include <stb/stb_image.h>

namespace headless {

namespace {

namespace fs = std::filesystem;

template <class Component>
struct Freed {
    void operator()(Component* pixels) const { stbi_image_free(pixels); }
};
template <class Component>
using Pixels = std::unique_ptr<Component, Freed<Component>>;

/// A file's bytes.
class Source {
public:
    explicit Source(std::string bytes) : bytes_(std::move(bytes)) {}

    std::string_view text() const { return bytes_; }
    const stbi_uc* data() const { return reinterpret_cast<const stbi_uc*>(bytes_.data()); }
    int size() const { return static_cast<int>(bytes_.size()); }
    bool isJpeg() const { return bytes_.starts_with("\xFF\xD8"); }

private:
    std::string bytes_;
};

/// Hands out a source's bytes, and notices who wants more: most decoders take zeros for what is missing.
struct Reading {
    std::string_view text;
    size_t at = 0;
    bool ranOut = false;
};

int readMore(void* user, char* data, int size) {
    // The decoder's own buffer takes what is left.
    constexpr size_t BUFFER = sizeof(stbi__context::buffer_start);
    auto& reading = *static_cast<Reading*>(user);
    const auto wanted = static_cast<size_t>(size);
    const size_t count = reading.text.copy(data, wanted, reading.at);
    reading.at += count;
    reading.ranOut |= count < wanted && (count == 0 || wanted != BUFFER);
    return static_cast<int>(count);
}

void skip(void* user, int count) {
    auto& reading = *static_cast<Reading*>(user);
    const auto target = static_cast<std::ptrdiff_t>(reading.at) + count;
    const auto end = static_cast<std::ptrdiff_t>(reading.text.size());
    reading.ranOut |= target > end;
    reading.at = static_cast<size_t>(std::clamp(target, std::ptrdiff_t{0}, end));
}

int isAtEnd(void* user) {
    const auto& reading = *static_cast<Reading*>(user);
    return reading.at == reading.text.size() ? 1 : 0;
}

/// Null when the file holds less than the whole picture; a JPEG's missing rest is grey, as with all of its
/// readers.
template <class Component, class Load>
Pixels<Component> decode(const Source& source, Load load, int channels) {
    static const stbi_io_callbacks CALLBACKS = {readMore, skip, isAtEnd};
    Reading reading{source.text()};
    int width = 0;
    int height = 0;
    int stored = 0;
    Pixels<Component> pixels(load(&CALLBACKS, &reading, &width, &height, &stored, channels));
    return reading.ranOut && !source.isJpeg() ? nullptr : std::move(pixels);
}

int32_t readColours(const Source& source, int /*channels*/, Image& image) {
    const auto count = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()) * 3;
    if (image.bytes()) {
        const auto pixels = decode<stbi_uc>(source, stbi_load_from_callbacks, 3);
        if (!pixels) {
            return IMAGERESULT_FILEERROR;
        }
        std::copy_n(pixels.get(), count, image.bytes());
        return IMAGERESULT_OK;
    }
    if (stbi_is_hdr_from_memory(source.data(), source.size())) {
        const auto pixels = decode<float>(source, stbi_loadf_from_callbacks, 3);
        if (!pixels) {
            return IMAGERESULT_FILEERROR;
        }
        std::copy_n(pixels.get(), count, image.floats());
        return IMAGERESULT_OK;
    }
    const auto pixels = decode<stbi_us>(source, stbi_load_16_from_callbacks, 3);
    if (!pixels) {
        return IMAGERESULT_FILEERROR;
    }
    std::transform(pixels.get(), pixels.get() + count, image.floats(),
                   [](stbi_us value) { return static_cast<float>(value) / 65535.0f; });
    return IMAGERESULT_OK;
}

int32_t readAlphaOf(const Source& source, int channels, Image& image) {
    if (channels != 2 && channels != 4) {
        return IMAGERESULT_WRONGTYPE;
    }
    if (const int32_t result = image.init(image.width(), image.height(), 24); result != IMAGERESULT_OK) {
        return result;
    }
    const auto pixels = decode<stbi_uc>(source, stbi_load_from_callbacks, 4);
    if (!pixels) {
        return IMAGERESULT_FILEERROR;
    }
    const auto count = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height());
    for (size_t i = 0; i < count; ++i) {
        std::fill_n(image.bytes() + 3 * i, 3, pixels.get()[4 * i + 3]);
    }
    return IMAGERESULT_OK;
}

/// Fills an image that has the file's size and depth.
using ReadPart = int32_t (*)(const Source&, int channels, Image&);

int32_t readFile(const fs::path& file, Image& image, ReadPart read) {
    // A pipe would wait for its other end.
    if (!files::isFile(file)) {
        return IMAGERESULT_NOTEXISTING;
    }
    std::ifstream stream(Quenza::systemPath(file), std::ios::binary | std::ios::ate);
    if (const std::streamoff size = stream.tellg();
        size < 0 || static_cast<size_t>(size) > ALLOCATION_LIMIT - 1) {
        return IMAGERESULT_FILEERROR;
    }
    stream.seekg(0);
    const Source source(std::string(std::istreambuf_iterator<char>(stream), {}));
    if (!Quenza::hasAllRadiancePixels(source.text())) {
        return IMAGERESULT_FILEERROR;
    }
    int width = 0;
    int height = 0;
    int channels = 0;
    if (!stbi_info_from_memory(source.data(), source.size(), &width, &height, &channels)) {
        return IMAGERESULT_WRONGTYPE;
    }
    const bool isDeep = stbi_is_hdr_from_memory(source.data(), source.size()) ||
                        stbi_is_16_bit_from_memory(source.data(), source.size());
    const int32_t result = image.init(width, height, isDeep ? 96 : 24);
    return result == IMAGERESULT_OK ? read(source, channels, image) : result;
}

int32_t readWhole(const fs::path& file, Image& image, ReadPart read) {
    image = Image();
    int32_t result = IMAGERESULT_FILEERROR;
    try {
        result = readFile(file, image, read);
    } catch (const std::bad_alloc&) {
        result = IMAGERESULT_OUTOFMEMORY;
    }
    if (result != IMAGERESULT_OK) {
        image = Image();
    }
    return result;
}

} // namespace

int32_t readImage(const fs::path& file, Image& image) {
    return readWhole(file, image, readColours);
}

int32_t readAlpha(const fs::path& file, Image& image) {
    return readWhole(file, image, readAlphaOf);
}

} // namespace headless
