// SPDX-License-Identifier: MIT
#include "engine/images/tiff_file.h"

#include "foundation/types.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <tiffio.h>
#include <vector>

namespace engine {

namespace {

/// More than the largest strip of any image that is not refused.
constexpr tmsize_t MAX_ALLOCATION = tmsize_t(MAX_IMAGE_PIXELS) * 16;

constexpr size_t MAX_ROW = size_t(1) << 28;
constexpr const char* UNKNOWN = "its form of TIFF is not known";

struct Source {
    std::string_view bytes;
    uint64_t position = 0;
};

tmsize_t readBytes(thandle_t handle, void* into, tmsize_t size) {
    auto& source = *static_cast<Source*>(handle);
    const uint64_t left = source.bytes.size() - std::min<uint64_t>(source.position, source.bytes.size());
    const auto count = size_t(std::min<uint64_t>(left, uint64_t(std::max<tmsize_t>(size, 0))));
    if (count > 0) {
        std::memcpy(into, source.bytes.data() + source.position, count);
    }
    source.position += count;
    return tmsize_t(count);
}

tmsize_t writeBytes(thandle_t, void*, tmsize_t) {
    return 0;
}

toff_t seekTo(thandle_t handle, toff_t offset, int whence) {
    auto& source = *static_cast<Source*>(handle);
    const uint64_t from = whence == SEEK_CUR ? source.position : whence == SEEK_END ? source.bytes.size() : 0;
    source.position = from + offset;
    return source.position;
}

int closeSource(thandle_t) {
    return 0;
}

toff_t sizeOfSource(thandle_t handle) {
    return static_cast<Source*>(handle)->bytes.size();
}

int keepFault(TIFF*, void* fault, const char*, const char* format, va_list arguments) {
    char text[256];
    std::vsnprintf(text, sizeof(text), format, arguments);
    auto& kept = *static_cast<std::string*>(fault);
    kept = kept.empty() ? text : kept;
    return 1;
}

int ignoreWarning(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

struct Closing {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, Closing>;

Tiff openTiff(Source& source, std::string& fault) {
    TIFFOpenOptions* const options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, MAX_ALLOCATION);
    TIFFOpenOptionsSetErrorHandlerExtR(options, keepFault, &fault);
    TIFFOpenOptionsSetWarningHandlerExtR(options, ignoreWarning, nullptr);
    Tiff tiff(TIFFClientOpenExt("image.tif", "rm", &source, readBytes, writeBytes, seekTo, closeSource,
                                sizeOfSource, nullptr, nullptr, options));
    TIFFOpenOptionsFree(options);
    return tiff;
}

/// The tags that tell how pixels are stored.
struct Layout {
    uint16_t bits = 1, samples = 1, format = SAMPLEFORMAT_UINT, planes = PLANARCONFIG_CONTIG;
    uint16_t photometric = PHOTOMETRIC_MINISBLACK, orientation = ORIENTATION_TOPLEFT;

    explicit Layout(TIFF* tiff) {
        TIFFGetFieldDefaulted(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLESPERPIXEL, &samples);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_SAMPLEFORMAT, &format);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_PLANARCONFIG, &planes);
        TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric);
        TIFFGetFieldDefaulted(tiff, TIFFTAG_ORIENTATION, &orientation);
    }

    bool isFloat() const { return bits == 32 && format == SAMPLEFORMAT_IEEEFP; }
    bool isDeep() const {
        const bool grey = photometric == PHOTOMETRIC_MINISBLACK && samples >= 1;
        const bool rgb = photometric == PHOTOMETRIC_RGB && samples >= 3;
        return (isFloat() || (bits == 16 && format == SAMPLEFORMAT_UINT)) && (grey || rgb);
    }
};

/// Row by row, which keeps the depth.
bool readDeep(TIFF* tiff, const Layout& layout, TexelImage& image) {
    const auto row_size = size_t(std::max<tmsize_t>(TIFFScanlineSize(tiff), 0));
    const size_t wanted = size_t(image.width) * layout.samples * layout.bits / 8;
    if (row_size < wanted || row_size > MAX_ROW) {
        return false;
    }
    std::vector<unsigned char> row(row_size);
    image.channels = layout.photometric == PHOTOMETRIC_RGB ? 3 : 1;
    image.floats.resize(size_t(image.width) * image.height * image.channels);
    float* out = image.floats.data();
    for (uint32_t y = 0; y < image.height; ++y) {
        if (TIFFReadScanline(tiff, row.data(), y, 0) != 1) {
            return false;
        }
        for (size_t x = 0; x < image.width; ++x) {
            for (size_t c = 0; c < image.channels; ++c) {
                const size_t sample = x * layout.samples + c;
                if (layout.isFloat()) {
                    std::memcpy(out++, row.data() + sample * sizeof(float), sizeof(float));
                } else {
                    uint16_t value = 0;
                    std::memcpy(&value, row.data() + sample * sizeof(value), sizeof(value));
                    *out++ = float(value) / 65535.0f;
                }
            }
        }
    }
    return true;
}

bool readShallow(TIFF* tiff, TexelImage& image) {
    std::vector<uint32_t> pixels(size_t(image.width) * image.height);
    if (TIFFReadRGBAImageOriented(tiff, image.width, image.height, pixels.data(), ORIENTATION_TOPLEFT, 1) !=
        1) {
        return false;
    }
    image.channels = 3;
    image.bytes.reserve(pixels.size() * 3);
    for (const uint32_t pixel : pixels) {
        image.bytes.push_back(static_cast<unsigned char>(TIFFGetR(pixel)));
        image.bytes.push_back(static_cast<unsigned char>(TIFFGetG(pixel)));
        image.bytes.push_back(static_cast<unsigned char>(TIFFGetB(pixel)));
    }
    return true;
}

} // namespace

bool isTIFF(std::string_view bytes) {
    using namespace std::string_view_literals;
    const std::string_view magic = bytes.substr(0, 4);
    return magic == "II*\0"sv || magic == "MM\0*"sv || magic == "II+\0"sv || magic == "MM\0+"sv;
}

std::shared_ptr<TexelImage> decodeTIFF(std::string_view bytes, std::string& fault) {
    Source source{bytes};
    const Tiff tiff = openTiff(source, fault);
    auto image = std::make_shared<TexelImage>();
    if (!tiff) {
        fault = fault.empty() ? UNKNOWN : fault;
        return nullptr;
    }
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &image->width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &image->height);
    if (!isPlausibleSize(image->width, image->height, bytes.size(), fault)) {
        return nullptr;
    }
    const Layout layout(tiff.get());
    const bool rows = layout.isDeep() && layout.planes == PLANARCONFIG_CONTIG && !TIFFIsTiled(tiff.get()) &&
                      layout.orientation == ORIENTATION_TOPLEFT;
    if (!(rows ? readDeep(tiff.get(), layout, *image) : readShallow(tiff.get(), *image))) {
        fault = fault.empty() ? UNKNOWN : fault;
        return nullptr;
    }
    return image;
}

} // namespace engine
