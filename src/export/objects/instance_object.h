// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Shows another object once more, under its own matrix. The export reaches the linked object itself; the
/// host's renderer gets a copy.
class InstanceObject : public ObjectData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool Draw(BaseObject* object, BaseDraw* view, BaseDrawHelp* help) override;
    void GetDimension(BaseObject* object, Vector* centre, Vector* radius) override;
    BaseObject* GetVirtualObjects(BaseObject* object, HierarchyHelp* help) override;
};
