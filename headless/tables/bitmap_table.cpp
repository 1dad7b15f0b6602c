// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include <algorithm>
#include <array>
#include <new>

#include "foundation/native_path.h"
#include "headless/images/image_files.h"
#include "headless/model/warnings.h"
#include "headless/runtime/files.h"

namespace headless {

namespace {

Image& imageOf(const BaseBitmap* bitmap) {
    return *fromHost(bitmap);
}

BaseBitmap* alloc() {
    return reinterpret_cast<BaseBitmap*>(new (std::nothrow) Image);
}

MultipassBitmap* allocMultipass(int32_t width, int32_t height, int32_t colorMode) {
    auto image = std::make_unique<Image>();
    const bool isMade = colorMode == COLORMODE_RGB && image->init(width, height, 24) == IMAGERESULT_OK;
    return isMade ? reinterpret_cast<MultipassBitmap*>(image.release()) : nullptr;
}

void freeBitmap(BaseBitmap* bitmap) {
    delete fromHost(bitmap);
}

int32_t init(BaseBitmap* bitmap, int32_t width, int32_t height, int32_t depth) {
    return imageOf(bitmap).init(width, height, depth);
}

int32_t load(BaseBitmap* bitmap, const Filename& file) {
    return readImage(files::pathOf(file), imageOf(bitmap));
}

int32_t save(const BaseBitmap* bitmap, const Filename& file, int32_t filter, const BaseContainer* settings,
             int32_t saveBits) {
    ImageSaving saving;
    saving.filter = filter;
    if (settings) {
        saving.quality = settings->GetLong(JPGSAVER_QUALITY, saving.quality);
    }
    saving.greyscale = (saveBits & SAVEBIT_GREYSCALE) != 0;
    const int32_t result = writeImage(Quenza::nativePath(file.GetUtf8()), imageOf(bitmap), saving);
    if (result != IMAGERESULT_OK) {
        warnOfLostImage(file.GetUtf8());
    }
    return result;
}

int32_t getWidth(const BaseBitmap* bitmap) {
    return imageOf(bitmap).width();
}

int32_t getHeight(const BaseBitmap* bitmap) {
    return imageOf(bitmap).height();
}

int32_t getDepth(const BaseBitmap* bitmap) {
    return imageOf(bitmap).depth();
}

void getPixel(const BaseBitmap* bitmap, int32_t x, int32_t y, uint16_t* r, uint16_t* g, uint16_t* b) {
    const Image& image = imageOf(bitmap);
    const Vector colour = image.contains(x, y) ? image.pixel(x, y) : Vector();
    *r = toByte(colour.x);
    *g = toByte(colour.y);
    *b = toByte(colour.z);
}

void setPixel(BaseBitmap* bitmap, int32_t x, int32_t y, int32_t r, int32_t g, int32_t b) {
    Image& image = imageOf(bitmap);
    if (image.contains(x, y)) {
        const auto unit = [](int32_t value) {
            return static_cast<float>(std::clamp(value, 0, 255)) / 255.0f;
        };
        image.setPixel(x, y, {unit(r), unit(g), unit(b)});
    }
}

uint8_t* getRow(BaseBitmap* bitmap, int32_t y) {
    Image& image = imageOf(bitmap);
    if (!image.bytes() || !image.contains(0, y)) {
        return nullptr;
    }
    return image.bytes() + static_cast<size_t>(y) * static_cast<size_t>(image.width()) * 3;
}

} // namespace

const BitmapTable* bitmapTable() {
    static constexpr BitmapTable table = {
        .Alloc = alloc,
        .AllocMultipass = allocMultipass,
        .Free = freeBitmap,
        .Init = init,
        .Load = load,
        .Save = save,
        .GetWidth = getWidth,
        .GetHeight = getHeight,
        .GetDepth = getDepth,
        .GetPixel = getPixel,
        .SetPixel = setPixel,
        .GetRow = getRow,
    };
    return &table;
}

} // namespace headless
