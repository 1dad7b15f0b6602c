// SPDX-License-Identifier: MIT
#include "engine/film.h"

#include "foundation/exceptions.h"
#include "foundation/string_utils.h"

#include <algorithm>
#include <cmath>

namespace engine {

using Quenza::i32;
using Quenza::i64;
using Quenza::u32;
using Quenza::u64;

namespace {

/// A cell with less than this part of the average weight counts as empty: its mean would be noise, or, with a
/// filter that has negative lobes, nonsense.
constexpr double WEIGHT_FLOOR = 0.05;
/// The film's filters reach less than this many cells to each side of the sample's.
constexpr int MAX_SPLAT_CELLS = 6;

void addTo(float& sum, float value) {
    std::atomic_ref<float>(sum).fetch_add(value, std::memory_order_relaxed);
}
float read(const float& sum) {
    return std::atomic_ref<float>(const_cast<float&>(sum)).load(std::memory_order_relaxed);
}

/// The cell of a position beyond the border: reflected at it, once; what reaches further stays at the border.
u32 reflected(i32 position, u32 size) {
    const i32 last = i32(size) - 1;
    if (position < 0)
        position = -1 - position;
    if (position > last)
        position = 2 * last + 1 - position;
    return u32(std::clamp(position, 0, last));
}

/// Weights of the cells around a position along one axis.
struct Footprint {
    Footprint(const FilterKernel& kernel, float position)
        : first(i32(std::ceil(position - 0.5f - kernel.radius))),
          count(std::min(MAX_SPLAT_CELLS, i32(std::floor(position - 0.5f + kernel.radius)) - first + 1)) {
        for (int i = 0; i < count; ++i)
            offsets[i] = float(first + i) + 0.5f - position;
    }
    i32 first;
    int count;
    float offsets[MAX_SPLAT_CELLS];
};

PixelRect clippedRect(u32 width, u32 height, const Quenza::RenderRegion& region) {
    const auto clip = [](i32 a, u32 size) { return u32(std::clamp(i64(a), i64(0), i64(size))); };
    return {clip(std::min(region.x1, region.x2), width), clip(std::min(region.y1, region.y2), height),
            clip(std::max(region.x1, region.x2), width), clip(std::max(region.y1, region.y2), height)};
}

u64 checkedCells(u32 factor, const PixelRect& rect, u64 stride) {
    const double bytes =
        double(rect.width()) * rect.height() * factor * factor * double(stride) * sizeof(float);
    if (!(bytes >= 1.0) || bytes > double(Film::MAX_BYTES))
        throw Quenza::QuenzaException(
            "The image of " + Quenza::toString(rect.width()) + " x " + Quenza::toString(rect.height()) +
            " pixels with a super sampling factor of " + Quenza::toString(factor) + " and " +
            Quenza::toString((stride - 1) / 3) + " layers can't be held in memory.");
    return u64(rect.width()) * rect.height() * factor * factor * stride;
}

} // namespace

PixelRect renderedRect(u32 width, u32 height, const Quenza::RenderRegion* region) {
    if (region) {
        const PixelRect rect = clippedRect(width, height, *region);
        if (rect.width() > 0 && rect.height() > 0)
            return rect;
    }
    return {0, 0, width, height};
}

Film::Film(u32 width, u32 height, u32 super_sample_factor, u32 layers, const Quenza::SplatFilter& splat,
           const Quenza::DownsizeFilter& downsize, const Quenza::RenderRegion* region)
    : width_(width), height_(height), factor_(std::max(1u, super_sample_factor)), layers_(layers),
      rect_(renderedRect(width, height, region)), splat_kernel_(splatKernel(splat)),
      downsize_kernel_(downsizeKernel(downsize)), stride_(1 + u64(layers) * 3),
      cells_(checkedCells(factor_, rect_, stride_)) {
    grid_width_ = rect_.width() * factor_;
    grid_height_ = rect_.height() * factor_;
}

void Film::addSample(float x, float y, const RGB* layer_radiances) {
    const float gx = (x - float(rect_.x_begin)) * float(factor_);
    const float gy = (y - float(rect_.y_begin)) * float(factor_);
    if (!(gx >= 0 && gy >= 0 && gx < float(grid_width_) && gy < float(grid_height_)))
        return;
    if (splat_kernel_.shape == FilterKernel::Shape::ONE_CELL) {
        this->splat(u64(gy) * grid_width_ + u64(gx), 1.0f, layer_radiances);
        return;
    }
    const Footprint columns(splat_kernel_, gx);
    const Footprint rows(splat_kernel_, gy);
    for (int j = 0; j < rows.count; ++j)
        for (int i = 0; i < columns.count; ++i) {
            const float weight = splat_kernel_(columns.offsets[i], rows.offsets[j]);
            const u64 row = reflected(rows.first + j, grid_height_);
            if (weight != 0.0f)
                this->splat(row * grid_width_ + reflected(columns.first + i, grid_width_), weight,
                            layer_radiances);
        }
}

void Film::splat(u64 cell, float weight, const RGB* layer_radiances) {
    float* const sums = &cells_[cell * stride_];
    addTo(sums[0], weight);
    for (u32 layer = 0; layer < layers_; ++layer) {
        const RGB& c = layer_radiances[layer];
        if (isBlack(c) || !std::isfinite(c.r + c.g + c.b))
            continue;
        addTo(sums[1 + layer * 3], weight * c.r);
        addTo(sums[2 + layer * 3], weight * c.g);
        addTo(sums[3 + layer * 3], weight * c.b);
    }
}

std::vector<FloatImage> Film::layerImages() const {
    double total = 0;
    const u64 count = u64(grid_width_) * grid_height_;
    for (u64 cell = 0; cell < count; ++cell)
        total += double(read(cells_[cell * stride_]));
    const float weight_floor = float(std::max(total / double(count) * WEIGHT_FLOOR, 1e-6));
    std::vector<FloatImage> images;
    images.reserve(layers_);
    for (u32 layer = 0; layer < layers_; ++layer)
        images.push_back(layerImage(layer, weight_floor));
    return images;
}

std::vector<float> Film::cellMeans(u32 layer, float weight_floor) const {
    const u64 count = u64(grid_width_) * grid_height_;
    std::vector<float> means(count * 3);
    for (u64 cell = 0; cell < count; ++cell) {
        const float* const sums = &cells_[cell * stride_];
        const float weight = read(sums[0]);
        if (weight >= weight_floor)
            for (u64 c = 0; c < 3; ++c)
                means[cell * 3 + c] = read(sums[1 + layer * 3 + c]) / weight;
    }
    if (factor_ > 1)
        fillHoles(means, weight_floor);
    return means;
}

/// An early image has samples in few cells: the empty ones take the mean of their pixel's others.
void Film::fillHoles(std::vector<float>& means, float weight_floor) const {
    const auto filled = [&](u64 cell) { return read(cells_[cell * stride_]) >= weight_floor; };
    for (u32 py = 0; py < grid_height_; py += factor_)
        for (u32 px = 0; px < grid_width_; px += factor_) {
            float sum[3] = {};
            u32 found = 0;
            const auto forCells = [&](const auto& visit) {
                for (u32 y = py; y < py + factor_; ++y)
                    for (u32 x = px; x < px + factor_; ++x)
                        visit(u64(y) * grid_width_ + x);
            };
            forCells([&](u64 cell) {
                if (!filled(cell))
                    return;
                ++found;
                for (u64 c = 0; c < 3; ++c)
                    sum[c] += means[cell * 3 + c];
            });
            if (found == 0 || found == factor_ * factor_)
                continue;
            forCells([&](u64 cell) {
                for (u64 c = 0; c < 3 && !filled(cell); ++c)
                    means[cell * 3 + c] = sum[c] / float(found);
            });
        }
}

namespace {

/// Below it a filter's weights nearly cancel out.
constexpr float MIN_SUM = 0.1f;

/// One line of the finer grid to one line of pixels; both by their stride in floats.
struct LineFilter {
    LineFilter(const FilterKernel& kernel, u32 super_sample_factor) : factor(i32(super_sample_factor)) {
        const float reach = kernel.radius * float(factor);
        const float centre = 0.5f * float(factor) - 0.5f;
        first = i32(std::ceil(centre - reach));
        const i32 last = i32(std::floor(centre + reach));
        float sum = 0;
        for (i32 cell = first; cell <= last; ++cell)
            sum += weights.emplace_back(kernel((float(cell) - centre) / float(factor)));
        if (!(sum > MIN_SUM)) {
            // A cubic of odd numbers can be zero wherever it is asked for: the pixel's own cells then.
            first = 0;
            weights.assign(super_sample_factor, 1.0f);
            sum = float(super_sample_factor);
        }
        for (float& weight : weights)
            weight /= sum;
    }

