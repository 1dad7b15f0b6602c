// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// File name of a camera response function in the renderer's data folder; null for an index outside of the
/// list. The indices are the values of CAM_TONEMAP_RESPONSE.
const char* responseFunctionName(int32_t index);
