// SPDX-License-Identifier: MIT
#pragma once

#include "host/string.h"

#include <cstdint>
#include <vector>

/// A graphics card that the renderer can use.
struct GpuDevice {
    String name;
    /// GPU_KIND_CUDA; every other kind is OpenCL.
    int32_t kind;
};

inline constexpr int32_t GPU_KIND_CUDA = 1;

/// The process-wide list that RS_GPU_DEVICE counts in. Written on the main thread while the plug-in starts,
/// read by all.
std::vector<GpuDevice>& gpuDevices();
