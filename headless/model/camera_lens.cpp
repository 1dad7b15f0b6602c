// SPDX-License-Identifier: MIT
#include "headless/model/camera_lens.h"

#include "headless/model/primitive_ids.h"

#include <cmath>
#include <numbers>

namespace headless {

float fieldOfView(float focus, float aperture) {
    return static_cast<float>(2.0 *
                              std::atan(static_cast<double>(aperture) / (2.0 * static_cast<double>(focus))));
}

void settleLens(BaseContainer& camera, int32_t changed) {
    const float aperture = camera.GetReal(CAMERA_APERTURE);
    const float focus = camera.GetReal(CAMERA_FOCUS);
    const float view = camera.GetReal(CAMERA_FOV);
    const bool isLens = aperture > 0.0f && focus > 0.0f;
    if (changed == CAMERA_FOCUS || changed == CAMERA_APERTURE) {
        if (isLens) {
            camera.SetReal(CAMERA_FOV, fieldOfView(focus, aperture));
        }
        return;
    }
    // A focal length that already gives this view stays: the way back would lose its last digit.
    const bool isView = view > 0.0f && view < std::numbers::pi_v<float>;
    if (changed == CAMERA_FOV && aperture > 0.0f && isView &&
        !(isLens && fieldOfView(focus, aperture) == view)) {
        camera.SetReal(CAMERA_FOCUS, static_cast<float>(static_cast<double>(aperture) /
                                                        (2.0 * std::tan(static_cast<double>(view) / 2.0))));
    }
}

} // namespace headless
