// SPDX-License-Identifier: MIT
#pragma once

#include "host/bitmap.h"

class BaseDocument;
class BaseThread;
class TextureTag;
class UVWTag;

// The host's texture baker: it renders what a material shows on an object into the texture space of a UVW
// tag.

/// Settings of a bake. Those that aren't listed here are further passes and looks of the baker, off at 0.
enum BakeSetting : int32_t {
    /// All lights and effects of the scene, as seen by a camera.
    BAKE_TEX_SURFACECOLOR = 1006,
    /// Ambient occlusion.
    BAKE_TEX_AMBIENT_OCCLUSION = 1009,
    /// The colour channel's texture.
    BAKE_TEX_COLOR = 1012,
    /// Pixels.
    BAKE_TEX_WIDTH = 1020,
    BAKE_TEX_HEIGHT = 1021,
    /// Pixels that the texture goes on beyond the borders of its islands.
    BAKE_TEX_PIXELBORDER = 1022,
    // The part of the texture space that fills the image, floats.
    BAKE_TEX_UV_LEFT = 1024,
    BAKE_TEX_UV_RIGHT = 1025,
    BAKE_TEX_UV_TOP = 1026,
    BAKE_TEX_UV_BOTTOM = 1027,
    /// Additional samples on each side of a pixel; 0 takes one sample a pixel.
    BAKE_TEX_SUPERSAMPLING = 1030,
};

enum BakeTexError : int32_t {
    BAKE_TEX_ERR_NONE = 0,
    BAKE_TEX_ERR_NO_DOC = 3000,
    BAKE_TEX_ERR_NO_MEM = 3001,
    BAKE_TEX_ERR_NO_RENDER_DOC = 3002,
    BAKE_TEX_ERR_NO_TEXTURE_TAG = 3003,
    BAKE_TEX_ERR_NO_UVW_TAG = 3006,
    BAKE_TEX_ERR_NO_MATERIAL = 3008,
    BAKE_TEX_ERR_USERBREAK = 3010,
    BAKE_TEX_ERR_NO_BITMAP = 3011,
};

/// Prepares a bake of the material of `texture` with the coordinates of `uvw`: a copy of the document that
/// BakeTexture works on, and that the caller frees. Null with an error code.
BaseDocument* InitBakeTexture(BaseDocument* document, TextureTag* texture, UVWTag* uvw,
                              const BaseContainer& settings, int32_t* error, BaseThread* thread = nullptr);
/// Runs the bake into `bitmap`, which gets the size of the settings and 24 bits. A BakeTexError. `thread` is
/// asked whether to go on; it may be null.
int32_t BakeTexture(BaseDocument* bakeDocument, const BaseContainer& settings, BaseBitmap* bitmap,
                    BaseThread* thread = nullptr);
