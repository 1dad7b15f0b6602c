// SPDX-License-Identifier: MIT
#pragma once

#include "materials/qsl_shader.h"

/// From one colour to another over the texture coordinates: to the right, downwards, or outwards from the
/// middle.
class QSLGradientShader : public QSLShaderData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    int32_t InitRender(BaseShader* shader, const InitRenderStruct& init) override;
    Vector Output(BaseShader* shader, const ChannelData& channel) override;
    String getQSLExpression(BaseShader* node, int32_t valueType) override;

private:
    bool read(const BaseShader* node);

    int32_t direction_ = 0;
    Vector colour1_;
    Vector colour2_;
    float multiplier_ = 1.0f;
};
