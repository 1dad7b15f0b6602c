// SPDX-License-Identifier: MIT
#include "engine/image_file.h"

#include "foundation/exceptions.h"
#include "foundation/mapped_file.h"
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

bool isPlausible(Quenza::u64 width, Quenza::u64 height, std::string_view bytes, std::string& fault) {
    if (width == 0 || height == 0 || width > INT_MAX || height > INT_MAX) {
        fault = "it has no pixels";
        return false;
    }
    if (width * height > MAX_IMAGE_PIXELS) {
        fault = "it has more than " + Quenza::toString(MAX_IMAGE_PIXELS) + " pixels";
        return false;
    }
    if (width * height > bytes.size() * MAX_PIXELS_PER_BYTE) {
        fault = "it claims more pixels than its bytes can hold";
        return false;
    }
    return true;
}

struct Freed {
    void operator()(void* pixels) const { stbi_image_free(pixels); }
};

template <class Value>
std::shared_ptr<FloatImage> converted(Value* pixels, int width, int height, float maximum,
                                      std::string& fault) {
    const std::unique_ptr<Value, Freed> owner(pixels);
    if (!pixels) {
        fault = stbi_failure_reason();
        return nullptr;
    }
    auto image = std::make_shared<FloatImage>(Quenza::u32(width), Quenza::u32(height));
    std::transform(pixels, pixels + image->rgb.size(), image->rgb.begin(),
                   [&](Value v) { return float(v) / maximum; });
    return image;
}

std::shared_ptr<FloatImage> decodeSimple(std::string_view bytes, std::string& fault) {
    const auto* const data = reinterpret_cast<const stbi_uc*>(bytes.data());
    const int size = int(bytes.size());
    int width = 0, height = 0, channels = 0;
    constexpr size_t HEADER_LIMIT = 1 << 20;
    allocation_limit = HEADER_LIMIT;
    if (!stbi_info_from_memory(data, size, &width, &height, &channels)) {
        fault = stbi_failure_reason();
        return nullptr;
    }
    if (width < 0 || height < 0 || !isPlausible(Quenza::u64(width), Quenza::u64(height), bytes, fault))
        return nullptr;
    // Up to four floats a pixel; a JPEG's blocks reach beyond the border.
    constexpr size_t BLOCK = 64;
    allocation_limit = HEADER_LIMIT + (size_t(width) + BLOCK) * (size_t(height) + BLOCK) * 4 * sizeof(float);
    if (stbi_is_hdr_from_memory(data, size))
        return converted(stbi_loadf_from_memory(data, size, &width, &height, &channels, 3), width, height,
                         1.0f, fault);
    if (stbi_is_16_bit_from_memory(data, size))
        return converted(stbi_load_16_from_memory(data, size, &width, &height, &channels, 3), width, height,
                         65535.0f, fault);
    return converted(stbi_load_from_memory(data, size, &width, &height, &channels, 3), width, height, 255.0f,
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

std::shared_ptr<FloatImage> decodeEXR(std::string_view bytes, std::string& fault) {
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
    if (!isPlausible(Quenza::u64(std::max<int64_t>(width, 0)), Quenza::u64(std::max<int64_t>(height, 0)),
                     bytes, fault))
        return nullptr;
    const bool grey = !file.header().channels().findChannel("R") && file.header().channels().findChannel("Y");
    auto image = std::make_shared<FloatImage>(Quenza::u32(width), Quenza::u32(height));
    constexpr size_t PIXEL = 3 * sizeof(float);
    Imf::FrameBuffer frame;
    size_t component = 0;
    for (const char* channel : {"R", "G", "B"}) {
        const Imf::Slice slice =
            Imf::Slice::Make(Imf::FLOAT, image->rgb.data() + component, window, PIXEL, PIXEL * size_t(width));
        if (!grey || component == 0)
            frame.insert(grey ? "Y" : channel, slice);
        ++component;
    }
    file.setFrameBuffer(frame);
    file.readPixels(window.min.y, window.max.y);
    for (size_t i = 0; grey && i < image->rgb.size(); i += 3)
        image->rgb[i + 1] = image->rgb[i + 2] = image->rgb[i];
    return image;
}

bool isEXR(std::string_view bytes) {
    constexpr std::string_view MAGIC = "\x76\x2f\x31\x01";
    return bytes.substr(0, MAGIC.size()) == MAGIC;
}

/// What no radiance or reflectance can be is black.
void clean(FloatImage& image) {
    for (float& value : image.rgb)
        if (!(value >= 0.0f && value < 1e30f))
            value = 0.0f;
}

} // namespace

std::shared_ptr<const FloatImage> loadImage(const std::string& path, std::string& fault) {
    try {
        const Quenza::MappedFile file(path);
        const std::string_view bytes = file.bytes();
        if (bytes.size() > INT_MAX) {
            fault = "the file is too long";
            return nullptr;
        }
        const std::shared_ptr<FloatImage> image =
            isEXR(bytes) ? decodeEXR(bytes, fault) : decodeSimple(bytes, fault);
        if (image)
            clean(*image);
        return image;
    } catch (const std::exception& e) {
        fault = e.what();
        return nullptr;
    }
}

} // namespace engine
