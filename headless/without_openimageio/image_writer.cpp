// SPDX-License-Identifier: MIT

// In the place of its namesake in headless/images where there is no OpenImageIO: TIFF and OpenEXR files
// aren't written then.

#include "headless/images/image_files.h"

#include <algorithm>
#include <fstream>
#include <new>
#include <string>
#include <system_error>
#include <vector>

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#include <stb/stb_image_write.h>

namespace headless {

namespace {

namespace fs = std::filesystem;

/// Weights of the eye for red, green and blue; the three together are 1, so that grey stays what it is.
uint8_t brightnessOf(const uint8_t* pixel) {
    return static_cast<uint8_t>((299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2] + 500) / 1000);
}

std::vector<uint8_t> bytesOf(const Image& image, bool greyscale) {
    const auto count = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()) * 3;
    std::vector<uint8_t> bytes(count);
    if (image.bytes()) {
        std::copy_n(image.bytes(), count, bytes.begin());
    } else {
        std::transform(image.floats(), image.floats() + count, bytes.begin(), toByte);
    }
    if (greyscale) {
        for (size_t i = 0; i < count / 3; ++i) {
            bytes[i] = brightnessOf(&bytes[3 * i]);
        }
        bytes.resize(count / 3);
    }
    return bytes;
}

std::vector<float> floatsOf(const Image& image, bool greyscale) {
    const auto count = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()) * 3;
    std::vector<float> floats(count);
    if (image.floats()) {
        std::copy_n(image.floats(), count, floats.begin());
    } else {
        std::transform(image.bytes(), image.bytes() + count, floats.begin(),
                       [](uint8_t value) { return static_cast<float>(value) / 255.0f; });
    }
    for (size_t i = 0; greyscale && i < count; i += 3) {
        std::fill_n(&floats[i], 3, 0.299f * floats[i] + 0.587f * floats[i + 1] + 0.114f * floats[i + 2]);
    }
    return floats;
}

void append(void* bytes, void* data, int size) {
    static_cast<std::string*>(bytes)->append(static_cast<const char*>(data), static_cast<size_t>(size));
}

/// The file's bytes; empty for a format that isn't written.
std::string encode(const Image& image, const ImageSaving& saving) {
    std::string out;
    const int width = image.width();
    const int height = image.height();
    if (saving.filter == FILTER_HDR) {
        stbi_write_hdr_to_func(append, &out, width, height, 3, floatsOf(image, saving.greyscale).data());
        return out;
    }
    const int channels = saving.greyscale ? 1 : 3;
    const std::vector<uint8_t> bytes = bytesOf(image, saving.greyscale);
    switch (saving.filter) {
    case FILTER_PNG:
        stbi_write_png_to_func(append, &out, width, height, channels, bytes.data(), width * channels);
        break;
    case FILTER_JPG:
        stbi_write_jpg_to_func(append, &out, width, height, channels, bytes.data(),
                               std::clamp(saving.quality, 1, 100));
        break;
    case FILTER_BMP:
        stbi_write_bmp_to_func(append, &out, width, height, channels, bytes.data());
        break;
    case FILTER_TGA:
        stbi_write_tga_to_func(append, &out, width, height, channels, bytes.data());
        break;
    default:
        break;
    }
    return out;
}

bool writeBytes(const fs::path& file, const std::string& bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream.good();
}

} // namespace

int32_t writeImage(const fs::path& file, const Image& image, const ImageSaving& saving) {
    if (image.depth() == 0 || !file.has_filename()) {
        return IMAGERESULT_PARAM_ERROR;
    }
    std::error_code error;
    // The rename would put an ordinary file in the place of a device.
    if (fs::exists(file, error) && !fs::is_regular_file(file, error)) {
        return IMAGERESULT_FILEERROR;
    }
    fs::path partial = file;
    partial += ".partial";
    int32_t result = IMAGERESULT_FILEERROR;
    try {
        const std::string bytes = encode(image, saving);
        if (bytes.empty()) {
            return IMAGERESULT_PARAM_ERROR;
        }
        if (writeBytes(partial, bytes)) {
            fs::rename(partial, file, error);
            result = error ? IMAGERESULT_FILEERROR : IMAGERESULT_OK;
        }
    } catch (const std::bad_alloc&) {
        result = IMAGERESULT_OUTOFMEMORY;
    }
    if (result != IMAGERESULT_OK) {
        fs::remove(partial, error);
    }
    return result;
}

std::string encodePng(const Image& image) {
    try {
        return image.depth() != 0 ? encode(image, ImageSaving()) : "";
    } catch (const std::bad_alloc&) {
        return ""; // No image is shown then.
    }
}

} // namespace headless
