// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// How the renderer subdivides the object's mesh.
class SubdivisionTag : public TagData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;
};
