// SPDX-License-Identifier: MIT
#pragma once

#include "materials/perlin_noise.h"
#include "materials/qsl_shader.h"

/// Improved Perlin noise or eight octaves of it, over texture coordinates or in space, plain or between two
/// colours.
class QSLNoiseShader : public QSLShaderData {
public:
    bool Init(BaseList2D* node) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;
    int32_t InitRender(BaseShader* shader, const InitRenderStruct& init) override;
    Vector Output(BaseShader* shader, const ChannelData& channel) override;
    String getQSLExpression(BaseShader* node, int32_t valueType) override;

private:
    bool read(const BaseShader* node);
    const char* functionName() const;
    String call() const;
    NoisePoint pointOf(const ChannelData& channel) const;

    bool isFbm_ = false;
    bool isInSpace_ = false;
    bool isColoured_ = true;
    Vector scale_;
    float amplitude_ = 1.0f;
    Vector colour1_;
    Vector colour2_;
    /// Metres per document unit.
    float unit_ = 1.0f;
};
