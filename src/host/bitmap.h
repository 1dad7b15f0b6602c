// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"

enum ImageResult : int32_t {
    IMAGERESULT_OK = 1,
    IMAGERESULT_NOTEXISTING = -1,
    IMAGERESULT_WRONGTYPE = -2,
    IMAGERESULT_OUTOFMEMORY = -3,
    IMAGERESULT_FILEERROR = -4,
    IMAGERESULT_PARAM_ERROR = -5,
};

/// File formats of images.
enum ImageFilter : int32_t {
    FILTER_TIF = 1100,
    FILTER_TGA = 1101,
    FILTER_BMP = 1102,
    FILTER_JPG = 1104,
    FILTER_PNG = 1023671,
    FILTER_EXR = 1016606,
    FILTER_HDR = 1001379,
};

enum ImageSaveBits : int32_t {
    SAVEBIT_0 = 0,
    /// One channel: the brightness of the colours.
    SAVEBIT_GREYSCALE = 16,
};

/// Settings of the image savers, numbers of the container that Save takes.
enum ImageSaverSetting : int32_t {
    /// 0 to 100; 80 without one.
    JPGSAVER_QUALITY = 10000,
};

enum ColorMode : int32_t {
    /// 8 bits in each of red, green and blue.
    COLORMODE_RGB = 4,
};

/// An image of 8 bits in each of red, green and blue (24 bits a pixel), or of 32 bit floats (96). The first
/// row is the topmost. Opaque, the host's.
class BaseBitmap {
public:
    BaseBitmap() = delete;

    static BaseBitmap* Alloc();
    static void Free(BaseBitmap*& bitmap);

    /// Makes a black image. `depth` is 24 or 96 bits a pixel. An ImageResult.
    int32_t Init(int32_t width, int32_t height, int32_t depth = 24);
    /// Loads an image file. An ImageResult.
    int32_t Init(const Filename& file);
    /// Writes an image file, whole or not at all. `settings` may be null. An ImageResult.
    int32_t Save(const Filename& file, int32_t filter, const BaseContainer* settings, int32_t saveBits) const;

    int32_t GetBw() const;
    int32_t GetBh() const;
    int32_t GetBt() const;

    /// Components 0 to 255. A place outside the image reads black and isn't written.
    void GetPixel(int32_t x, int32_t y, uint16_t* r, uint16_t* g, uint16_t* b) const;
    void SetPixel(int32_t x, int32_t y, int32_t r, int32_t g, int32_t b);
    /// The row `y` of a 24 bit image, 3 bytes a pixel; it belongs to the image. Null for another depth and
    /// outside.
    uint8_t* GetRow(int32_t y);
};

/// An image with a colour mode. (Layers and alpha come with the rendering inside the host.)
class MultipassBitmap : public BaseBitmap {
public:
    static MultipassBitmap* AllocWrapper(int32_t width, int32_t height, int32_t colorMode);
};
