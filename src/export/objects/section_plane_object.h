// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Cuts geometry away on one side of its XY plane.
class SectionPlaneObject : public ObjectData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;
    bool Draw(BaseObject* object, BaseDraw* view, BaseDrawHelp* help) override;
    void GetDimension(BaseObject* object, Vector* centre, Vector* radius) override;
};
