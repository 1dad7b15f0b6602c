// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "engine/filters.h"
#include "engine/images/image_file.h"
#include "foundation/types.h"
#include "scene/image_filters.h"
#include "scene/render_settings_parts.h"

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace engine {

/// The part of an image that is rendered, in pixels from its top left corner; the end is outside.
struct PixelRect {
    Quenza::u32 x_begin = 0, y_begin = 0, x_end = 0, y_end = 0;

    Quenza::u32 width() const { return x_end - x_begin; }
    Quenza::u32 height() const { return y_end - y_begin; }
};

/// The region of the scene within an image of that size: the whole image for null, and for a region that has
/// no pixel in the image.
PixelRect renderedRect(Quenza::u32 width, Quenza::u32 height, const Quenza::RenderRegion* region);

/// Collects the samples of all light layers, on a grid that is finer than the image by the super sampling
/// factor. Any thread may add samples at any time, also while another one takes the image.
///
/// A pixel is the filtered mean of its samples, not their sum over an expected count: it doesn't depend on
/// how many fell on it by chance, and a picture of uneven sampling is still right. Filters lose nothing at
/// the border: what falls outside is reflected.
class Film {
public:
    /// Throws QuenzaException when there is no pixel, or the buffers would take more than MAX_BYTES.
    Film(Quenza::u32 width, Quenza::u32 height, Quenza::u32 super_sample_factor, Quenza::u32 layers,
         const Quenza::SplatFilter& splat, const Quenza::DownsizeFilter& downsize,
         const Quenza::RenderRegion* region = nullptr);

    static constexpr Quenza::u64 MAX_BYTES = Quenza::u64(4) << 30;

    /// One sample at a place of the image, in pixels from the top left corner: the radiance of each layer.
    /// Samples outside rect() are dropped, as are those that aren't finite (they count as black).
    void addSample(float x, float y, const RGB* layer_radiances);
    /// Counts samples for samplesPerPixel(); for whole batches, as the counter is shared.
    void addSamples(Quenza::u64 count) { samples_.fetch_add(count, std::memory_order_relaxed); }

    /// One image of width x height a layer; outside rect() it is black.
    std::vector<FloatImage> layerImages() const;
    double samplesPerPixel() const;
    /// Forgets all samples. Not while others add.
    void clear();

    const PixelRect& rect() const { return rect_; }
    Quenza::u32 width() const { return width_; }
    Quenza::u32 height() const { return height_; }
    Quenza::u32 numLayers() const { return layers_; }

private:
    void splat(Quenza::u64 cell, float weight, const RGB* layer_radiances);
    FloatImage layerImage(Quenza::u32 layer, float weight_floor) const;
    std::vector<float> cellMeans(Quenza::u32 layer, float weight_floor) const;
    void fillHoles(std::vector<float>& means, float weight_floor) const;

    Quenza::u32 width_, height_, factor_, layers_;
    PixelRect rect_;
    Quenza::u32 grid_width_, grid_height_; ///< Cells of the finer grid within rect_.
    FilterKernel splat_kernel_, downsize_kernel_;
    /// A cell's weight, then three sums a layer.
    Quenza::u64 stride_;
    std::vector<float> cells_;
    std::atomic<Quenza::u64> samples_{0};
};

} // namespace engine
