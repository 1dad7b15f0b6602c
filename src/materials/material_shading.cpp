// SPDX-License-Identifier: MIT
#include "materials/material_shading.h"

#include "host/bitmap.h"
#include "host/document.h"
#include "host/ids.h"
#include "materials/channels.h"
#include "shared/export_context.h"

#include <algorithm>
#include <cmath>

namespace {

/// Mirrors of mirrors end here.
constexpr int32_t MAX_REFLECTION_DEPTH = 4;
constexpr float MIRROR_SHARE = 0.15f;
/// Document units.
constexpr float FAR_AWAY = 100000000.0f;

Vector multiply(const Vector& a, const Vector& b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

Vector mirrored(const Vector& direction, const Vector& normal) {
    return direction - normal * (2.0f * Dot(direction, normal));
}

/// 0 to 255; numbers that are none give black.
int32_t byteOf(float component) {
    const float scaled = component * 255.0f;
    return scaled > 0.0f ? static_cast<int32_t>(std::min(scaled, 255.0f)) : 0;
}

void setPixel(BaseBitmap& bitmap, int32_t x, int32_t y, const Vector& colour) {
    bitmap.SetPixel(x, y, byteOf(colour.x), byteOf(colour.y), byteOf(colour.z));
}

Vector flatAlbedo(const BaseContainer& data) {
    return data.GetVector(MAT_ALBEDO_COLOUR) * data.GetReal(MAT_ALBEDO_BRIGHTNESS);
}

} // namespace

bool ShaderRecord::init(BaseMaterial& material, const Channel& channel, const InitRenderStruct& render) {
    const BaseContainer& data = *material.GetDataInstance();
    auto* const shader =
        static_cast<BaseShader*>(data.GetLink(channel.shader, material.GetDocument(), Xbase));
    if (!shader || shader->InitRender(render) != INITRENDERRESULT_OK) {
        return false;
    }
    shader_ = shader;
    a_ = data.GetReal(channel.a);
    b_ = data.GetReal(channel.b);
    c_ = data.GetReal(channel.c);
    return true;
}

void ShaderRecord::free() {
    if (shader_) {
        shader_->FreeRender();
        shader_ = nullptr;
    }
}

Vector ShaderRecord::sample(ChannelData place) const {
    place.a = a_;
    place.b = b_;
    place.c = c_;
    const Vector t = shader_->Sample(place);
    const auto curve = [this](float value) { return (a_ * value + b_) * value + c_; };
    return {curve(t.x), curve(t.y), curve(t.z)};
}

int32_t MaterialShading::init(BaseMaterial& material, const InitRenderStruct& render) {
    free();
    *this = MaterialShading();
    const BaseContainer* const data = material.GetDataInstance();
    if (!data) {
        return INITRENDERRESULT_UNKNOWNERROR;
    }
    if (render.document && findVideoPost(render.document)) {
        // The plug-in's renderer draws; the host needs no more than a placeholder.
        return INITRENDERRESULT_OK;
    }
    kind_ = data->GetLong(MAT_KIND, MAT_KIND_DIFFUSE);
    albedo_ = flatAlbedo(*data);
    albedoShader_.init(material, channel(ChannelId::ALBEDO), render);
    emission_ = Vector();
    if (data->GetBool(MAT_EMISSION_ENABLED)) {
        emission_ = data->GetVector(MAT_EMISSION_COLOUR) * data->GetReal(MAT_EMISSION_BRIGHTNESS);
        emissionShader_.init(material, channel(ChannelId::EMISSION), render);
    }
    isTransmissive_ = kind_ == MAT_KIND_GLOSSY_TRANSPARENT ||
                      (kind_ == MAT_KIND_SPECULAR && data->GetBool(MAT_SPECULAR_TRANSPARENT));
    isRefractive_ =
        kind_ == MAT_KIND_PHONG || kind_ == MAT_KIND_SPECULAR || kind_ == MAT_KIND_GLOSSY_TRANSPARENT;
    ior_ = data->GetReal(kind_ == MAT_KIND_PHONG ? MAT_PHONG_IOR : MAT_MEDIUM_IOR, 1.0f);
    return INITRENDERRESULT_OK;
}

void MaterialShading::free() {
    albedoShader_.free();
    emissionShader_.free();
}

void MaterialShading::calcSurface(VolumeData& volume) const {
    const Vector diffuse = diffusePart(volume);
    volume.specular = mirrorPart(volume);
    Vector light;
    Vector highlights;
    volume.IllumSurfacePoint(&light, &highlights);
    volume.colour = multiply(diffuse, light);
    volume.colour += emissionShader_.isSet() ? emissionShader_.sample(placeOf(volume)) : emission_;
    calcTransparency(volume);
}

void MaterialShading::calcTransparency(VolumeData& volume) const {
    volume.transparency = isTransmissive_ ? Vector(1.0f, 1.0f, 1.0f) : Vector();
}

Vector MaterialShading::diffusePart(VolumeData& volume) const {
    if (isTransmissive_) {
        if (volume.ray && volume.rayMode == RAYMODE_REFRACT) {
            volume.continued = refracted(volume);
        } else if (volume.ray && volume.rayMode == RAYMODE_STRAIGHT) {
            volume.continued = *volume.ray;
        }
        return Vector();
    }
    if (kind_ == MAT_KIND_SPECULAR) {
        return Vector();
    }
    return albedoShader_.isSet() ? albedoShader_.sample(placeOf(volume)) : albedo_;
}

ShadingRay MaterialShading::refracted(const VolumeData& volume) const {
    const Vector& direction = volume.ray->v;
    const float c = Dot(direction, volume.n);
    const bool enters = c < 0.0f;
    const float e = enters ? volume.ray->ior / ior_ : volume.ray->ior;
    const float d = 1.0f - (1.0f - c * c) * e * e;
    ShadingRay continued;
    continued.p = volume.p;
    if (d >= 0.0f) {
        const float root = enters ? -std::sqrt(d) : std::sqrt(d);
        continued.v = direction * e + volume.n * (root - e * c);
        continued.ior = enters ? ior_ : 1.0f;
    } else {
        continued.v = mirrored(direction, volume.n);
        continued.ior = ior_;
    }
    continued.v = continued.v.GetNormalized();
    return continued;
}

Vector MaterialShading::mirrorPart(VolumeData& volume) const {
    if (!isRefractive_ || !volume.ray || volume.rayMode != RAYMODE_REFRACT ||
        (volume.rayFlags & RAYBIT_NOMIRROR) != 0 || volume.reflectionDepth >= MAX_REFLECTION_DEPTH) {
        return Vector();
    }
    ShadingRay mirror;
    mirror.p = volume.p;
    mirror.v = mirrored(volume.ray->v, volume.n);
    mirror.ior = volume.ray->ior;
    return volume.TraceColor(mirror, FAR_AWAY) * MIRROR_SHARE;
}

ChannelData MaterialShading::placeOf(const VolumeData& volume) {
    ChannelData place;
    place.p = volume.uvw;
    place.n = volume.n;
    place.time = volume.time;
    place.volume = &volume;
    return place;
}

bool drawAlbedo(BaseMaterial& material, BaseDocument* document, BaseBitmap& bitmap) {
    const BaseContainer* const data = material.GetDataInstance();
    const int32_t width = bitmap.GetBw();
    const int32_t height = bitmap.GetBh();
    if (!data || !document || bitmap.Init(width, height, 24) != IMAGERESULT_OK) {
        return false;
    }
    const BaseTime time = document->GetTime();
    ShaderRecord shader;
    const bool hasShader = shader.init(material, channel(ChannelId::ALBEDO), {document, time});
    const Vector flat = flatAlbedo(*data);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            ChannelData place;
            place.p = Vector(static_cast<float>(x) / static_cast<float>(width),
                             static_cast<float>(y) / static_cast<float>(height), 0.0f);
            place.time = time;
            setPixel(bitmap, x, y, hasShader ? shader.sample(place) : flat);
        }
    }
    shader.free();
    return true;
}
