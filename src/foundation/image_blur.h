// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/image_buffers.h"
#include "foundation/task.h"
#include "foundation/task_manager.h"
#include "foundation/types.h"

#include <vector>

namespace Quenza {

/// One pass of a separable blur over a piece of an image: `weights` are those of a pixel and of its
/// neighbours at each distance, to both sides. Beyond its edges an image goes on with the pixels of the edge.
/// The target has the source's size; both and the weights outlive the task.
class BlurTask : public Task {
public:
    BlurTask(const Image& source, Image& target, const std::vector<f32>& kernel, u32 first, u32 past_last)
        : from(source), to(target), weights(kernel), begin(first), end(past_last) {}

protected:
    const Image& from;
    Image& to;
    const std::vector<f32>& weights;
    u32 begin;
    u32 end;
};

/// Along the rows from `begin` to before `end`.
class XBlurTask : public BlurTask {
public:
    using BlurTask::BlurTask;
    void run(std::size_t thread_index) override;
};

/// Along the columns from `begin` to before `end`.
class YBlurTask : public BlurTask {
public:
    using BlurTask::BlurTask;
    void run(std::size_t thread_index) override;
};

/// Weights of a Gaussian of that standard deviation (in pixels, above 0) up to three times of it, and no
/// further than `max_distance`; those of both sides add up to 1.
std::vector<f32> gaussianWeights(f32 deviation, u32 max_distance);

/// Gaussian blur with that standard deviation in pixels; 0, less and what is no number leave the image as it
/// is.
void blur(Image& image, f32 deviation, TaskManager& manager);

} // namespace Quenza
