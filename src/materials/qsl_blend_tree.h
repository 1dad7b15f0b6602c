// SPDX-License-Identifier: MIT
#pragma once

#include "materials/qsl_shader.h"

#include <string>
#include <vector>

/// What a Blend shader blends, with the Blends below it, written out as a tree. Documents can link shaders
/// any way they like: a Blend that meets itself again finds nothing there, and a tree ends at a depth and a
/// size that no artist reaches, so that neither text nor sampling grows without bound.
class QSLBlendTree {
public:
    /// Reads the tree below `root`, a Blend shader. False, and the tree is empty, without its container.
    bool build(BaseShader* root);
    bool isEmpty() const { return nodes_.empty(); }

    /// The shaders at the ends of the tree, each once.
    std::vector<BaseShader*> leaves() const;
    /// The colour at a place; the leaves must be prepared for sampling.
    Vector sample(const ChannelData& channel) const;
    /// The expression of the whole tree.
    String expression(int32_t valueType) const;

private:
    struct Node {
        /// Null for a Blend.
        BaseShader* leaf = nullptr;
        int32_t operation = 0;
        float multiplier = 1.0f;
        // Indices of what a Blend blends; NOTHING for an empty link.
        int32_t a = NOTHING;
        int32_t b = NOTHING;
    };
    static constexpr int32_t NOTHING = -1;

    int32_t add(BaseShader* shader);
    int32_t addChild(const BaseShader& blend, int32_t link);
    Vector sampleNode(int32_t index, const ChannelData& channel) const;
    void appendExpression(int32_t index, int32_t valueType, std::string& text) const;

    /// The root is the first.
    std::vector<Node> nodes_;
    /// Blends above the one that is being read.
    std::vector<const BaseShader*> path_;
};
