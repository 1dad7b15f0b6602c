// SPDX-License-Identifier: MIT
#include "engine/session.h"

#include "engine/random.h"
#include "engine/render_threads.h"
#include "engine/tracer.h"
#include "foundation/mutex.h"
#include "scene/scene_node_tonemapping.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <exception>

namespace engine {

namespace {

using Quenza::u32;
using Quenza::u64;
using Clock = std::chrono::steady_clock;

constexpr u32 TILE = 32; ///< Pixels a side.
constexpr unsigned MAX_THREADS = 256;

u64 tilesAlong(u32 pixels) {
    return (u64(pixels) + TILE - 1) / TILE;
}

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

Film makeFilm(const RenderScene& scene) {
    const Quenza::SceneNodeRenderSettings& settings = scene.settings();
    return Film(u32(settings.getInt("width")), u32(settings.getInt("height")),
                u32(std::max(1, settings.getInt("super_sample_factor"))), scene.numLayers(),
                *settings.splat_filter, *settings.downsize_filter, settings.render_region.getPointer());
}

} // namespace

RenderSession::RenderSession(const Quenza::Ref<Quenza::SceneNodeRoot>& root, const std::string& folder,
                             const SessionOptions& options)
    : root_(root), options_(options), scene_(*root, folder, options.data_folder, options.max_layers),
      film_(makeFilm(scene_)), tracer_(makeTracer()), tiles_across_(tilesAlong(film_.rect().width())),
      tiles_(tiles_across_ * tilesAlong(film_.rect().height())) {}

Tracer RenderSession::makeTracer() const {
    return Tracer(scene_.geometry(), scene_.lights(), scene_.background(), scene_.camera().position(),
                  std::max(1, scene_.settings().getInt("max_depth")));
}

void RenderSession::restart(const Quenza::SceneNodeCamera& camera) {
    scene_.setCamera(camera);
    tracer_.emplace(makeTracer());
    film_.clear();
    next_unit_ = 0;
}

unsigned RenderSession::countThreads() const {
    if (options_.threads > 0) {
        return std::min(options_.threads, MAX_THREADS);
    }
    if (scene_.settings().getBool("auto_choose_num_threads")) {
        return std::clamp(std::thread::hardware_concurrency(), 1u, MAX_THREADS);
    }
    return unsigned(std::clamp(scene_.settings().getInt("num_threads"), 1, int(MAX_THREADS)));
}

std::vector<std::string> RenderSession::layerNames() const {
    std::vector<std::string> names;
    for (u32 i = 0; i < scene_.numLayers(); ++i) {
        names.push_back(scene_.settings().getLayer(i)->name.toStdString());
    }
    return names;
}

ToneMapper RenderSession::toneMapper() const {
    const Quenza::Lock lock(root_->getMutex());
    const auto* const camera = dynamic_cast<const Quenza::SceneNodeCamera*>(root_->getCameraPointer());
    return ToneMapper(
        dynamic_cast<const Quenza::SceneNodeTonemapping*>(root_->getToneMappingPointer()), scene_.settings(),
        camera ? Lens(*camera).exposure(double(scene_.camera().focusDistance())) : 0, options_.data_folder);
}

Progress RenderSession::progress(double seconds) const {
    Progress now;
    now.seconds = seconds;
    now.samples_per_pixel = film_.samplesPerPixel();
    if (options_.halt_time >= 0) {
        now.seconds_left = std::max(0.0, options_.halt_time - seconds);
    }
    if (options_.halt_samples >= 0 && now.samples_per_pixel > 0) {
        const double left =
            std::max(0.0, options_.halt_samples - now.samples_per_pixel) * seconds / now.samples_per_pixel;
        now.seconds_left = now.seconds_left < 0 ? left : std::min(now.seconds_left, left);
    }
    return now;
}

void RenderSession::run(const std::atomic<bool>& stop, const std::function<void(const Progress&)>& report) {
    const Clock::time_point start = Clock::now();
    const auto seconds = [&] { return earlier_seconds_ + secondsSince(start); };
    std::exception_ptr failure;
    {
        RenderThreads threads(
            countThreads(), [this](const std::atomic<bool>& ended) { work(ended); },
            [&failure](const std::exception_ptr& caught) { failure = caught; });
        double next_report = seconds() + REPORT_PERIOD;
        while (!threads.waitFor(std::chrono::milliseconds(50))) {
            const double now = seconds();
            if (stop || (options_.halt_time >= 0 && now >= options_.halt_time)) {
                threads.stop();
            }
            if (now >= next_report) {
                report(progress(now));
                next_report = seconds() + REPORT_PERIOD;
            }
        }
    }
    earlier_seconds_ = seconds();
    if (failure) {
        std::rethrow_exception(failure);
    }
    Progress last = progress(earlier_seconds_);
    last.done = true;
    report(last);
}

bool RenderSession::nextUnit(u64& unit) {
    unit = next_unit_.fetch_add(1, std::memory_order_relaxed);
    if (options_.halt_samples < 0) {
        return true;
    }
    const auto passes = u64(std::max(1.0, std::ceil(std::min(options_.halt_samples, 1e9))));
    return unit / tiles_ < passes;
}

void RenderSession::work(const std::atomic<bool>& stop) {
    u64 unit = 0;
    while (!stop && nextUnit(unit)) {
        if (!renderTile(unit / tiles_, unit % tiles_, stop)) {
            return;
        }
    }
}

/// A sample for each of the tile's pixels. False when it was cut short.
bool RenderSession::renderTile(u64 pass, u64 tile, const std::atomic<bool>& stop) {
    const PixelRect& rect = film_.rect();
    const auto x_begin = u32(rect.x_begin + tile % tiles_across_ * TILE);
    const auto y_begin = u32(rect.y_begin + tile / tiles_across_ * TILE);
    const u32 x_end = std::min(x_begin + TILE, rect.x_end);
    const u32 y_end = std::min(y_begin + TILE, rect.y_end);
    std::vector<RGB> layers(scene_.numLayers());
    for (u32 y = y_begin; y < y_end; ++y) {
        if (stop) {
            return false;
        }
        for (u32 x = x_begin; x < x_end; ++x) {
            Random random(options_.seed + pass * 0x9E3779B97F4A7C15ULL, u64(y) * film_.width() + x);
            const float px = float(x) + random.next();
            const float py = float(y) + random.next();
            const Camera::View view = scene_.camera().view(px, py, random);
            std::fill(layers.begin(), layers.end(), RGB{0.0f});
            tracer_->trace(view.ray, view.weight, random, layers);
            film_.addSample(px, py, layers.data());
        }
        film_.addSamples(x_end - x_begin);
    }
    return true;
}

} // namespace engine
