// SPDX-License-Identifier: MIT
#include "host/videopost.h"

#include "host/tables.h"

int32_t VPBuffer::GetBw() const {
    return HostTables()->render->GetWidth(this);
}

int32_t VPBuffer::GetBh() const {
    return HostTables()->render->GetHeight(this);
}

int32_t VPBuffer::GetBytesPerPixel() const {
    return HostTables()->render->GetBytesPerPixel(this);
}

bool VPBuffer::SetLine(int32_t x, int32_t y, int32_t count, const uint8_t* pixels) {
    return HostTables()->render->SetLine(this, x, y, count, pixels);
}

void VPBuffer::SetChanged() {
    HostTables()->render->SetChanged(this);
}

VPBuffer* Render::GetBuffer() const {
    return HostTables()->render->GetBuffer(this);
}

bool Render::GetRegion(int32_t& kind, int32_t& from, int32_t& to) const {
    return HostTables()->render->GetRegion(this, kind, from, to);
}

int32_t RenderDocument(BaseDocument* document, const BaseContainer& settings, BaseBitmap* bitmap,
                       int32_t flags, BaseThread* thread) {
    return HostTables()->render->RenderDocument(document, settings, bitmap, flags, thread);
}
