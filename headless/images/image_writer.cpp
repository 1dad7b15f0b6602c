// SPDX-License-Identifier: MIT
#include "headless/images/image_files.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <algorithm>
#include <fstream>
#include <vector>

namespace headless {

namespace {

namespace fs = std::filesystem;

struct Writer {
    int32_t filter;
    const char* name;
    /// What the format holds of a 24 and of a 96 bit image.
    OIIO::TypeDesc::BASETYPE ofBytes;
    OIIO::TypeDesc::BASETYPE ofFloats;
    bool knowsGrey;
};

using OIIO::TypeDesc;

constexpr Writer WRITERS[] = {
    {FILTER_TIF, "tiff", TypeDesc::UINT8, TypeDesc::FLOAT, true},
    {FILTER_TGA, "targa", TypeDesc::UINT8, TypeDesc::UINT8, true},
    {FILTER_BMP, "bmp", TypeDesc::UINT8, TypeDesc::UINT8, true},
    {FILTER_JPG, "jpeg", TypeDesc::UINT8, TypeDesc::UINT8, true},
    {FILTER_PNG, "png", TypeDesc::UINT8, TypeDesc::UINT8, true},
    {FILTER_EXR, "openexr", TypeDesc::HALF, TypeDesc::FLOAT, true},
    {FILTER_HDR, "hdr", TypeDesc::FLOAT, TypeDesc::FLOAT, false},
};

/// Weights of the eye for red, green and blue; the three together are 1, so that grey stays what it is.
float brightnessOf(const float* pixel) {
    return 0.299f * pixel[0] + 0.587f * pixel[1] + 0.114f * pixel[2];
}

uint8_t brightnessOf(const uint8_t* pixel) {
    return static_cast<uint8_t>((299 * pixel[0] + 587 * pixel[1] + 114 * pixel[2] + 500) / 1000);
}

/// The brightness of each pixel, `channels` times.
template <class Component>
std::vector<Component> toGrey(const Component* pixels, size_t count, size_t channels) {
    std::vector<Component> grey(count * channels);
    for (size_t i = 0; i < count; ++i) {
        std::fill_n(grey.begin() + static_cast<std::ptrdiff_t>(i * channels), channels,
                    brightnessOf(pixels + 3 * i));
    }
    return grey;
}

template <class Component>
bool writePixels(OIIO::ImageOutput& output, const Component* pixels, size_t count, size_t channels,
                 bool greyscale) {
    const auto type = OIIO::BaseTypeFromC<Component>::value;
    return greyscale ? output.write_image(type, toGrey(pixels, count, channels).data())
                     : output.write_image(type, pixels);
}

/// The bytes of the file, made in memory: the JPEG library would end the process at a full disk. False when
/// the format can't hold the image.
bool encode(const Image& image, const Writer& writer, const ImageSaving& saving,
            std::vector<unsigned char>& bytes) {
    OIIO::Filesystem::IOVecOutput memory(bytes);
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create(writer.name);
    if (!output || !output->set_ioproxy(&memory)) {
        return false;
    }
    const int channels = saving.greyscale && writer.knowsGrey ? 1 : 3;
    OIIO::ImageSpec layout(image.width(), image.height(), channels,
                           image.bytes() ? writer.ofBytes : writer.ofFloats);
    layout.attribute("CompressionQuality", std::clamp(saving.quality, 0, 100));
    // Colours as sharp as the brightness: textures are looked at from near.
    layout.attribute("jpeg:subsampling", "4:4:4");
    const size_t count = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height());
    const bool isWritten = output->open("memory", layout) &&
                           (image.bytes() ? writePixels(*output, image.bytes(), count,
                                                        static_cast<size_t>(channels), saving.greyscale)
                                          : writePixels(*output, image.floats(), count,
                                                        static_cast<size_t>(channels), saving.greyscale)) &&
                           output->close();
    static_cast<void>(output->geterror()); // Else it would be printed.
    return isWritten;
}

bool writeBytes(const fs::path& file, const std::vector<unsigned char>& bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream.good();
}

} // namespace

int32_t writeImage(const fs::path& file, const Image& image, const ImageSaving& saving) {
    const Writer* const writer = std::ranges::find(WRITERS, saving.filter, &Writer::filter);
    if (writer == std::end(WRITERS) || image.depth() == 0 || !file.has_filename()) {
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
        std::vector<unsigned char> bytes;
        if (encode(image, *writer, saving, bytes) && writeBytes(partial, bytes)) {
            fs::rename(partial, file, error);
            result = error ? IMAGERESULT_FILEERROR : IMAGERESULT_OK;
        }
    } catch (const std::bad_alloc&) {
        result = IMAGERESULT_OUTOFMEMORY;
    } catch (const std::exception&) {
        result = IMAGERESULT_FILEERROR;
    }
    if (result != IMAGERESULT_OK) {
        fs::remove(partial, error);
    }
    return result;
}

std::string encodePng(const Image& image) {
    const Writer* const writer = std::ranges::find(WRITERS, FILTER_PNG, &Writer::filter);
    std::vector<unsigned char> bytes;
    try {
        if (image.depth() != 0 && encode(image, *writer, ImageSaving(), bytes)) {
            return {bytes.begin(), bytes.end()};
        }
    } catch (const std::bad_alloc&) {
        // No image is shown then.
    }
    return "";
}

} // namespace headless
