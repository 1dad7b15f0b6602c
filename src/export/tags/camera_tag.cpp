// SPDX-License-Identifier: MIT
#include "export/tags/camera_tag.h"

#include "host/basedraw.h"
#include "host/document.h"
#include "host/ids.h"
#include "host/tag.h"
#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {

struct Size {
    int32_t width = 640;
    int32_t height = 480;
};

Size renderSize(const BaseDocument* document) {
    const RenderData* const renderData = document ? document->GetActiveRenderData() : nullptr;
    if (!renderData) {
        return {};
    }
    const BaseContainer* const data = renderData->GetDataInstance();
    return {data->GetLong(RDATA_XRES, 640), data->GetLong(RDATA_YRES, 480)};
}

} // namespace

bool CameraTag::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    data->SetLong(CAM_WHITE_POINT, CAM_WHITE_POINT_D65);
    data->SetBool(CAM_AUTOFOCUS, true);
    data->SetReal(CAM_SHUTTER_SPEED, 500.0f);
    data->SetReal(CAM_F_NUMBER, 16.0f);
    data->SetLong(CAM_SUPER_SAMPLE_FACTOR, 2);
    data->SetBool(CAM_WATERMARK, false);
    data->SetBool(CAM_INFO_OVERLAY, false);
    data->SetLong(CAM_DIFFRACTION, CAM_DIFFRACTION_POST_PROCESS);
    data->SetBool(CAM_APERTURE_DIFFRACTION, false);
    data->SetLong(CAM_APERTURE_SHAPE, CAM_APERTURE_CIRCULAR);
    data->SetLong(CAM_APERTURE_BLADES, 6);
    data->SetReal(CAM_APERTURE_OFFSET, 0.4f);
    data->SetReal(CAM_APERTURE_CURVATURE, 3.0f);
    data->SetReal(CAM_APERTURE_ANGLE, 0.2f);
    data->SetFilename(CAM_APERTURE_IMAGE, Filename());
    data->SetLong(CAM_SPLAT_FILTER, CAM_SPLAT_FAST_BOX);
    data->SetReal(CAM_SPLAT_MN_B, 0.2f);
    data->SetReal(CAM_SPLAT_MN_C, 0.6f);
    data->SetLong(CAM_DOWNSIZE_FILTER, CAM_FILTER_MN_CUBIC);
    data->SetReal(CAM_DOWNSIZE_MN_B, 0.0f);
    data->SetReal(CAM_DOWNSIZE_MN_C, 1.0f);
    data->SetReal(CAM_DOWNSIZE_RADIUS, 1.6f);
    data->SetBool(CAM_OBSTACLE_MAP, false);
    data->SetFilename(CAM_OBSTACLE_MAP_FILE, Filename());
    data->SetBool(CAM_RENDER_REGION, false);
    data->SetLong(CAM_REGION_X1, 0);
    data->SetLong(CAM_REGION_X2, 150);
    data->SetLong(CAM_REGION_Y1, 0);
    data->SetLong(CAM_REGION_Y2, 150);
    return true;
}

bool CameraTag::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_CAMERA_TAG, flags);
}

bool CameraTag::GetDEnabling(BaseList2D* node, const DescID& id) {
    return id[0] != CAM_OBSTACLE_MAP_FILE || node->GetDataInstance()->GetBool(CAM_OBSTACLE_MAP);
}

bool CameraTag::Draw(BaseTag* tag, BaseObject* object, BaseDraw* view, BaseDrawHelp* help) {
    const BaseContainer* const data = tag->GetDataInstance();
    if (!data->GetBool(CAM_RENDER_REGION) || view->GetSceneCamera(help->document) != object) {
        return true;
    }
    const Size size = renderSize(help->document);
    if (size.width <= 0 || size.height <= 0) {
        return true;
    }
    int32_t left = 0, top = 0, right = 0, bottom = 0;
    view->GetSafeFrame(&left, &top, &right, &bottom);
    const auto scaleX = static_cast<float>(right - left) / static_cast<float>(size.width);
    const auto scaleY = static_cast<float>(bottom - top) / static_cast<float>(size.height);
    const auto corner = [&](int32_t x, int32_t y) {
        return Vector(static_cast<float>(left) + scaleX * static_cast<float>(data->GetLong(x)),
                      static_cast<float>(top) + scaleY * static_cast<float>(data->GetLong(y)), 0.0f);
    };
    const Vector corners[] = {corner(CAM_REGION_X1, CAM_REGION_Y1), corner(CAM_REGION_X2, CAM_REGION_Y1),
                              corner(CAM_REGION_X2, CAM_REGION_Y2), corner(CAM_REGION_X1, CAM_REGION_Y2)};
    view->SetPen(Vector(1.0f, 0.0f, 0.0f));
    for (int i = 0; i < 4; ++i) {
        view->DrawLine2D(corners[i], corners[(i + 1) % 4]);
    }
    return true;
}
