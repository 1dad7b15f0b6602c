// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers of the plug-in that the program's commands name.

namespace headless {

inline constexpr int32_t QUENZA_MATERIAL = 1024337;

inline constexpr int32_t CONVERT_MATERIALS = 1021852;
inline constexpr int32_t IMPORT_MATERIALS = 1022469;
inline constexpr int32_t BAKE_MATERIAL = 1024338;

} // namespace headless
