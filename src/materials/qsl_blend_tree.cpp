// SPDX-License-Identifier: MIT
#include "materials/qsl_blend_tree.h"

#include "host/ids.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <algorithm>
#include <unordered_set>

namespace {

constexpr size_t MAX_DEPTH = 200;
constexpr size_t MAX_NODES = 4096;

Vector multiply(const Vector& a, const Vector& b) {
    return {a.x * b.x, a.y * b.y, a.z * b.z};
}

const char* operatorText(int32_t operation) {
    switch (operation) {
    case QSLBLEND_SUBTRACT:
        return " - ";
    case QSLBLEND_MULTIPLY:
        return " * ";
    default:
        return " + ";
    }
}

} // namespace

bool QSLBlendTree::build(BaseShader* root) {
    nodes_.clear();
    path_.clear();
    return root && add(root) != NOTHING;
}

int32_t QSLBlendTree::add(BaseShader* shader) {
    if (nodes_.size() >= MAX_NODES) {
        return NOTHING;
    }
    const auto index = static_cast<int32_t>(nodes_.size());
    if (!shader->IsInstanceOf(PLUGINID_QSL_BLEND)) {
        nodes_.push_back({.leaf = shader});
        return index;
    }
    const BaseContainer* const data = shader->GetDataInstance();
    if (!data || path_.size() >= MAX_DEPTH || std::ranges::find(path_, shader) != path_.end()) {
        return NOTHING;
    }
    Node node;
    node.operation = data->GetLong(QSLBLEND_OPERATION, QSLBLEND_MULTIPLY);
    node.multiplier = data->GetReal(QSLBLEND_MULTIPLIER, 1.0f);
    nodes_.push_back(node);
    path_.push_back(shader);
    const int32_t a = addChild(*shader, QSLBLEND_A);
    const int32_t b = addChild(*shader, QSLBLEND_B);
    path_.pop_back();
    nodes_[static_cast<size_t>(index)].a = a;
    nodes_[static_cast<size_t>(index)].b = b;
    return index;
}

int32_t QSLBlendTree::addChild(const BaseShader& blend, int32_t link) {
    auto* const child =
        static_cast<BaseShader*>(blend.GetDataInstance()->GetLink(link, blend.GetDocument(), Xbase));
    return findQSLShader(child) ? add(child) : NOTHING;
}

std::vector<BaseShader*> QSLBlendTree::leaves() const {
    std::vector<BaseShader*> found;
    std::unordered_set<const BaseShader*> seen;
    for (const Node& node : nodes_) {
        if (node.leaf && seen.insert(node.leaf).second) {
            found.push_back(node.leaf);
        }
    }
    return found;
}

Vector QSLBlendTree::sample(const ChannelData& channel) const {
    return sampleNode(nodes_.empty() ? NOTHING : 0, channel);
}

Vector QSLBlendTree::sampleNode(int32_t index, const ChannelData& channel) const {
    if (index == NOTHING) {
        return {1.0f, 1.0f, 1.0f};
    }
    const Node& node = nodes_[static_cast<size_t>(index)];
    if (node.leaf) {
        return node.leaf->Sample(channel);
    }
    const Vector a = sampleNode(node.a, channel);
    const Vector b = sampleNode(node.b, channel);
    switch (node.operation) {
    case QSLBLEND_SUBTRACT:
        return (a - b) * node.multiplier;
    case QSLBLEND_MULTIPLY:
        return multiply(a, b) * node.multiplier;
    default:
        return (a + b) * node.multiplier;
    }
}

String QSLBlendTree::expression(int32_t valueType) const {
    std::string text;
    appendExpression(nodes_.empty() ? NOTHING : 0, valueType, text);
    return String(text);
}

void QSLBlendTree::appendExpression(int32_t index, int32_t valueType, std::string& text) const {
    const bool isReal = valueType == QSL_REAL;
    if (index == NOTHING) {
        text += isReal ? "1.0" : "vec3(1.0)";
        return;
    }
    const Node& node = nodes_[static_cast<size_t>(index)];
    if (node.leaf) {
        text += findQSLShader(node.leaf)->getQSLExpression(node.leaf, valueType).GetUtf8();
        return;
    }
    // The language multiplies vectors by a function. A sum of vectors has no brackets: the multiplier acts on
    // its second part alone, and saved scenes count on it.
    const bool isCall = !isReal && node.operation == QSLBLEND_MULTIPLY;
    text += isCall ? "mulCompVec3(" : isReal ? "(" : "";
    appendExpression(node.a, valueType, text);
    text += isCall ? ", " : operatorText(node.operation);
    appendExpression(node.b, valueType, text);
    text += isCall || isReal ? ")" : "";
    text += " * " + qslNumber(node.multiplier).GetUtf8();
}