    void apply(const float* in, u64 in_stride, u32 cells, float* out, u64 out_stride) const {
        for (u32 pixel = 0; pixel < cells / u32(factor); ++pixel) {
            float sum[3] = {};
            for (size_t i = 0; i < weights.size(); ++i) {
                const u64 cell = reflected(i32(pixel) * factor + first + i32(i), cells);
                for (u64 c = 0; c < 3; ++c)
                    sum[c] += weights[i] * in[cell * in_stride + c];
            }
            for (u64 c = 0; c < 3; ++c)
                out[pixel * out_stride + c] = sum[c];
        }
    }

    i32 factor;
    i32 first = 0;
    std::vector<float> weights;
};

} // namespace

FloatImage Film::layerImage(u32 layer, float weight_floor) const {
    std::vector<float> means = cellMeans(layer, weight_floor);
    if (factor_ > 1) {
        const LineFilter filter(downsize_kernel_, factor_);
        std::vector<float> narrow(u64(rect_.width()) * grid_height_ * 3);
        for (u32 y = 0; y < grid_height_; ++y)
            filter.apply(&means[u64(y) * grid_width_ * 3], 3, grid_width_,
                         &narrow[u64(y) * rect_.width() * 3], 3);
        means.assign(u64(rect_.width()) * rect_.height() * 3, 0.0f);
        for (u32 x = 0; x < rect_.width(); ++x)
            filter.apply(&narrow[u64(x) * 3], u64(rect_.width()) * 3, grid_height_, &means[u64(x) * 3],
                         u64(rect_.width()) * 3);
    }
    // Negative lobes can make a negative radiance beside a bright edge.
    for (float& value : means)
        value = std::max(value, 0.0f);
    FloatImage image(width_, height_);
    for (u32 y = 0; y < rect_.height(); ++y)
        std::copy_n(&means[u64(y) * rect_.width() * 3], u64(rect_.width()) * 3,
                    image.pixel(rect_.x_begin, rect_.y_begin + y));
    return image;
}

double Film::samplesPerPixel() const {
    return double(samples_.load(std::memory_order_relaxed)) / (double(rect_.width()) * rect_.height());
}

void Film::clear() {
    std::fill(cells_.begin(), cells_.end(), 0.0f);
    samples_ = 0;
}

} // namespace engine
