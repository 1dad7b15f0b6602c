// SPDX-License-Identifier: MIT
#include "foundation/image_blur.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace Quenza {

namespace {

constexpr f32 DEVIATIONS_OF_REACH = 3;
/// Pieces a thread: one that is done early helps with the rest.
constexpr std::size_t PIECES_PER_THREAD = 4;

u32 before(u32 place, u64 distance) {
    return place > distance ? u32(place - distance) : 0;
}

u32 behind(u32 place, u64 distance, u32 size) {
    return u32(std::min<u64>(place + distance, size - 1));
}

/// `pixelsAt(distance)` gives the two pixels at a distance to both sides.
template <class PixelsAt>
void writeWeighted(f32* out, const f32* centre, const std::vector<f32>& weights, const PixelsAt& pixelsAt) {
    f32 sum[3];
    for (int channel = 0; channel < 3; ++channel)
        sum[channel] = weights[0] * centre[channel];
    for (std::size_t distance = 1; distance < weights.size(); ++distance) {
        const auto [left, right] = pixelsAt(distance);
        for (int channel = 0; channel < 3; ++channel)
            sum[channel] += weights[distance] * (left[channel] + right[channel]);
    }
    std::copy(sum, sum + 3, out);
}

struct Neighbours {
    const f32* left;
    const f32* right;
};

template <class Pass>
void runPass(const Image& from, Image& to, const std::vector<f32>& weights, u32 lines, TaskManager& manager) {
    const auto pieces = u32(std::min<std::size_t>(manager.getNumThreads() * PIECES_PER_THREAD, lines));
    try {
        for (u32 piece = 0; piece < pieces; ++piece) {
            const u32 begin = u32(u64(lines) * piece / pieces);
            const u32 end = u32(u64(lines) * (piece + 1) / pieces);
            manager.addTask(std::make_unique<Pass>(from, to, weights, begin, end));
        }
    } catch (const std::bad_alloc&) {
        // The tasks that are on their way write to the caller's images.
        manager.waitForTasks();
        throw;
    }
    manager.waitForTasks();
}

} // namespace

void XBlurTask::run(std::size_t /*thread_index*/) {
    const u32 width = from.getWidth();
    for (u32 y = begin; y < end; ++y)
        for (u32 x = 0; x < width; ++x)
            writeWeighted(to.pixel(x, y), from.pixel(x, y), weights, [&](u64 distance) {
                return Neighbours{from.pixel(before(x, distance), y),
                                  from.pixel(behind(x, distance, width), y)};
            });
}

void YBlurTask::run(std::size_t /*thread_index*/) {
    const u32 height = from.getHeight();
    // Row by row, as the pixels lie in memory.
    for (u32 y = 0; y < height; ++y)
        for (u32 x = begin; x < end; ++x)
            writeWeighted(to.pixel(x, y), from.pixel(x, y), weights, [&](u64 distance) {
                return Neighbours{from.pixel(x, before(y, distance)),
                                  from.pixel(x, behind(y, distance, height))};
            });
}

std::vector<f32> gaussianWeights(f32 deviation, u32 max_distance) {
    const f32 reach = std::min(std::ceil(deviation * DEVIATIONS_OF_REACH), f32(max_distance));
    std::vector<f32> weights{1};
    double total = 1;
    for (u32 distance = 1; f32(distance) <= reach; ++distance) {
        const double ratio = double(distance) / double(deviation);
        weights.push_back(f32(std::exp(-0.5 * ratio * ratio)));
        total += 2 * double(weights.back());
    }
    for (f32& weight : weights)
        weight = f32(double(weight) / total);
    return weights;
}

void blur(Image& image, f32 deviation, TaskManager& manager) {
    const u32 width = image.getWidth();
    const u32 height = image.getHeight();
    if (!(deviation > 0) || width == 0 || height == 0)
        return;
    const std::vector<f32> weights = gaussianWeights(deviation, std::max(width, height));
    Image half_done(width, height);
    runPass<XBlurTask>(image, half_done, weights, height, manager);
    runPass<YBlurTask>(half_done, image, weights, width, manager);
}

} // namespace Quenza
