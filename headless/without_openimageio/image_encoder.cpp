// SPDX-License-Identifier: MIT

// In the place of its namesake in headless/images where there is no OpenImageIO: TIFF and OpenEXR files
// aren't written then.

#include "headless/images/image_encoder.h"

#include <algorithm>
#include <new>
#include <vector>

#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

namespace headless {

namespace {

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
    const auto* const begin = static_cast<const unsigned char*>(data);
    auto& out = *static_cast<std::vector<unsigned char>*>(bytes);
    out.insert(out.end(), begin, begin + size);
}

/// Leaves the bytes empty for a format that isn't written.
void encode(const Image& image, const ImageSaving& saving, std::vector<unsigned char>& out) {
    const int width = image.width();
    const int height = image.height();
    if (saving.filter == FILTER_HDR) {
        stbi_write_hdr_to_func(append, &out, width, height, 3, floatsOf(image, saving.greyscale).data());
        return;
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
}

} // namespace

bool canWrite(int32_t filter) {
    return filter != FILTER_TIF && filter != FILTER_EXR;
}

int32_t encodeImage(const Image& image, const ImageSaving& saving, std::vector<unsigned char>& bytes) {
    if (image.depth() == 0) {
        return IMAGERESULT_PARAM_ERROR;
    }
    try {
        encode(image, saving, bytes);
    } catch (const std::bad_alloc&) {
        return IMAGERESULT_OUTOFMEMORY;
    }
    return bytes.empty() ? IMAGERESULT_PARAM_ERROR : IMAGERESULT_OK;
}

} // namespace headless
