// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

class BaseList2D;

/// False for a parameter of a material that has no use with the material's other settings.
bool isMaterialParameterEnabled(const BaseList2D& material, int32_t id);
