// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Hides an object, and those below it, from the camera while light still meets them.
class CompositingTag : public TagData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
};
