// SPDX-License-Identifier: MIT
#include "export/motion_blur.h"

#include "host/general.h"
#include "host/ids.h"
#include "host/object.h"
#include "host/tag.h"
#include "shared/export_context.h"
#include "shared/scene_space.h"

#include <algorithm>
#include <cmath>

namespace {

/// The shutter may stay open for this many frames: more than an hour of film. Each is a state of the whole
/// document.
constexpr float MAX_FRAMES = 100000.0f;

/// From the object up to the document's top, through the heads of caches.
bool findMotionBlurTag(const BaseObject* object, float& multiplier) {
    while (object) {
        if (const BaseTag* const tag = object->GetTag(Tmotionblur)) {
            multiplier = tag->GetDataInstance()->GetReal(MOTIONBLUR_STRENGTH, 1.0f);
            return true;
        }
        const BaseObject* const parent = object->GetUp();
        object = parent ? parent : object->GetCacheParent();
    }
    return false;
}

Quenza::KeyFrame keyframe(const Matrix& matrix, double time, float sceneScale, const Vector& shift) {
    const AxisAngle turn = MatrixToRotAxis(matrix);
    return {toSceneSpaceDouble(matrix.off * sceneScale - shift), time, toSceneSpaceDouble(turn.axis),
            double(turn.angle)};
}

/// When the path has keys.
struct KeyTime {
    /// Within the exposure, 0 to 1.
    double time;
    /// Of the document.
    double frame;
};

/// The keys behind the first: at whole frames, and at the end of the exposure. An inner key i is below
/// `frames` - 0.5, so below their rounded count, and its time below 1. The count is 0 for a shutter of less
/// than half a frame: the step is infinite then, but no key uses it.
std::vector<KeyTime> keyTimes(int32_t frame, float frames) {
    const double step = 1.0 / double(std::floor(frames + 0.5f));
    std::vector<KeyTime> times;
    for (int32_t i = 1; float(i) < frames - 0.5f; ++i) {
        times.push_back({i * step, double(frame) + i});
    }
    times.push_back({1.0, double(frame) + double(frames)});
    return times;
}

} // namespace

bool exportMotionBlur(Quenza::Vector<Quenza::KeyFrame>& keyframes, BaseObject* object, const Matrix& matrix,
                      ExportContext& context, const std::vector<BaseObject*>& chain, const Vector& shift) {
    float multiplier = 1.0f;
    if (chain.empty() || !findMotionBlurTag(object, multiplier)) {
        return false;
    }
    GePrint("SceneExportObjectMotionBlurSG()");
    const float frames = float(context.document->GetFps()) * context.exposureDuration * multiplier;
    // Also for what isn't a number.
    if (!(std::fabs(frames) <= MAX_FRAMES)) {
        return false;
    }
    const std::vector<KeyTime> times = keyTimes(context.frame, frames);
    std::vector<double> documentTimes;
    for (const KeyTime& key : times) {
        documentTimes.push_back(key.frame);
    }
    context.sampledMotion.sample(context.document, context.frame, documentTimes);

    std::vector<Matrix> matrices;
    for (const double time : documentTimes) {
        matrices.push_back(context.sampledMotion.worldMatrix(chain, time));
    }
    if (!std::all_of(matrices.begin(), matrices.end(), [](const Matrix& m) { return isFinite(m); })) {
        return false;
    }
    keyframes.push_back(keyframe(matrix, 0.0, context.sceneScale, shift));
    for (size_t i = 0; i < times.size(); ++i) {
        // Kept as documents have been rendered: the last key goes without the shift of the lens.
        const bool isLast = i + 1 == times.size();
        keyframes.push_back(
            keyframe(matrices[i], times[i].time, context.sceneScale, isLast ? Vector() : shift));
    }
    return true;
}
