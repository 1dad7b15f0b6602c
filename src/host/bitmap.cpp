// SPDX-License-Identifier: MIT
#include "host/bitmap.h"

#include "host/tables.h"

BaseBitmap* BaseBitmap::Alloc() {
    return HostTables()->bitmap->Alloc();
}

void BaseBitmap::Free(BaseBitmap*& bitmap) {
    HostTables()->bitmap->Free(bitmap);
    bitmap = nullptr;
}

int32_t BaseBitmap::Init(int32_t width, int32_t height, int32_t depth) {
    return HostTables()->bitmap->Init(this, width, height, depth);
}

int32_t BaseBitmap::Init(const Filename& file) {
    return HostTables()->bitmap->Load(this, file);
}

int32_t BaseBitmap::Save(const Filename& file, int32_t filter, const BaseContainer* settings,
                         int32_t saveBits) const {
    return HostTables()->bitmap->Save(this, file, filter, settings, saveBits);
}

int32_t BaseBitmap::GetBw() const {
    return HostTables()->bitmap->GetWidth(this);
}

int32_t BaseBitmap::GetBh() const {
    return HostTables()->bitmap->GetHeight(this);
}

int32_t BaseBitmap::GetBt() const {
    return HostTables()->bitmap->GetDepth(this);
}

void BaseBitmap::GetPixel(int32_t x, int32_t y, uint16_t* r, uint16_t* g, uint16_t* b) const {
    HostTables()->bitmap->GetPixel(this, x, y, r, g, b);
}

void BaseBitmap::SetPixel(int32_t x, int32_t y, int32_t r, int32_t g, int32_t b) {
    HostTables()->bitmap->SetPixel(this, x, y, r, g, b);
}

uint8_t* BaseBitmap::GetRow(int32_t y) {
    return HostTables()->bitmap->GetRow(this, y);
}

MultipassBitmap* MultipassBitmap::AllocWrapper(int32_t width, int32_t height, int32_t colorMode) {
    return HostTables()->bitmap->AllocMultipass(width, height, colorMode);
}
