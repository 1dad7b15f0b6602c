// SPDX-License-Identifier: MIT
#include "headless/images/image_encoder.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <algorithm>
#include <vector>

namespace headless {

namespace {

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
bool encodeAs(const Image& image, const Writer& writer, const ImageSaving& saving,
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

} // namespace

bool canWrite(int32_t filter) {
    const Writer* const writer = std::ranges::find(WRITERS, filter, &Writer::filter);
    return writer != std::end(WRITERS) && OIIO::ImageOutput::create(writer->name) != nullptr;
}

int32_t encodeImage(const Image& image, const ImageSaving& saving, std::vector<unsigned char>& bytes) {
    const Writer* const writer = std::ranges::find(WRITERS, saving.filter, &Writer::filter);
    if (writer == std::end(WRITERS) || image.depth() == 0) {
        return IMAGERESULT_PARAM_ERROR;
    }
    try {
        return encodeAs(image, *writer, saving, bytes) ? IMAGERESULT_OK : IMAGERESULT_FILEERROR;
    } catch (const std::bad_alloc&) {
        return IMAGERESULT_OUTOFMEMORY;
    } catch (const std::exception&) {
        return IMAGERESULT_FILEERROR;
    }
}

} // namespace headless
