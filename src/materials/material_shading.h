// SPDX-License-Identifier: MIT
#pragma once

#include "host/material.h"

struct Channel;

/// A channel's shader, and the curve that its values take.
class ShaderRecord {
public:
    /// The shader that a material's container links for a channel, prepared for sampling. False when there is
    /// none, or it can't be sampled.
    bool init(BaseMaterial& material, const Channel& channel, const InitRenderStruct& render);
    void free();

    bool isSet() const { return shader_ != nullptr; }
    /// Between init and free, any thread.
    Vector sample(ChannelData place) const;

private:
    BaseShader* shader_ = nullptr;
    float a_ = 0.0f;
    float b_ = 1.0f;
    float c_ = 0.0f;
};

/// What the host's own renderer shows of a material: near the final look, no part of an export.
class MaterialShading {
public:
    /// An InitRenderResult.
    int32_t init(BaseMaterial& material, const InitRenderStruct& render);
    void free();
    /// Light, mirrors and refraction at a point. Between init and free, any thread.
    void calcSurface(VolumeData& volume) const;
    void calcTransparency(VolumeData& volume) const;

private:
    Vector diffusePart(VolumeData& volume) const;
    /// Where a ray goes on behind the surface; mirrored when it can't leave.
    ShadingRay refracted(const VolumeData& volume) const;
    Vector mirrorPart(VolumeData& volume) const;
    static ChannelData placeOf(const VolumeData& volume);

    int32_t kind_ = 0;
    Vector albedo_;
    Vector emission_;
    ShaderRecord albedoShader_;
    ShaderRecord emissionShader_;
    bool isTransmissive_ = false;
    bool isRefractive_ = false;
    float ior_ = 1.0f;
};

/// Fills `bitmap`, which keeps its size, with the material's albedo, 24 bits a pixel. False without document
/// or memory.
bool drawAlbedo(BaseMaterial& material, BaseDocument* document, BaseBitmap& bitmap);
