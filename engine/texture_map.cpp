// SPDX-License-Identifier: MIT
#include "engine/texture_map.h"

#include "engine/sampling.h"
#include "scene/rotation.h"
#include "scene/tex_coord_generator.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace engine {

namespace {

using Quenza::i64;
using Quenza::u32;
using Quenza::u64;
using Quenza::Vec2f;

const RGB GREY{0.5f};

float latitude(const Vec& d) {
    return 0.5f + std::asin(std::clamp(d.z, -1.0f, 1.0f)) / PI;
}

/// Of a point that is seen from the background's centre, or of a surface from the object's.
Vec directionOf(const SurfacePoint& point) {
    const Vec centre = point.instance ? point.instance->transform.at(0).origin : Vec{};
    return normalise(point.position - centre);
}

i64 wrapped(i64 i, i64 n) {
    return i >= 0 && i < n ? i : ((i % n) + n) % n;
}

/// Weights of the uniform cubic B-spline for four neighbours, at `t` between the middle two.
std::array<float, 4> splineWeights(float t) {
    const float s = 1 - t;
    return {s * s * s / 6, (3 * t * t * t - 6 * t * t + 4) / 6, (3 * s * s * s - 6 * s * s + 4) / 6,
            t * t * t / 6};
}

} // namespace

TextureMap::TextureMap(const Quenza::Texture& texture, std::shared_ptr<const TexelImage> image)
    : image_(std::move(image)), a_(texture.a), b_(texture.b), c_(texture.c), exponent_(texture.exponent),
      uv_set_(u32(std::max(0, texture.uv_set_index))), smooth_(texture.smooth), average_(GREY) {
    setMapping(texture.tex_coord_generation.getPointer());
    for (u32 i = 0; i < values_.size(); ++i) {
        values_[i] = convert(float(i) / 255.0f);
    }
    if (!image_) {
        return;
    }
    double sums[3] = {};
    const u64 pixels = u64(image_->width) * image_->height;
    const u64 step = std::max<u64>(1, pixels / 65536);
    u64 taken = 0;
    for (u64 i = 0; i < pixels; i += step, ++taken) {
        const RGB value = texel(i64(i % image_->width), i64(i / image_->width));
        sums[0] += double(value.r);
        sums[1] += double(value.g);
        sums[2] += double(value.b);
    }
    const double scale = taken == 0 ? 0.0 : 1.0 / double(taken);
    average_ = {float(sums[0] * scale), float(sums[1] * scale), float(sums[2] * scale)};
}

void TextureMap::setMapping(const Quenza::TexCoordGenerator* generator) {
    const auto* const uv = dynamic_cast<const Quenza::UVTexCoordGenerator*>(generator);
    const auto* const spherical = dynamic_cast<const Quenza::SphericalTexCoordGenerator*>(generator);
    const auto* const panorama = dynamic_cast<const Quenza::SphericalEnvTexCoordGenerator*>(generator);
    if (uv) {
        std::transform(uv->matrix.e, uv->matrix.e + 4, uv_matrix_.begin(), [](double e) { return float(e); });
        uv_offset_ = {float(uv->translation.x), float(uv->translation.y)};
    } else if (spherical || panorama) {
        mapping_ = spherical ? Mapping::SPHERICAL : Mapping::PANORAMA;
        const Quenza::Ref<Quenza::Rotation>& rotation = spherical ? spherical->rotation : panorama->rotation;
        const Quenza::Matrix3d m = rotation ? rotation->getMatrix() : Quenza::Matrix3d::identity();
        for (size_t row = 0; row < 3; ++row) {
            rotation_[row] = {float(m.e[row * 3]), float(m.e[row * 3 + 1]), float(m.e[row * 3 + 2])};
        }
    }
}

/// What isn't finite, as a power or a polynomial of a deep image may be, is black.
float TextureMap::convert(float texel) const {
    const double t = exponent_ == 1.0 ? double(texel) : std::pow(std::max(0.0, double(texel)), exponent_);
    const double value = a_ * t * t + b_ * t + c_;
    return std::abs(value) < 1e30 ? float(value) : 0.0f;
}

