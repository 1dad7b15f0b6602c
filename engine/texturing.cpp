// SPDX-License-Identifier: MIT
#include "engine/texturing.h"

#include <algorithm>

namespace engine {

namespace {

/// Step along u and v for the slope of a program: a twentieth of a percent of a picture.
constexpr float SLOPE_STEP = 5e-4f;

RGB toColour(const Vec& value) {
    return {std::max(0.0f, value.x), std::max(0.0f, value.y), std::max(0.0f, value.z)};
}

} // namespace

RGB ColourInput::at(const SurfacePoint& point) const {
    return texture_   ? factor_ * texture_->at(point)
           : program_ ? factor_ * toColour(program_->at(point))
                      : factor_;
}

RGB ColourInput::average() const {
    return texture_   ? factor_ * texture_->average()
           : program_ ? factor_ * toColour(program_->average())
                      : factor_;
}

float ScalarInput::at(const SurfacePoint& point) const {
    return texture_ ? luminance(texture_->at(point)) : program_ ? program_->at(point).x : constant_;
}

float ScalarInput::average() const {
    return texture_ ? luminance(texture_->average()) : program_ ? program_->average().x : constant_;
}

ScalarInput::Slope ScalarInput::slopeAt(const SurfacePoint& point) const {
    if (texture_) {
        const TextureMap::Slope slope = texture_->slopeAt(point);
        return {slope.along_u, slope.along_v};
    }
    if (!program_) {
        return {0, 0};
    }
    const auto value = [&](float du, float dv) {
        return program_->at(point, point.position + point.dpdu * du + point.dpdv * dv, {du, dv}).x;
    };
    return {(value(SLOPE_STEP, 0) - value(-SLOPE_STEP, 0)) / (2 * SLOPE_STEP),
            (value(0, SLOPE_STEP) - value(0, -SLOPE_STEP)) / (2 * SLOPE_STEP)};
}

Vec VectorInput::at(const SurfacePoint& point) const {
    if (texture_) {
        const RGB value = texture_->at(point);
        return {value.r * 2 - 1, value.g * 2 - 1, value.b * 2 - 1};
    }
    return program_ ? program_->at(point) : Vec{0, 0, 1};
}

} // namespace engine
