// SPDX-License-Identifier: MIT
#include "materials/qsl_gradient_shader.h"

#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

bool QSLGradientShader::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    if (!data) {
        return false;
    }
    data->SetReal(QSLGRADIENT_MULTIPLIER, 1.0f);
    data->SetLong(QSLGRADIENT_DIRECTION, QSLGRADIENT_U);
    data->SetVector(QSLGRADIENT_COLOUR_1, Vector(1.0f, 1.0f, 1.0f));
    data->SetVector(QSLGRADIENT_COLOUR_2, Vector());
    return true;
}

bool QSLGradientShader::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_QSL_GRADIENT, flags);
}

bool QSLGradientShader::read(const BaseShader* node) {
    const BaseContainer* const data = node ? node->GetDataInstance() : nullptr;
    if (!data) {
        return false;
    }
    multiplier_ = data->GetReal(QSLGRADIENT_MULTIPLIER, 1.0f);
    direction_ = data->GetLong(QSLGRADIENT_DIRECTION, QSLGRADIENT_U);
    colour1_ = data->GetVector(QSLGRADIENT_COLOUR_1, Vector(1.0f, 1.0f, 1.0f));
    colour2_ = data->GetVector(QSLGRADIENT_COLOUR_2);
    return true;
}

int32_t QSLGradientShader::InitRender(BaseShader* shader, const InitRenderStruct& /*init*/) {
    return read(shader) ? INITRENDERRESULT_OK : INITRENDERRESULT_UNKNOWNERROR;
}

Vector QSLGradientShader::Output(BaseShader* /*shader*/, const ChannelData& channel) {
    const Vector& place = channel.p;
    float t = place.x;
    if (direction_ == QSLGRADIENT_V) {
        t = place.y;
    } else if (direction_ == QSLGRADIENT_RADIAL) {
        t = 2.0f * Vector(0.5f - place.x, 0.5f - place.y, place.z).GetLength();
    }
    return mix(colour1_, colour2_, t) * multiplier_;
}

String QSLGradientShader::getQSLExpression(BaseShader* node, int32_t valueType) {
    const bool isReal = valueType == QSL_REAL;
    if (!read(node)) {
        return isReal ? "1.0" : "Vector(1.0)";
    }
    String value = String("lerp(") + qslColour(colour1_) + ", " + qslColour(colour2_);
    if (direction_ == QSLGRADIENT_V) {
        value += ", dotj(getTexCoords(0)))";
    } else if (direction_ == QSLGRADIENT_RADIAL) {
        value += ", length(vec2(0.5,0.5) - getTexCoords(0)) * 2.0 )";
    } else {
        value += ", doti(getTexCoords(0)))";
    }
    if (isReal) {
        value = String("Vec3ToReal(") + value + ")";
    }
    return value + " * " + qslNumber(multiplier_);
}
