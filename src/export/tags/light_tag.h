// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// What the renderer needs of a light beyond the host's settings: spectrum, emission scale, IES profile,
/// layer.
class LightTag : public TagData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;
};
