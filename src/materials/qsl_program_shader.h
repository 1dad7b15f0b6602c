// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Text of a whole program in the renderer's shader language, with up to three image files that the text
/// refers to. The host can't run it: there it is black.
class QSLProgramShader : public ShaderData {
public:
    bool Init(BaseList2D* node) override;
    /// The first message inside a material of the plug-in brings a program that fits the channel.
    bool Message(BaseList2D* node, int32_t type, void* data) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
};
