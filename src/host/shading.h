// SPDX-License-Identifier: MIT
#pragma once

#include "host/basetime.h"
#include "host/vector.h"

class BaseDocument;

/// What materials and shaders get when a render or a bake begins.
struct InitRenderStruct {
    BaseDocument* document = nullptr;
    BaseTime time;
};

enum InitRenderResult : int32_t {
    INITRENDERRESULT_OK = 0,
    INITRENDERRESULT_OUTOFMEMORY = -1,
    INITRENDERRESULT_UNKNOWNERROR = -4,
};

/// A ray of the host's renderer, in world space.
struct ShadingRay {
    Vector p;
    /// A unit vector.
    Vector v;
    /// Refractive index of what the ray goes through.
    float ior = 1.0f;
};

enum RayMode : int32_t {
    /// The renderer wants the colour of the surface alone.
    RAYMODE_NONE = 0,
    /// The surface says how clear it is, and the ray goes straight on.
    RAYMODE_STRAIGHT = 1,
    /// The surface says where the ray goes on.
    RAYMODE_REFRACT = 2,
};

enum RayFlags : int32_t {
    /// No mirror rays are wanted.
    RAYBIT_NOMIRROR = 0x400,
};

/// A point of a surface that the host's renderer shades, and what the material answers. Of the caller, for
/// the time of one call.
struct VolumeData {
    const BaseDocument* document = nullptr;
    /// World space. `n` is the unit shading normal; it looks to the outside, not to the viewer.
    Vector p;
    Vector n;
    Vector uvw;
    BaseTime time;

    const ShadingRay* ray = nullptr;
    int32_t rayMode = RAYMODE_NONE;
    int32_t rayFlags = 0;
    /// Number of mirrors behind this point.
    int32_t reflectionDepth = 0;

    // Answers.
    Vector colour;
    Vector specular;
    Vector transparency;
    /// The ray that goes on behind the surface.
    ShadingRay continued;

    /// Of the host's renderer.
    void* renderer = nullptr;

    /// The light that comes back along a ray.
    Vector TraceColor(const ShadingRay& traced, float maximumDistance);
    /// The host's illumination model: light on the point without the surface's colour, and the lights'
    /// highlights.
    void IllumSurfacePoint(Vector* diffuse, Vector* highlights);
};

/// Where a shader is sampled.
struct ChannelData {
    /// Texture coordinates: u to the right, v downwards, w.
    Vector p;
    /// Unit normal in texture or world space.
    Vector n{0.0f, 0.0f, 1.0f};
    /// Extent of the sample in texture coordinates; a direction where there is no ray.
    Vector d;
    BaseTime time;
    /// The shading context, null when a texture alone is asked for (bakes, viewport).
    const VolumeData* volume = nullptr;
    // What the channel does to the texture's value t: a * t * t + b * t + c. The caller's matter unless a
    // shader says otherwise.
    float a = 0.0f;
    float b = 1.0f;
    float c = 0.0f;
};