RGB TextureMap::texel(i64 x, i64 y) const {
    const auto column = size_t(wrapped(x, image_->width));
    const auto row = size_t(wrapped(y, image_->height));
    const size_t at = (row * image_->width + column) * image_->channels;
    if (!image_->bytes.empty()) {
        const unsigned char* const p = &image_->bytes[at];
        return image_->channels == 1 ? RGB{values_[p[0]]} : RGB{values_[p[0]], values_[p[1]], values_[p[2]]};
    }
    const float* const p = &image_->floats[at];
    return image_->channels == 1 ? RGB{convert(p[0])} : RGB{convert(p[0]), convert(p[1]), convert(p[2])};
}

Vec2f TextureMap::placeOf(const SurfacePoint& point) const {
    if (mapping_ == Mapping::UV) {
        const Vec2f uv = point.uv(uv_set_);
        return {uv_matrix_[0] * uv.x + uv_matrix_[1] * uv.y + uv_offset_.x,
                uv_matrix_[2] * uv.x + uv_matrix_[3] * uv.y + uv_offset_.y};
    }
    const Vec direction = directionOf(point);
    const Vec d{dot(rotation_[0], direction), dot(rotation_[1], direction), dot(rotation_[2], direction)};
    // A panorama is seen from within: its middle lies along +y, its right side towards +x.
    const float longitude = mapping_ == Mapping::PANORAMA ? std::atan2(d.x, d.y) : std::atan2(d.y, d.x);
    return {0.5f + longitude / (2 * PI), latitude(d)};
}

RGB TextureMap::smoothed(i64 x, i64 y, float fx, float fy) const {
    const std::array<float, 4> across = splineWeights(fx);
    const std::array<float, 4> down = splineWeights(fy);
    RGB sum;
    for (int j = 0; j < 4; ++j) {
        for (int i = 0; i < 4; ++i) {
            sum += texel(x + i - 1, y + j - 1) * (across[size_t(i)] * down[size_t(j)]);
        }
    }
    return sum;
}

RGB TextureMap::lookUp(float u, float v) const {
    if (!image_) {
        return GREY;
    }
    if (!std::isfinite(u) || !std::isfinite(v)) {
        return RGB{0.0f};
    }
    // v runs upwards, rows run downwards.
    const float x = (u - std::floor(u)) * float(image_->width) - 0.5f;
    const float y = (1.0f - (v - std::floor(v))) * float(image_->height) - 0.5f;
    const auto x0 = i64(std::floor(x));
    const auto y0 = i64(std::floor(y));
    const float fx = x - float(x0);
    const float fy = y - float(y0);
    if (smooth_) {
        return smoothed(x0, y0, fx, fy);
    }
    const RGB top = texel(x0, y0) * (1.0f - fx) + texel(x0 + 1, y0) * fx;
    const RGB bottom = texel(x0, y0 + 1) * (1.0f - fx) + texel(x0 + 1, y0 + 1) * fx;
    return top * (1.0f - fy) + bottom * fy;
}

RGB TextureMap::at(const SurfacePoint& point) const {
    if (!image_) {
        return GREY;
    }
    const Vec2f place = placeOf(point);
    return lookUp(place.x, place.y);
}

/// Along the image's own coordinates.
TextureMap::Slope TextureMap::slopeAlongPlace(const Vec2f& place) const {
    const float du = 0.5f / float(image_->width);
    const float dv = 0.5f / float(image_->height);
    const auto height = [this](float u, float v) { return luminance(lookUp(u, v)); };
    return {(height(place.x + du, place.y) - height(place.x - du, place.y)) / (2 * du),
            (height(place.x, place.y + dv) - height(place.x, place.y - dv)) / (2 * dv)};
}

/// Every UV set is taken to run like the first one.
TextureMap::Slope TextureMap::slopeAt(const SurfacePoint& point) const {
    if (!image_) {
        return {0, 0};
    }
    const Vec2f place = placeOf(point);
    const Slope slope = slopeAlongPlace(place);
    if (mapping_ == Mapping::UV) {
        return {slope.along_u * uv_matrix_[0] + slope.along_v * uv_matrix_[2],
                slope.along_u * uv_matrix_[1] + slope.along_v * uv_matrix_[3]};
    }
    const auto along = [&](const Vec& change) {
        constexpr float STEP = 1e-3f;
        SurfacePoint moved = point;
        moved.position += change * STEP;
        const Vec2f there = placeOf(moved);
        // Over the seam the longitude starts anew.
        const float du = there.x - place.x - std::round(there.x - place.x);
        return (slope.along_u * du + slope.along_v * (there.y - place.y)) / STEP;
    };
    return {along(point.dpdu), along(point.dpdv)};
}

} // namespace engine
