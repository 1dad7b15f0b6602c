// SPDX-License-Identifier: MIT
#include "export/tonemapping_export.h"

#include "export/response_functions.h"
#include "host/general.h"
#include "shared/parameter_ids.h"

using namespace Quenza;

namespace {

void exportCameraMethod(SceneNodeTonemapping& node, const BaseContainer& data) {
    node.tonemap_type = SceneNodeTonemapping::CAMERA;
    node.film_iso = double(data.GetReal(CAM_TONEMAP_FILM_ISO, 200.0f));
    node.ev_adjust = double(data.GetReal(CAM_TONEMAP_EV_ADJUST));
    const int32_t index = data.GetLong(CAM_TONEMAP_RESPONSE);
    // Only a document that was made by hand or by a later version has such an index.
    if (!responseFunctionName(index)) {
        GePrint(::String("The Quenza camera tag names response function ") + LongToString(index) +
                ", which there isn't: the default one is used.");
        return;
    }
    // In the renderer's folder: neither copied nor looked for here.
    node.response_function_path = responseFunctionPath(index);
}

} // namespace

bool exportTonemapping(const Ref<SceneNodeTonemapping>& tonemappingNode, const BaseContainer& cameraData) {
    SceneNodeTonemapping& node = *tonemappingNode;
    switch (cameraData.GetLong(CAM_TONEMAP_METHOD, CAM_TONEMAP_REINHARD)) {
    case CAM_TONEMAP_LINEAR:
        node.tonemap_type = SceneNodeTonemapping::LINEAR;
        node.scale = double(cameraData.GetReal(CAM_TONEMAP_SCALE));
        break;
    case CAM_TONEMAP_CAMERA:
        exportCameraMethod(node, cameraData);
        break;
    default:
        node.tonemap_type = SceneNodeTonemapping::REINHARD;
        // One parameter serves both methods: the linear scale is Reinhard's pre-scale.
        node.pre_scale = double(cameraData.GetReal(CAM_TONEMAP_SCALE, 3.0f));
        node.post_scale = double(cameraData.GetReal(CAM_TONEMAP_POST_SCALE, 1.0f));
        node.burn = double(cameraData.GetReal(CAM_TONEMAP_BURN, 10.0f));
        break;
    }
    return true;
}
