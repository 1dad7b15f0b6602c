// SPDX-License-Identifier: MIT
#include "engine/images/image_file.h"

#include "engine/images/tiff_file.h"
#include "foundation/exceptions.h"
#include "foundation/mapped_file.h"
#include "foundation/rgbe_check.h"
#include "foundation/string_utils.h"

#include <ImathBox.h>
#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfIO.h>
#include <ImfInputFile.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <mutex>
#include <string_view>

namespace {

/// What one allocation of the decoder may take: it inflates whatever a PNG holds, however small the image is.
thread_local size_t allocation_limit = 0;

void* limitedRealloc(void* block, size_t size) {
    return size <= allocation_limit ? std::realloc(block, size) : nullptr;
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
#define STBI_FAILURE_USERMSG
#include <stb/stb_image.h>

namespace engine {

namespace {

/// The most pixels that a byte of a file can stand for: a black PNG of one bit a pixel, deflated a
/// thousandfold.
constexpr Quenza::u64 MAX_PIXELS_PER_BYTE = 8300;

struct Freed {
    void operator()(void* pixels) const { stbi_image_free(pixels); }
};

struct Decoded {
    int width = 0, height = 0;
    int channels = 3;
};

template <class Value>
std::shared_ptr<TexelImage> taken(Value* pixels, const Decoded& decoded, float maximum, std::string& fault) {
    const std::unique_ptr<Value, Freed> owner(pixels);
    if (!pixels) {
        fault = stbi_failure_reason();
        return nullptr;
    }
    auto image = std::make_shared<TexelImage>();
    image->width = Quenza::u32(decoded.width);
    image->height = Quenza::u32(decoded.height);
    image->channels = Quenza::u32(decoded.channels);
    const size_t count = size_t(image->width) * image->height * image->channels;
    if constexpr (sizeof(Value) == 1) {
        image->bytes.assign(pixels, pixels + count);
    } else {
        image->floats.resize(count);
        std::transform(pixels, pixels + count, image->floats.begin(),
                       [&](Value v) { return float(v) / maximum; });
    }
    return image;
}

/// Looks at the size in the header of a PNG, since the decoder calls one that it finds too large unknown.
bool hasPlausiblePNGSize(std::string_view bytes, std::string& fault) {
    constexpr std::string_view MAGIC = "\x89PNG\r\n\x1a\n";
    constexpr size_t WIDTH_AT = 16, HEADER_END = 24;
    if (bytes.substr(0, MAGIC.size()) != MAGIC || bytes.size() < HEADER_END)
        return true;
    const auto number = [&](size_t at) {
        Quenza::u64 value = 0;
        for (size_t i = 0; i < 4; ++i)
            value = value << 8 | Quenza::u64(static_cast<unsigned char>(bytes[at + i]));
        return value;
    };
    return isPlausibleSize(number(WIDTH_AT), number(WIDTH_AT + 4), bytes.size(), fault);
}

std::shared_ptr<TexelImage> decodeSimple(std::string_view bytes, std::string& fault) {
    if (!hasPlausiblePNGSize(bytes, fault))
        return nullptr;
    if (!Quenza::hasAllRadiancePixels(bytes)) {
        fault = "it ends early, or is damaged";
        return nullptr;
    }
    const auto* const data = reinterpret_cast<const stbi_uc*>(bytes.data());
    const int size = int(bytes.size());
    Decoded d;
    constexpr size_t HEADER_LIMIT = 1 << 20;
    allocation_limit = HEADER_LIMIT;
    if (!stbi_info_from_memory(data, size, &d.width, &d.height, &d.channels)) {
        fault = stbi_failure_reason();
        return nullptr;
    }
    // A negative one is a very large one there.
    if (!isPlausibleSize(Quenza::u64(d.width), Quenza::u64(d.height), bytes.size(), fault))
        return nullptr;
    // Up to four floats a pixel; a JPEG's blocks reach beyond the border.
    constexpr size_t BLOCK = 64;
    allocation_limit =
        HEADER_LIMIT + (size_t(d.width) + BLOCK) * (size_t(d.height) + BLOCK) * 4 * sizeof(float);
    d.channels = d.channels <= 2 ? 1 : 3;
    int stored = 0;
    if (stbi_is_hdr_from_memory(data, size))
        return taken(stbi_loadf_from_memory(data, size, &d.width, &d.height, &stored, d.channels), d, 1.0f,
                     fault);
    if (stbi_is_16_bit_from_memory(data, size))
        return taken(stbi_load_16_from_memory(data, size, &d.width, &d.height, &stored, d.channels), d,
                     65535.0f, fault);
    return taken(stbi_load_from_memory(data, size, &d.width, &d.height, &stored, d.channels), d, 255.0f,
                 fault);
}

class MemoryIStream : public Imf::IStream {
public:
    explicit MemoryIStream(std::string_view bytes) : IStream("image.exr"), bytes_(bytes) {}

    bool read(char c[], int n) override {
        if (n < 0 || position_ > bytes_.size() || size_t(n) > bytes_.size() - position_)
            throw Quenza::QuenzaException("Unexpected end of file.");
        std::memcpy(c, bytes_.data() + position_, size_t(n));
        position_ += size_t(n);
        return position_ < bytes_.size();
    }
    uint64_t tellg() override { return position_; }
    void seekg(uint64_t position) override { position_ = position; }

private:
    std::string_view bytes_;
    uint64_t position_ = 0;
};

std::shared_ptr<TexelImage> decodeEXR(std::string_view bytes, std::string& fault) {
    static std::once_flag limits_set;
    std::call_once(limits_set, [] {
        Imf::Header::setMaxImageSize(1 << 20, 1 << 20);
        Imf::Header::setMaxTileSize(1 << 12, 1 << 12);
    });
    MemoryIStream stream(bytes);
    Imf::InputFile file(stream, 1);
    const Imath::Box2i window = file.header().dataWindow();
    const int64_t width = int64_t(window.max.x) - window.min.x + 1;
    const int64_t height = int64_t(window.max.y) - window.min.y + 1;
    if (!isPlausibleSize(Quenza::u64(std::max<int64_t>(width, 0)), Quenza::u64(std::max<int64_t>(height, 0)),
                         bytes.size(), fault))
        return nullptr;
    const bool grey = !file.header().channels().findChannel("R") && file.header().channels().findChannel("Y");
    auto image = std::make_shared<TexelImage>();
    image->width = Quenza::u32(width);
    image->height = Quenza::u32(height);
    image->channels = grey ? 1 : 3;
    image->floats.resize(size_t(width) * size_t(height) * image->channels);
    const size_t pixel = image->channels * sizeof(float);
    Imf::FrameBuffer frame;
    size_t component = 0;
    for (const char* channel : {"R", "G", "B"}) {
        if (component < image->channels)
            frame.insert(grey ? "Y" : channel, Imf::Slice::Make(Imf::FLOAT, image->floats.data() + component,
                                                                window, pixel, pixel * size_t(width)));
        ++component;
    }
    file.setFrameBuffer(frame);
    file.readPixels(window.min.y, window.max.y);
    return image;
}

bool isEXR(std::string_view bytes) {
    constexpr std::string_view MAGIC = "\x76\x2f\x31\x01";
    return bytes.substr(0, MAGIC.size()) == MAGIC;
}

/// What no radiance or reflectance can be is black.
void clean(TexelImage& image) {
    for (float& value : image.floats)
        if (!(value >= 0.0f && value < 1e30f))
            value = 0.0f;
}

} // namespace

bool isPlausibleSize(Quenza::u64 width, Quenza::u64 height, Quenza::u64 file_size, std::string& fault) {
    if (width == 0 || height == 0 || width > INT_MAX || height > INT_MAX) {
        fault = "it has no pixels";
        return false;
    }
    if (width * height > MAX_IMAGE_PIXELS) {
        fault = "it has more than " + Quenza::toString(MAX_IMAGE_PIXELS) + " pixels";
        return false;
    }
    if (width * height > file_size * MAX_PIXELS_PER_BYTE) {
        fault = "it claims more pixels than its bytes can hold";
        return false;
    }
    return true;
}

std::shared_ptr<const TexelImage> loadTexels(const std::string& path, std::string& fault) {
    try {
        const Quenza::MappedFile file(path);
        const std::string_view bytes = file.bytes();
        if (bytes.size() > INT_MAX) {
            fault = "the file is too long";
            return nullptr;
        }
        const std::shared_ptr<TexelImage> image = isEXR(bytes)    ? decodeEXR(bytes, fault)
                                                  : isTIFF(bytes) ? decodeTIFF(bytes, fault)
                                                                  : decodeSimple(bytes, fault);
        if (image)
            clean(*image);
        return image;
    } catch (const std::exception& e) {
        fault = e.what();
        return nullptr;
    }
}

std::shared_ptr<const FloatImage> loadImage(const std::string& path, std::string& fault) {
    const std::shared_ptr<const TexelImage> texels = loadTexels(path, fault);
    if (!texels)
        return nullptr;
    auto image = std::make_shared<FloatImage>(texels->width, texels->height);
    for (size_t i = 0; i < image->rgb.size(); ++i) {
        const size_t from = texels->channels == 1 ? i / 3 : i;
        image->rgb[i] = texels->bytes.empty() ? texels->floats[from] : float(texels->bytes[from]) / 255.0f;
    }
    return image;
}

} // namespace engine
