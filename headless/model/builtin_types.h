// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/node_types.h"

namespace headless {

/// The types that the host itself brings.
std::span<const NodeTypeInfo> builtinTypes();

} // namespace headless
