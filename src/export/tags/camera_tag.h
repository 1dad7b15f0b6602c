// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// What the renderer needs of a camera beyond the host's settings: exposure, aperture, tone mapping, filters,
/// region.
class CameraTag : public TagData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;
    /// The frame of the render region, in the view that looks through the tag's camera.
    bool Draw(BaseTag* tag, BaseObject* object, BaseDraw* view, BaseDrawHelp* help) override;
};
