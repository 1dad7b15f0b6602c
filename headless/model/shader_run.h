// SPDX-License-Identifier: MIT
#pragma once

#include "host/shading.h"

namespace headless {

/// What a shader keeps between InitRender and FreeRender.
class ShaderRun {
public:
    ShaderRun() = default;
    ShaderRun(const ShaderRun&) = delete;
    ShaderRun& operator=(const ShaderRun&) = delete;
    virtual ~ShaderRun() = default;

    /// Any thread.
    virtual Vector sample(const ChannelData& channel) = 0;
};

} // namespace headless
