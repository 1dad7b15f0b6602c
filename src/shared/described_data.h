// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselist.h"
#include "host/description.h"

/// The first step of each GetDDescription: loads the description of `pluginId` and tells the host so.
inline bool loadOwnDescription(Description* description, int32_t pluginId, int32_t& flags) {
    if (!description->LoadDescription(pluginId)) {
        return false;
    }
    flags |= DESCFLAGS_DESC_LOADED;
    return true;
}
