// SPDX-License-Identifier: MIT
#include "engine/texture_map.h"

#include "engine/sampling.h"
#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "scene/rotation.h"
#include "scene/tex_coord_generator.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

using Quenza::i64;
using Quenza::u64;

const RGB WARNING{0.5f, 0.0f, 0.5f};

Vec turned(const Quenza::Ref<Quenza::Rotation>& rotation, const Vec& v) {
    if (!rotation) {
        return v;
    }
    const Quenza::Matrix3d m = rotation->getMatrix();
    const double x = double(v.x), y = double(v.y), z = double(v.z);
    return {float(m.e[0] * x + m.e[1] * y + m.e[2] * z), float(m.e[3] * x + m.e[4] * y + m.e[5] * z),
            float(m.e[6] * x + m.e[7] * y + m.e[8] * z)};
}

float latitude(const Vec& d) {
    return 0.5f + std::asin(std::clamp(d.z, -1.0f, 1.0f)) / PI;
}

/// Of a point that is seen from the background's centre, or of a surface from the object's.
Vec directionOf(const SurfacePoint& point) {
    const Vec centre = point.instance ? point.instance->transform.at(0).origin : Vec{};
    return normalise(point.position - centre);
}

} // namespace

TextureMap::TextureMap(const Quenza::Texture& texture, std::shared_ptr<const FloatImage> image)
    : texture_(texture), image_(std::move(image)), average_(WARNING) {
    if (!image_) {
        return;
    }
    double sums[3] = {};
    const u64 pixels = u64(image_->width) * image_->height;
    const u64 step = std::max<u64>(1, pixels / 65536);
    u64 taken = 0;
    for (u64 i = 0; i < pixels; i += step, ++taken) {
        for (u64 c = 0; c < 3; ++c) {
            sums[c] += double(convert(image_->rgb[i * 3 + c]));
        }
    }
    const double scale = taken == 0 ? 0.0 : 1.0 / double(taken);
    average_ = {float(sums[0] * scale), float(sums[1] * scale), float(sums[2] * scale)};
}

float TextureMap::convert(float texel) const {
    const float t = std::pow(std::max(0.0f, texel), float(texture_.exponent));
    return float(texture_.a) * t * t + float(texture_.b) * t + float(texture_.c);
}

RGB TextureMap::texel(i64 x, i64 y) const {
    const auto wrap = [](i64 i, i64 n) { return Quenza::u32(((i % n) + n) % n); };
    const float* const p = image_->pixel(wrap(x, image_->width), wrap(y, image_->height));
    return {convert(p[0]), convert(p[1]), convert(p[2])};
}

TextureMap::Place TextureMap::placeOf(const SurfacePoint& point) const {
    const Quenza::TexCoordGenerator* const generator = texture_.tex_coord_generation.getPointer();
    if (const auto* env = dynamic_cast<const Quenza::SphericalEnvTexCoordGenerator*>(generator)) {
        // Seen from within: the picture's middle lies along +y, its right side towards +x.
        const Vec d = turned(env->rotation, directionOf(point));
        return {0.5f + std::atan2(d.x, d.y) / (2 * PI), latitude(d)};
    }
    if (const auto* spherical = dynamic_cast<const Quenza::SphericalTexCoordGenerator*>(generator)) {
        const Vec d = turned(spherical->rotation, directionOf(point));
        return {0.5f + std::atan2(d.y, d.x) / (2 * PI), latitude(d)};
    }
    if (!point.instance) {
        const Vec d = normalise(point.position);
        return {0.5f + std::atan2(d.x, d.y) / (2 * PI), latitude(d)};
    }
    const Quenza::Vec2f uv = point.uv(Quenza::u32(std::max(0, texture_.uv_set_index)));
    if (const auto* mapped = dynamic_cast<const Quenza::UVTexCoordGenerator*>(generator)) {
        const double u = double(uv.x), v = double(uv.y);
        const Quenza::Matrix2d& m = mapped->matrix;
        return {float(m.e[0] * u + m.e[1] * v + mapped->translation.x),
                float(m.e[2] * u + m.e[3] * v + mapped->translation.y)};
    }
    return {uv.x, uv.y};
}

/// Bilinear; the image repeats in both directions. v runs upwards, rows run downwards.
RGB TextureMap::lookUp(Place place) const {
    if (!image_) {
        return WARNING;
    }
    if (image_->width == 0 || image_->height == 0 || !std::isfinite(place.u) || !std::isfinite(place.v)) {
        return RGB{0.0f};
    }
    const float x = (place.u - std::floor(place.u)) * float(image_->width) - 0.5f;
    const float y = (1.0f - (place.v - std::floor(place.v))) * float(image_->height) - 0.5f;
    const auto x0 = i64(std::floor(x));
    const auto y0 = i64(std::floor(y));
    const float fx = x - float(x0);
    const float fy = y - float(y0);
    const RGB top = texel(x0, y0) * (1.0f - fx) + texel(x0 + 1, y0) * fx;
    const RGB bottom = texel(x0, y0 + 1) * (1.0f - fx) + texel(x0 + 1, y0 + 1) * fx;
    return top * (1.0f - fy) + bottom * fy;
}

RGB TextureMap::at(const SurfacePoint& point) const {
    return lookUp(placeOf(point));
}

TextureMap::Slope TextureMap::slopeAt(const SurfacePoint& point) const {
    if (!image_ || image_->width == 0 || image_->height == 0) {
        return {0, 0};
    }
    const Place place = placeOf(point);
    const float du = 0.5f / float(image_->width);
    const float dv = 0.5f / float(image_->height);
    const auto height = [this](float u, float v) { return luminance(lookUp({u, v})); };
    return {(height(place.u + du, place.v) - height(place.u - du, place.v)) / (2 * du),
            (height(place.u, place.v + dv) - height(place.u, place.v - dv)) / (2 * dv)};
}

std::string ImageCache::resolve(const Quenza::String& path) const {
    if (Quenza::PlatformUtils::isAbsolutePath(path)) {
        return path.toStdString();
    }
    return Quenza::FileUtils::join(folder_, path).toStdString();
}

std::shared_ptr<const FloatImage> ImageCache::load(const Quenza::String& path) {
    const std::string resolved = resolve(path);
    const auto known = images_.find(resolved);
    if (known != images_.end()) {
        return known->second;
    }
    std::string fault;
    std::shared_ptr<const FloatImage> image = loadImage(resolved, fault);
    if (!image) {
        notices_.tell("The image '" + resolved + "' can't be read (" + fault +
                      "); what shows it is drawn in purple.");
    }
    images_[resolved] = image;
    return image;
}

} // namespace engine
