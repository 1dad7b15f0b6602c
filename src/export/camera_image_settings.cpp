// SPDX-License-Identifier: MIT
#include "export/camera_image_settings.h"

#include "shared/parameter_ids.h"

#include <algorithm>

using namespace Quenza;

namespace {

// The tag's B and C of Mitchell and Netravali are the nodes' `blur` and `ring`.

Ref<SplatFilter> splatFilter(const BaseContainer& tag) {
    switch (tag.GetLong(CAM_SPLAT_FILTER)) {
    case CAM_FILTER_MN_CUBIC: {
        const Ref<SplatFilterMNCubic> filter = new SplatFilterMNCubic;
        filter->blur = double(tag.GetReal(CAM_SPLAT_MN_B));
        filter->ring = double(tag.GetReal(CAM_SPLAT_MN_C));
        return filter;
    }
    case CAM_SPLAT_RADIAL:
        return new SplatFilterRadial;
    default:
        return new SplatFilterFastBox;
    }
}

Ref<DownsizeFilter> downsizeFilter(const BaseContainer& tag) {
    switch (tag.GetLong(CAM_DOWNSIZE_FILTER)) {
    case CAM_FILTER_MN_CUBIC: {
        const Ref<DownsizeFilterMNCubic> filter = new DownsizeFilterMNCubic;
        filter->blur = double(tag.GetReal(CAM_DOWNSIZE_MN_B));
        filter->ring = double(tag.GetReal(CAM_DOWNSIZE_MN_C));
        filter->radius = double(tag.GetReal(CAM_DOWNSIZE_RADIUS, 1.6f));
        return filter;
    }
    case CAM_DOWNSIZE_GAUSSIAN:
        return new DownsizeFilterGaussian;
    default:
        return new DownsizeFilterSharp;
    }
}

/// The tag takes the corners in any order.
Ref<RenderRegion> renderRegion(const BaseContainer& tag) {
    const auto [x1, x2] = std::minmax({tag.GetLong(CAM_REGION_X1), tag.GetLong(CAM_REGION_X2)});
    const auto [y1, y2] = std::minmax({tag.GetLong(CAM_REGION_Y1), tag.GetLong(CAM_REGION_Y2)});
    const Ref<RenderRegion> region = new RenderRegion;
    region->x1 = x1;
    region->x2 = x2;
    region->y1 = y1;
    region->y2 = y2;
    return region;
}

/// An unknown value gives (0, 0).
Ref<WhitePoint> whitePoint(int32_t value) {
    constexpr struct {
        int32_t value;
        double x;
        double y;
    } rows[] = {
        {CAM_WHITE_POINT_E, 0.333333333333, 0.3333333333333},
        {CAM_WHITE_POINT_D50, 0.34567, 0.3585},
        {CAM_WHITE_POINT_D55, 0.33242, 0.34743},
        {CAM_WHITE_POINT_D65, 0.31273, 0.32902},
        {CAM_WHITE_POINT_D75, 0.29902, 0.31485},
        {CAM_WHITE_POINT_A, 0.44757, 0.40745},
        {CAM_WHITE_POINT_B, 0.34842, 0.35161},
        {CAM_WHITE_POINT_C, 0.31006, 0.31616},
        {CAM_WHITE_POINT_9300K, 0.2848, 0.2932},
        {CAM_WHITE_POINT_F2, 0.37207, 0.37512},
        {CAM_WHITE_POINT_F7, 0.31285, 0.32918},
        {CAM_WHITE_POINT_F11, 0.38054, 0.37691},
    };
    for (const auto& row : rows) {
        if (row.value == value) {
            return new WhitePoint(row.x, row.y);
        }
    }
    return new WhitePoint(0, 0);
}

void exportTagSettings(SceneNodeRenderSettings& node, const BaseContainer& tag) {
    node.setInt("super_sample_factor", tag.GetLong(CAM_SUPER_SAMPLE_FACTOR, 1));
    node.setSplatFilter(splatFilter(tag));
    node.setDownsizeFilter(downsizeFilter(tag));
    node.setBool("watermark", tag.GetBool(CAM_WATERMARK));
    node.setBool("info_overlay", tag.GetBool(CAM_INFO_OVERLAY));
    if (tag.GetLong(CAM_RENDER_REGION) == 1) {
        node.render_region = renderRegion(tag);
    }
}

} // namespace

void exportImageSettings(SceneNodeRenderSettings& node, const ExportContext& context) {
    const BaseContainer& tag = context.cameraTagData;
    if (context.hasCameraTag) {
        exportTagSettings(node, tag);
    }
    node.setInt("width", context.imageWidth);
    node.setInt("height", context.imageHeight);
    node.setBool("post_process_diffraction", tag.GetLong(CAM_DIFFRACTION) != CAM_DIFFRACTION_OFF);
    node.setBool("aperture_diffraction", tag.GetBool(CAM_APERTURE_DIFFRACTION));
    const int32_t white =
        context.hasCameraTag ? tag.GetLong(CAM_WHITE_POINT, CAM_WHITE_POINT_E) : CAM_WHITE_POINT_D65;
    node.setWhitePoint(whitePoint(white));
}
