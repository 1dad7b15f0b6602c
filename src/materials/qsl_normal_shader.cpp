// SPDX-License-Identifier: MIT
#include "materials/qsl_normal_shader.h"

#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <cmath>

bool QSLNormalShader::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    if (!data) {
        return false;
    }
    data->SetVector(QSLNORMAL_COLOUR_1, Vector(1.0f, 1.0f, 1.0f));
    data->SetVector(QSLNORMAL_COLOUR_2, Vector());
    return true;
}

bool QSLNormalShader::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_QSL_NORMAL, flags);
}

bool QSLNormalShader::read(const BaseShader* node) {
    const BaseContainer* const data = node ? node->GetDataInstance() : nullptr;
    if (!data) {
        return false;
    }
    colour1_ = data->GetVector(QSLNORMAL_COLOUR_1, Vector(1.0f, 1.0f, 1.0f));
    colour2_ = data->GetVector(QSLNORMAL_COLOUR_2);
    return true;
}

int32_t QSLNormalShader::InitRender(BaseShader* shader, const InitRenderStruct& /*init*/) {
    return read(shader) ? INITRENDERRESULT_OK : INITRENDERRESULT_UNKNOWNERROR;
}

Vector QSLNormalShader::Output(BaseShader* /*shader*/, const ChannelData& channel) {
    const bool hasRay = channel.volume && channel.volume->ray;
    const float cosine = hasRay ? Dot(channel.volume->ray->v, channel.volume->n) : Dot(channel.d, channel.d);
    return mix(colour1_, colour2_, std::abs(cosine));
}

String QSLNormalShader::getQSLExpression(BaseShader* node, int32_t valueType) {
    const bool isReal = valueType == QSL_REAL;
    if (!read(node)) {
        return isReal ? "(1.0)" : "Vector(1.0)";
    }
    const String value =
        String("lerp(") + qslColour(colour1_) + ", " + qslColour(colour2_) + ", minCosTheta())";
    return isReal ? String("Vec3ToReal(") + value + ")" : value;
}
