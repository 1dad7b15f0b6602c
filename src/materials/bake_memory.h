// SPDX-License-Identifier: MIT
#pragma once

#include "host/bitmap.h"
#include "host/document.h"

#include <memory>

// What a bake gets from the host and has to free.

struct DocumentDeleter {
    void operator()(BaseDocument* document) const { BaseDocument::Free(document); }
};
struct BitmapDeleter {
    void operator()(BaseBitmap* bitmap) const { BaseBitmap::Free(bitmap); }
};
using OwnedDocument = std::unique_ptr<BaseDocument, DocumentDeleter>;
using OwnedBitmap = std::unique_ptr<BaseBitmap, BitmapDeleter>;

/// Saves an image as JPEG of the best quality. `saveFlags` are ImageSaveBits.
inline bool saveAsJpeg(const BaseBitmap& image, const Filename& file, int32_t saveFlags) {
    BaseContainer settings;
    settings.SetLong(JPGSAVER_QUALITY, 100);
    return image.Save(file, FILTER_JPG, &settings, saveFlags) == IMAGERESULT_OK;
}
