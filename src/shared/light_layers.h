// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

struct ExportContext;

/// Keys of the layers that aren't the artist's: those are 0 to 9.
enum LayerKey : int32_t { LAYER_KEY_SKY = -1, LAYER_KEY_SUN = -2 };

/// The scene's layer of a key. Layers are numbered in the order of their first use.
int32_t layerIndex(ExportContext& context, int32_t key);
