// SPDX-License-Identifier: MIT
#include "headless/import/aims_3ds.h"
#include "headless/import/fixture_import.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"

#include <cmath>
#include <numbers>

namespace headless {

namespace {

/// The host's parallel camera sees this many units across, divided by its zoom.
constexpr double PARALLEL_WIDTH = 1024.0;

void setProjection(Object& camera, const aiCamera& model, double unit) {
    // Assimp tells half the width.
    const double width = 2.0 * static_cast<double>(model.mOrthographicWidth) * unit;
    if (std::isfinite(width) && width > 0.0) {
        camera.setParameter(CAMERA_PROJECTION, GeData(int32_t{CAMERA_PROJECTION_PARALLEL}));
        camera.setParameter(CAMERA_ZOOM, GeData(PARALLEL_WIDTH / width));
    }
}

float fieldOfViewOf(const aiCamera& model, const Aim* aim) {
    // Assimp takes the lens of a 3DS file for an angle.
    return aim && aim->lens > 0.0f ? 2400.0f / aim->lens * std::numbers::pi_v<float> / 180.0f
                                   : model.mHorizontalFOV;
}

} // namespace

std::unique_ptr<Object> importCamera(const aiCamera& model, const Aim* aim, const ModelSpace& space) {
    std::unique_ptr<Object> camera = createObject(Ocamera);
    setProjection(*camera, model, space.unit());
    const float view = fieldOfViewOf(model, aim);
    if (view > 0.0f && view < std::numbers::pi_v<float>) {
        camera->setParameter(CAMERA_FOV, GeData(static_cast<double>(view)));
    }
    if (aim) {
        camera->setParameter(CAMERA_TARGET_DISTANCE,
                             GeData(static_cast<double>(aim->toTarget.Length()) * space.unit()));
        camera->matrix = aimedMatrix({}, aim->toTarget, {0.0f, 0.0f, 1.0f}, space);
    } else {
        camera->matrix = aimedMatrix(model.mPosition, model.mLookAt, model.mUp, space);
    }
    return camera;
}

} // namespace headless
