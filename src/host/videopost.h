// SPDX-License-Identifier: MIT
#pragma once

#include "host/bitmap.h"
#include "host/document.h"
#include "host/thread.h"

/// Phases of a render in which a video post is called; each opens and closes.
enum VideoPostCall : int32_t {
    VIDEOPOSTCALL_RENDER = 3,
    VIDEOPOSTCALL_INNER = 4,
    VIDEOPOSTCALL_TILE = 5,
};

enum RenderResult : int32_t {
    RENDERRESULT_OK = 0,
    RENDERRESULT_FAILED = 1,
    RENDERRESULT_NOMACHINE = 2,
    RENDERRESULT_USERBREAK = 6,
};

/// What kind of render it is; bits.
enum RenderFlags : int32_t {
    RENDERFLAGS_NONE = 0,
    /// To the Picture Viewer.
    RENDERFLAGS_EXTERNAL = 1,
    /// Of a material or an editor's view.
    RENDERFLAGS_PREVIEWRENDER = 8,
    /// The interactive render region.
    RENDERFLAGS_IRR = 16,
};

/// The image that the host shows while it grows. Opaque, the host's. Any thread.
class VPBuffer {
public:
    VPBuffer() = delete;

    int32_t GetBw() const;
    int32_t GetBh() const;
    /// 3 for red, green, blue, or 4 with alpha behind.
    int32_t GetBytesPerPixel() const;
    /// Writes `count` pixels into the row `y` from `x` on, a byte for each component. False for what lies
    /// outside.
    bool SetLine(int32_t x, int32_t y, int32_t count, const uint8_t* pixels);
    /// Tells the host that the image has changed, and so is to be shown anew.
    void SetChanged();
};

/// Kinds of a render region: columns or rows, from the first bound to before the second.
enum RenderRegionKind : int32_t {
    RENDERREGION_NONE = 0,
    RENDERREGION_COLUMNS = 1,
    RENDERREGION_ROWS = 2,
};

/// One render of the host. Opaque, the host's.
class Render {
public:
    Render() = delete;

    /// The image with its colours; null when the host makes none.
    VPBuffer* GetBuffer() const;
    /// The part that the artist wants; false when it's all. A RenderRegionKind and its bounds.
    bool GetRegion(int32_t& kind, int32_t& from, int32_t& to) const;
};

struct VideoPostStruct {
    BaseDocument* doc = nullptr;
    Render* render = nullptr;
    /// A VideoPostCall.
    int32_t vp = 0;
    bool open = false;
    /// A part of the image is rendered: Render::GetRegion tells which.
    bool crop = false;
    /// RenderFlags.
    int32_t renderflags = RENDERFLAGS_NONE;
    BaseThread* thread = nullptr;
};

/// Renders a document into an image of its own with the engine that `settings` name, in the caller's thread.
/// The document must not change meanwhile. `flags` are RenderFlags, `thread` may be null. A RenderResult.
int32_t RenderDocument(BaseDocument* document, const BaseContainer& settings, BaseBitmap* bitmap,
                       int32_t flags, BaseThread* thread);
