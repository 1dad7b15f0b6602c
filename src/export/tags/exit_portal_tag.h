// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Makes the object that carries it a portal through which light enters a closed room.
class ExitPortalTag : public TagData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
};
