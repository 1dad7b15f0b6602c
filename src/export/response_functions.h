// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"

#include <cstdint>

/// File name of a camera response function in the renderer's data folder; null for an index outside of the
/// list. The indices are the values of CAM_TONEMAP_RESPONSE.
const char* responseFunctionName(int32_t index);

/// The path by which scenes name the function, relative to the renderer's folder and with "/" on every
/// platform. The index must be one of the list.
Quenza::String responseFunctionPath(int32_t index);
/// Index of a path that responseFunctionPath gives; -1 for any other.
int32_t responseFunctionIndex(const Quenza::String& path);
