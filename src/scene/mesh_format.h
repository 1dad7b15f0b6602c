// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <bit>

/// What the reader and the writer of mesh files share; the layout is told at class Mesh.
namespace Quenza::MeshFormat {

static_assert(std::endian::native == std::endian::little,
              "mesh files hold little-endian records as they lie in memory");

inline constexpr u32 MAGIC = 0x0053436F;

inline constexpr u32 VERSION_WITH_QUADS = 2;
inline constexpr u32 VERSION_WITH_UV_LAYOUT = 3;
inline constexpr u32 NEWEST_VERSION = 3;
inline constexpr u32 OLDEST_VERSION = 1;

inline constexpr u64 MAX_COUNT = 0x7FFFFFFF;
inline constexpr u64 MAX_STRING_BYTES = 1024;
inline constexpr u32 NUM_UV_LAYOUTS = 2;

} // namespace Quenza::MeshFormat
