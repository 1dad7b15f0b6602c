// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/material.h"
#include "host/shading.h"

namespace headless {

/// Samples that one sample of a shader may cost: a tree whose branches are linked many times over could take
/// for ever.
inline constexpr uint64_t MAX_SHADER_COST = 100'000;
/// How deep shaders may be linked.
inline constexpr int MAX_SHADER_DEPTH = 100;

/// Makes a shader ready with those that it links; may be called more than once, each with a freeRender of its
/// own. An InitRenderResult; an error for a shader that leads to itself, and beyond the limits. Any thread.
int32_t initRender(Shader& shader, const InitRenderStruct& init);
void freeRender(Shader& shader);

/// Black without initRender, and for a shader that samples itself. Any thread.
Vector sample(Shader& shader, const ChannelData& channel);

} // namespace headless
