// SPDX-License-Identifier: MIT
#pragma once

#include "headless/render/render_image.h"

#include <optional>

namespace headless {

/// The part of an image that is wanted: whole rows or columns, from the first bound to before the second.
struct RenderRegion {
    RenderRegionKind kind = RENDERREGION_ROWS;
    int32_t from = 0;
    int32_t to = 0;
};

/// One render, as its video post sees it: what a Render points to.
struct RenderCall {
    RenderImage* image = nullptr;
    std::optional<RenderRegion> region;
};

inline RenderCall* fromHost(const Render* render) {
    return reinterpret_cast<RenderCall*>(const_cast<Render*>(render));
}
inline Render* toHost(RenderCall* call) {
    return reinterpret_cast<Render*>(call);
}

} // namespace headless
