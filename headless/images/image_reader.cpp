// SPDX-License-Identifier: MIT
#include "headless/images/image_files.h"

#include "foundation/native_path.h"

#include <OpenImageIO/imageio.h>
#include <algorithm>
#include <fstream>
#include <string_view>

namespace headless {

namespace {

namespace fs = std::filesystem;

struct Signature {
    std::string_view bytes;
    const char* reader;
};

using namespace std::string_view_literals;

// Only these readers of the library are used: a file gets at no other, whatever its name is.
constexpr Signature SIGNATURES[] = {
    {"\x89PNG\r\n\x1a\n"sv, "png"},
    {"\xff\xd8\xff"sv, "jpeg"},
    {"II*\0"sv, "tiff"},
    {"MM\0*"sv, "tiff"},
    {"II+\0"sv, "tiff"},
    {"MM\0+"sv, "tiff"},
    {"v/1\x01"sv, "openexr"},
    {"#?RADIANCE"sv, "hdr"},
    {"#?RGBE"sv, "hdr"},
    {"BM"sv, "bmp"},
};

/// A TGA file has no signature: its header must make sense.
bool looksLikeTga(std::string_view head) {
    const auto byte = [head](size_t at) { return static_cast<unsigned char>(head[at]); };
    if (head.size() < 18 || byte(1) > 1) {
        return false;
    }
    const int kind = byte(2) & ~8;
    const int bits = byte(16);
    return kind >= 1 && kind <= 3 && (bits == 8 || bits == 15 || bits == 16 || bits == 24 || bits == 32);
}

/// Name of the reader for a file, null for an unknown format.
const char* readerOf(const fs::path& file) {
    char head[18] = {};
    std::ifstream stream(file, std::ios::binary);
    stream.read(head, sizeof head);
    const std::string_view bytes(head, static_cast<size_t>(stream.gcount()));
    for (const Signature& signature : SIGNATURES) {
        if (bytes.starts_with(signature.bytes)) {
            return signature.reader;
        }
    }
    return looksLikeTga(bytes) ? "targa" : nullptr;
}

/// Spreads the pixels of one or two channels over the three of the image, from the last to the first: they
/// share the array.
template <class Component>
void spreadGrey(Component* pixels, size_t count) {
    for (size_t i = count; i-- > 0;) {
        std::fill_n(pixels + 3 * i, 3, pixels[i]);
    }
}

template <class Component>
bool readPixels(OIIO::ImageInput& input, int channels, Component* pixels, size_t count) {
    const auto type = OIIO::BaseTypeFromC<Component>::value;
    const int taken = channels < 3 ? 1 : 3;
    if (!input.read_image(0, 0, 0, taken, type, pixels)) {
        return false;
    }
    if (taken == 1) {
        spreadGrey(pixels, count);
    }
    return true;
}

int32_t readAlphaWith(OIIO::ImageInput& input, const OIIO::ImageSpec& layout, Image& image) {
    const int channel = layout.alpha_channel;
    if (layout.deep || layout.depth > 1 || channel < 0 || channel >= layout.nchannels) {
        return IMAGERESULT_WRONGTYPE;
    }
    if (const int32_t result = image.init(layout.width, layout.height, 24); result != IMAGERESULT_OK) {
        return result;
    }
    if (!input.read_image(0, 0, channel, channel + 1, OIIO::TypeDesc::UINT8, image.bytes())) {
        return IMAGERESULT_FILEERROR;
    }
    spreadGrey(image.bytes(), static_cast<size_t>(layout.width) * static_cast<size_t>(layout.height));
    return IMAGERESULT_OK;
}

int32_t readWith(OIIO::ImageInput& input, const OIIO::ImageSpec& layout, Image& image) {
    if (layout.deep || layout.nchannels < 1 || layout.depth > 1) {
        return IMAGERESULT_WRONGTYPE;
    }
    const bool isBytes = layout.format == OIIO::TypeDesc::UINT8;
    if (const int32_t result = image.init(layout.width, layout.height, isBytes ? 24 : 96);
        result != IMAGERESULT_OK) {
        return result;
    }
    const size_t count = static_cast<size_t>(layout.width) * static_cast<size_t>(layout.height);
    const bool isRead = isBytes ? readPixels(input, layout.nchannels, image.bytes(), count)
                                : readPixels(input, layout.nchannels, image.floats(), count);
    return isRead ? IMAGERESULT_OK : IMAGERESULT_FILEERROR;
}

using ReadPart = int32_t (*)(OIIO::ImageInput&, const OIIO::ImageSpec&, Image&);

int32_t readFile(const fs::path& file, Image& image, ReadPart read) {
    std::error_code error;
    // A pipe would wait for its other end.
    if (!fs::is_regular_file(file, error)) {
        return IMAGERESULT_NOTEXISTING;
    }
    const char* const reader = readerOf(file);
    const std::unique_ptr<OIIO::ImageInput> input = reader ? OIIO::ImageInput::create(reader) : nullptr;
    if (!input) {
        return IMAGERESULT_WRONGTYPE;
    }
    OIIO::ImageSpec layout;
    OIIO::ImageSpec wishes;
    // Colours as they stand, not multiplied by alpha.
    wishes.attribute("oiio:UnassociatedAlpha", 1);
    const bool isOpen = input->open(Quenza::utf8Path(file), layout, wishes);
    const int32_t result = isOpen ? read(*input, layout, image) : int32_t{IMAGERESULT_FILEERROR};
    static_cast<void>(input->geterror()); // Else it would be printed.
    return result;
}

int32_t readWhole(const fs::path& file, Image& image, ReadPart read) {
    image = Image();
    int32_t result = IMAGERESULT_FILEERROR;
    try {
        result = readFile(file, image, read);
    } catch (const std::bad_alloc&) {
        result = IMAGERESULT_OUTOFMEMORY;
    } catch (const std::exception&) {
        result = IMAGERESULT_FILEERROR;
    }
    if (result != IMAGERESULT_OK) {
        image = Image();
    }
    return result;
}

} // namespace

int32_t readImage(const fs::path& file, Image& image) {
    return readWhole(file, image, readWith);
}

int32_t readAlpha(const fs::path& file, Image& image) {
    return readWhole(file, image, readAlphaWith);
}

} // namespace headless
