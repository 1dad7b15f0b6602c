// SPDX-License-Identifier: MIT
#include "engine/filters.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

float mitchellNetravali(float x, float b, float c) {
    if (x < 1.0f)
        return ((12 - 9 * b - 6 * c) * x * x * x + (-18 + 12 * b + 6 * c) * x * x + (6 - 2 * b)) / 6;
    if (x < 2.0f)
        return ((-b - 6 * c) * x * x * x + (6 * b + 30 * c) * x * x + (-12 * b - 48 * c) * x +
                (8 * b + 24 * c)) /
               6;
    return 0.0f;
}

/// The filters take any number that a scene holds; what isn't one counts as 0.
float parameter(double value) {
    return std::isfinite(value) ? float(std::clamp(value, -16.0, 16.0)) : 0.0f;
}

FilterKernel cubic(double b, double c, float radius) {
    FilterKernel kernel;
    kernel.shape = FilterKernel::Shape::CUBIC;
    kernel.radius = radius;
    kernel.b = parameter(b);
    kernel.c = parameter(c);
    return kernel;
}

FilterKernel gaussian(float deviation, float radius, bool radial) {
    FilterKernel kernel;
    kernel.shape = FilterKernel::Shape::GAUSSIAN;
    kernel.radial = radial;
    kernel.radius = radius;
    kernel.deviation = deviation;
    return kernel;
}

FilterKernel box(FilterKernel::Shape shape, float radius) {
    FilterKernel kernel;
    kernel.shape = shape;
    kernel.radius = radius;
    return kernel;
}

} // namespace

float FilterKernel::operator()(float distance) const {
    const float x = std::abs(distance);
    switch (shape) {
    case Shape::ONE_CELL:
        return x <= radius ? 1.0f : 0.0f;
    case Shape::BOX:
        // What a box of one cell around the sample shares with the cell.
        return std::max(0.0f, 1.0f - x);
    case Shape::CUBIC:
        return mitchellNetravali(x * 2.0f / radius, b, c);
    case Shape::GAUSSIAN:
        return x < radius ? std::exp(-x * x / (2 * deviation * deviation)) -
                                std::exp(-radius * radius / (2 * deviation * deviation))
                          : 0.0f;
    }
    return 0.0f;
}

float FilterKernel::operator()(float dx, float dy) const {
    return radial ? (*this)(std::sqrt(dx * dx + dy * dy)) : (*this)(dx) * (*this)(dy);
}

FilterKernel splatKernel(const Quenza::SplatFilter& filter) {
    switch (filter.getType()) {
    case Quenza::SplatFilterBox::TYPE:
        return box(FilterKernel::Shape::BOX, 1.0f);
    case Quenza::SplatFilterRadial::TYPE:
        return gaussian(0.6f, 1.5f, true);
    case Quenza::SplatFilterMNCubic::TYPE: {
        const auto& mn = static_cast<const Quenza::SplatFilterMNCubic&>(filter);
        return cubic(mn.blur, mn.ring, 2.0f);
    }
    default:
        return box(FilterKernel::Shape::ONE_CELL, 0.5f);
    }
}

FilterKernel downsizeKernel(const Quenza::DownsizeFilter& filter) {
    switch (filter.getType()) {
    case Quenza::DownsizeFilterGaussian::TYPE:
        return gaussian(0.5f, 1.5f, false);
    case Quenza::DownsizeFilterSharp::TYPE:
        return cubic(0.0, 0.75, 2.0f);
    default: {
        const auto& mn = static_cast<const Quenza::DownsizeFilterMNCubic&>(filter);
        return cubic(mn.blur, mn.ring, std::clamp(parameter(mn.radius), 0.5f, 16.0f));
    }
    }
}

} // namespace engine
