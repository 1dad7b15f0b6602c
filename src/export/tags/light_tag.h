// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// What the renderer needs of a light beyond the host's settings: spectrum, emission scale, IES profile,
/// layer.
class LightTag : public TagData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    /// The preview button opens a scene that shows the tag's IES file.
    bool Message(BaseList2D* node, int32_t type, void* data) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;
};
