// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"
#include "scene/texture.h"

class BaseShader;
struct ExportContext;

/// How an image becomes a channel's value.
struct TextureMapping {
    float gamma = 2.2f;
    // The value t becomes a * t * t + b * t + c.
    float a = 0.0f;
    float b = 1.0f;
    float c = 0.0f;
    bool smooth = false;
    /// By direction instead of by the surface's coordinates.
    bool spherical = false;
};

/// The texture of a host's bitmap shader; empty for null. Its file is looked for as the host does, and one of
/// a preset library is copied to the scene's textures. A file that isn't found leaves an empty path.
Quenza::Texture makeTextureFromLink(const BaseShader* bitmap, const TextureMapping& mapping,
                                    ExportContext& context);
/// The texture of a file, by its path as it stands.
Quenza::Texture makeTextureFromFile(const Filename& path, const TextureMapping& mapping);
