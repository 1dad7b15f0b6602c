// SPDX-License-Identifier: MIT
#include "shared/light_layers.h"

#include "shared/export_context.h"

int32_t layerIndex(ExportContext& context, int32_t key) {
    return context.layerMap.emplace(key, static_cast<int32_t>(context.layerMap.size())).first->second;
}
