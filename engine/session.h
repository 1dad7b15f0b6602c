// SPDX-License-Identifier: MIT
#pragma once

#include "engine/film.h"
#include "engine/images/image_file.h"
#include "engine/render_scene.h"
#include "engine/tonemap.h"
#include "engine/tracer.h"
#include "foundation/ref_counted.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_root.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace engine {

struct SessionOptions {
    Quenza::u64 seed = 1;
    unsigned threads = 0;                             ///< 0: as the scene says.
    double halt_time = -1;                            ///< Seconds; negative: no limit.
    double halt_samples = -1;                         ///< Samples per pixel; negative: no limit.
    Quenza::u32 max_layers = RenderScene::MAX_LAYERS; ///< What is on a layer beyond goes to the first.
    std::string data_folder;                          ///< The renderer's own folder.
};

/// How far a render is.
struct Progress {
    double seconds = 0;
    double samples_per_pixel = 0;
    double seconds_left = -1; ///< Negative when there is no end.
    bool done = false;
};

/// One render of one scene, which can be run in pieces. The image doesn't depend on the number of threads,
/// but for the order in which floats are added.
class RenderSession {
public:
    /// The root is finalised; files with relative paths are looked for in `folder`. Throws QuenzaException
    /// when the scene can't be rendered.
    RenderSession(const Quenza::Ref<Quenza::SceneNodeRoot>& root, const std::string& folder,
                  const SessionOptions& options);

    /// Renders on threads of its own until a limit is reached or `stop` is set, which it looks at several
    /// times a second. `report` is called on the caller's thread about every `REPORT_PERIOD` seconds, and at
    /// the end. A later call goes on.
    void run(const std::atomic<bool>& stop, const std::function<void(const Progress&)>& report);

    static constexpr double REPORT_PERIOD = 0.5;

    /// Renders on the calling thread, beside others that do the same, until `stop` is set or the limit of
    /// samples is reached. What it has begun it leaves undone, which the next call doesn't make good: an
    /// image is a mean.
    void work(const std::atomic<bool>& stop);
    /// How many threads the options or else the scene ask for.
    unsigned countThreads() const;
    /// Begins the image anew, as this camera sees the scene. Not while threads work.
    void restart(const Quenza::SceneNodeCamera& camera);

    const RenderScene& scene() const { return scene_; }
    const Film& film() const { return film_; }
    /// Radiance of each light layer, also while rendering.
    std::vector<FloatImage> layerImages() const { return film_.layerImages(); }
    std::vector<std::string> layerNames() const;
    /// For the root's tone mapping as it is now.
    ToneMapper toneMapper() const;

private:
    bool renderTile(Quenza::u64 pass, Quenza::u64 tile, const std::atomic<bool>& stop);
    Tracer makeTracer() const;
    bool nextUnit(Quenza::u64& unit);
    Progress progress(double seconds) const;

    Quenza::Ref<Quenza::SceneNodeRoot> root_;
    SessionOptions options_;
    RenderScene scene_;
    Film film_;
    std::optional<Tracer> tracer_;
    Quenza::u64 tiles_across_, tiles_;
    std::atomic<Quenza::u64> next_unit_{0}; ///< Tiles of all passes, one after the other.
    double earlier_seconds_ = 0;            ///< Of runs before this one.
};

} // namespace engine
