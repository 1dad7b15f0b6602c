// SPDX-License-Identifier: MIT
#include "host/bake.h"

#include "host/tables.h"

BaseDocument* InitBakeTexture(BaseDocument* document, TextureTag* texture, UVWTag* uvw,
                              const BaseContainer& settings, int32_t* error, BaseThread* thread) {
    return HostTables()->shading->InitBakeTexture(document, texture, uvw, settings, error, thread);
}

int32_t BakeTexture(BaseDocument* bakeDocument, const BaseContainer& settings, BaseBitmap* bitmap,
                    BaseThread* thread) {
    return HostTables()->shading->BakeTexture(bakeDocument, settings, bitmap, thread);
}
