// SPDX-License-Identifier: MIT
#include "materials/qsl_blend_shader.h"

#include "host/ids.h"
#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <unordered_set>
#include <vector>

bool QSLBlendShader::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    if (!data) {
        return false;
    }
    data->SetLong(QSLBLEND_OPERATION, QSLBLEND_MULTIPLY);
    data->SetReal(QSLBLEND_MULTIPLIER, 1.0f);
    return true;
}

bool QSLBlendShader::Message(BaseList2D* node, int32_t type, void* data) {
    // Blends below only pass messages on. They are walked here, each once however they are linked, so that a
    // message ends.
    std::unordered_set<const BaseList2D*> seen{node};
    std::vector<const BaseList2D*> waiting{node};
    while (!waiting.empty()) {
        const BaseList2D* const blend = waiting.back();
        waiting.pop_back();
        const BaseContainer* const links = blend->GetDataInstance();
        for (const int32_t link : {QSLBLEND_A, QSLBLEND_B}) {
            BaseList2D* const child = links ? links->GetLink(link, blend->GetDocument(), Xbase) : nullptr;
            if (!child || !seen.insert(child).second) {
                continue;
            }
            if (child->IsInstanceOf(PLUGINID_QSL_BLEND)) {
                waiting.push_back(child);
            } else {
                child->Message(type, data);
            }
        }
    }
    return QSLShaderData::Message(node, type, data);
}

bool QSLBlendShader::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_QSL_BLEND, flags);
}

int32_t QSLBlendShader::InitRender(BaseShader* shader, const InitRenderStruct& init) {
    FreeRender(shader);
    if (!tree_.build(shader)) {
        return INITRENDERRESULT_UNKNOWNERROR;
    }
    for (BaseShader* const leaf : tree_.leaves()) {
        const int32_t result = leaf->InitRender(init);
        if (result != INITRENDERRESULT_OK) {
            FreeRender(shader);
            return result;
        }
        ready_.push_back(leaf);
    }
    return INITRENDERRESULT_OK;
}

void QSLBlendShader::FreeRender(BaseShader* /*shader*/) {
    for (BaseShader* const leaf : ready_) {
        leaf->FreeRender();
    }
    ready_.clear();
    tree_ = QSLBlendTree();
}

Vector QSLBlendShader::Output(BaseShader* /*shader*/, const ChannelData& channel) {
    return tree_.sample(channel);
}

String QSLBlendShader::getQSLExpression(BaseShader* node, int32_t valueType) {
    QSLBlendTree tree;
    tree.build(node);
    return tree.expression(valueType);
}
