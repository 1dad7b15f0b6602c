// SPDX-License-Identifier: MIT
#pragma once

#include <span>

/// Names of the measured metals that the renderer brings, in the order of MAT_PHONG_NK_INDEX.
std::span<const char* const> nkNames();
/// Index of a name, ignoring the case of ASCII letters; -1 for none.
int findNkName(const char* name);
