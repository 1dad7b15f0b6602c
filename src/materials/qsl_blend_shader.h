// SPDX-License-Identifier: MIT
#pragma once

#include "materials/qsl_blend_tree.h"

#include <vector>

/// Adds, subtracts or multiplies two shaders that can be written as expressions; others count as empty links,
/// and an empty link as white.
class QSLBlendShader : public QSLShaderData {
public:
    bool Init(BaseList2D* node) override;
    /// Every message goes to all that is blended.
    bool Message(BaseList2D* node, int32_t type, void* data) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    int32_t InitRender(BaseShader* shader, const InitRenderStruct& init) override;
    void FreeRender(BaseShader* shader) override;
    Vector Output(BaseShader* shader, const ChannelData& channel) override;
    String getQSLExpression(BaseShader* node, int32_t valueType) override;

private:
    QSLBlendTree tree_;
    /// Leaves of the tree that are prepared for sampling.
    std::vector<BaseShader*> ready_;
};
