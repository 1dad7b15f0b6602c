// SPDX-License-Identifier: MIT
#include "headless/bake/bake.h"

#include "headless/bake/pixel_border.h"
#include "headless/bake/uv_raster.h"
#include "headless/model/handles.h"
#include "headless/shaders/material_picture.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <system_error>
#include <thread>

namespace headless {

namespace {

constexpr int32_t MAX_SUPERSAMPLING = 15;

UVRange rangeOf(const BaseContainer& settings) {
    UVRange range;
    range.left = settings.GetReal(BAKE_TEX_UV_LEFT, 0.0f);
    range.right = settings.GetReal(BAKE_TEX_UV_RIGHT, 1.0f);
    range.top = settings.GetReal(BAKE_TEX_UV_TOP, 0.0f);
    range.bottom = settings.GetReal(BAKE_TEX_UV_BOTTOM, 1.0f);
    return range;
}

bool isUsable(const UVRange& range) {
    return std::isfinite(range.left) && std::isfinite(range.right) && std::isfinite(range.top) &&
           std::isfinite(range.bottom) && range.left != range.right && range.top != range.bottom;
}

/// What the samples of a pixel add up to.
struct Sum {
    Vector colour;
    int32_t count = 0;
};

/// Rows of the image, taken by threads one after the other.
class RowBaker {
public:
    RowBaker(const UVRaster& raster, const ColourChannel& colour, const BaseTime& time, const UVRange& range,
             int32_t samplesASide, Image& image)
        : raster_(raster), colour_(colour), samplesASide_(samplesASide), image_(image),
          covered_(static_cast<size_t>(image.width()) * static_cast<size_t>(image.height())) {
        channel_.time = time;
        channel_.d.x =
            static_cast<float>(std::abs(range.right - range.left) / (image.width() * samplesASide));
        channel_.d.y =
            static_cast<float>(std::abs(range.bottom - range.top) / (image.height() * samplesASide));
    }

    void run(const std::function<bool()>& isCancelled);
    bool isCancelled() const { return cancelled_; }
    bool hasFailed() const { return failed_; }
    std::vector<uint8_t>& covered() { return covered_; }

private:
    void bakeRows(const std::function<bool()>& isCancelled);
    void bakeRow(int32_t row, UVRaster::Scratch& scratch, std::vector<UVSample>& samples,
                 std::vector<Sum>& sums);

    const UVRaster& raster_;
    const ColourChannel& colour_;
    ChannelData channel_;
    int32_t samplesASide_;
    Image& image_;
    std::vector<uint8_t> covered_;
    std::atomic<int32_t> nextRow_{0};
    std::atomic<bool> cancelled_{false};
    std::atomic<bool> failed_{false};
};

void RowBaker::run(const std::function<bool()>& isCancelled) {
    const unsigned helpers = std::max(1u, std::thread::hardware_concurrency()) - 1;
    std::vector<std::jthread> threads;
    for (unsigned i = 0; i < helpers; ++i) {
        try {
            threads.emplace_back([this] { bakeRows({}); });
        } catch (const std::system_error&) {
            break; // No more threads to be had.
        }
    }
    bakeRows(isCancelled);
}

void RowBaker::bakeRows(const std::function<bool()>& isCancelled) {
    try {
        UVRaster::Scratch scratch;
        std::vector<UVSample> samples;
        std::vector<Sum> sums;
        for (int32_t row = nextRow_++; row < image_.height() && !cancelled_ && !failed_; row = nextRow_++) {
            bakeRow(row, scratch, samples, sums);
            if (isCancelled && isCancelled()) {
                cancelled_ = true;
            }
        }
    } catch (const std::exception&) {
        failed_ = true;
    }
}

void RowBaker::bakeRow(int32_t row, UVRaster::Scratch& scratch, std::vector<UVSample>& samples,
                       std::vector<Sum>& sums) {
    sums.assign(static_cast<size_t>(image_.width()), Sum());
    ChannelData channel = channel_;
    for (int32_t part = 0; part < samplesASide_; ++part) {
        raster_.coveredOf(row * samplesASide_ + part, scratch, samples);
        for (const UVSample& sample : samples) {
            channel.p = sample.uvw;
            Sum& sum = sums[static_cast<size_t>(sample.column / samplesASide_)];
            sum.colour += colour_.sample(channel);
            ++sum.count;
        }
    }
    for (int32_t x = 0; x < image_.width(); ++x) {
        const Sum& sum = sums[static_cast<size_t>(x)];
        if (sum.count > 0) {
            image_.setPixel(x, row, sum.colour * (1.0f / static_cast<float>(sum.count)));
            covered_[static_cast<size_t>(row) * static_cast<size_t>(image_.width()) +
                     static_cast<size_t>(x)] = 1;
        }
    }
}

} // namespace

int32_t bakeTexture(BakeDocument& document, const BaseContainer& settings, Image& image,
                    const std::function<bool()>& isCancelled) {
    const UVRange range = rangeOf(settings);
    Material* const material = document.texture->material();
    if (!material) {
        return BAKE_TEX_ERR_NO_MATERIAL;
    }
    if (!isUsable(range) || image.init(settings.GetLong(BAKE_TEX_WIDTH), settings.GetLong(BAKE_TEX_HEIGHT),
                                       24) != IMAGERESULT_OK) {
        return BAKE_TEX_ERR_NO_BITMAP;
    }
    if (!settings.GetBool(BAKE_TEX_COLOR)) {
        return BAKE_TEX_ERR_NONE;
    }
    const int32_t samplesASide =
        std::clamp(settings.GetLong(BAKE_TEX_SUPERSAMPLING), 0, MAX_SUPERSAMPLING) + 1;
    const PolygonNode& mesh = *document.polygons;
    const UVRaster raster(mesh.polygons, document.uvw->records, range, image.width() * samplesASide,
                          image.height() * samplesASide);
    InitRenderStruct init;
    init.document = toHost(static_cast<const Document*>(&document));
    init.time = document.time;
    const ColourChannel colour(*material, init);
    RowBaker baker(raster, colour, init.time, range, samplesASide, image);
    baker.run(isCancelled);
    if (baker.isCancelled() || baker.hasFailed()) {
        return baker.isCancelled() ? BAKE_TEX_ERR_USERBREAK : BAKE_TEX_ERR_NO_MEM;
    }
    addPixelBorder(image, std::move(baker.covered()), settings.GetLong(BAKE_TEX_PIXELBORDER));
    return BAKE_TEX_ERR_NONE;
}

} // namespace headless
