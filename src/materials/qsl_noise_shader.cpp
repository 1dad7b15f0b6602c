// SPDX-License-Identifier: MIT
#include "materials/qsl_noise_shader.h"

#include "shared/described_data.h"
#include "shared/export_context.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/scene_space.h"
#include "shared/scene_unit.h"

namespace {

/// Cells of the noise across the texture's square, at a scale of 1.
constexpr float UV_CELLS = 10.0f;

} // namespace

bool QSLNoiseShader::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    if (!data) {
        return false;
    }
    data->SetLong(QSLNOISE_TYPE, QSLNOISE_TYPE_NOISE);
    data->SetLong(QSLNOISE_MAPPING, QSLNOISE_MAPPING_UV);
    data->SetVector(QSLNOISE_SCALE, Vector(1.0f, 1.0f, 1.0f));
    data->SetReal(QSLNOISE_AMPLITUDE, 1.0f);
    data->SetLong(QSLNOISE_OUTPUT, QSLNOISE_OUTPUT_COLOUR);
    data->SetVector(QSLNOISE_COLOUR_1, Vector(1.0f, 1.0f, 1.0f));
    data->SetVector(QSLNOISE_COLOUR_2, Vector());
    return true;
}

bool QSLNoiseShader::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_QSL_NOISE, flags);
}

bool QSLNoiseShader::GetDEnabling(BaseList2D* node, const DescID& id) {
    if (id[0] != QSLNOISE_COLOUR_1 && id[0] != QSLNOISE_COLOUR_2) {
        return true;
    }
    const BaseContainer* const data = node->GetDataInstance();
    return data && data->GetLong(QSLNOISE_OUTPUT, QSLNOISE_OUTPUT_COLOUR) == QSLNOISE_OUTPUT_COLOUR;
}

bool QSLNoiseShader::read(const BaseShader* node) {
    const BaseContainer* const data = node ? node->GetDataInstance() : nullptr;
    if (!data) {
        return false;
    }
    isFbm_ = data->GetLong(QSLNOISE_TYPE, QSLNOISE_TYPE_NOISE) == QSLNOISE_TYPE_FBM;
    isInSpace_ = data->GetLong(QSLNOISE_MAPPING, QSLNOISE_MAPPING_UV) == QSLNOISE_MAPPING_POSITION;
    isColoured_ = data->GetLong(QSLNOISE_OUTPUT, QSLNOISE_OUTPUT_COLOUR) == QSLNOISE_OUTPUT_COLOUR;
    scale_ = data->GetVector(QSLNOISE_SCALE, Vector(1.0f, 1.0f, 1.0f));
    amplitude_ = data->GetReal(QSLNOISE_AMPLITUDE, 1.0f);
    colour1_ = data->GetVector(QSLNOISE_COLOUR_1, Vector(1.0f, 1.0f, 1.0f));
    colour2_ = data->GetVector(QSLNOISE_COLOUR_2);
    return true;
}

int32_t QSLNoiseShader::InitRender(BaseShader* shader, const InitRenderStruct& init) {
    if (!read(shader)) {
        return INITRENDERRESULT_UNKNOWNERROR;
    }
    unit_ = unitToMetres(init.document ? findVideoPost(init.document) : nullptr);
    return INITRENDERRESULT_OK;
}

NoisePoint QSLNoiseShader::pointOf(const ChannelData& channel) const {
    // A texture alone, as in a bake, has no place in space.
    if (isInSpace_ && channel.volume) {
        const Quenza::Vec3d place = toSceneSpaceDouble(channel.volume->p * unit_);
        const Quenza::Vec3d scale = toSceneSpaceDouble(scale_);
        return {place.x * scale.x, place.y * scale.y, place.z * scale.z};
    }
    return {double(channel.p.x * UV_CELLS * scale_.x), double((1.0f - channel.p.y) * UV_CELLS * scale_.y),
            double(channel.p.z * UV_CELLS * scale_.z)};
}

Vector QSLNoiseShader::Output(BaseShader* /*shader*/, const ChannelData& channel) {
    const NoisePoint point = pointOf(channel);
    const auto n = static_cast<float>(isFbm_ ? fractalNoise(point) : perlinNoise(point));
    if (isColoured_) {
        return mix(colour1_, colour2_, (n + 1.0f) * 0.5f) * amplitude_;
    }
    return Vector(n, n, n) * amplitude_;
}

const char* QSLNoiseShader::functionName() const {
    if (isFbm_) {
        return isColoured_ ? "fbm01" : "fbm";
    }
    return isColoured_ ? "noise01" : "noise";
}

String QSLNoiseShader::call() const {
    const String x = qslNumber(scale_.x);
    const String y = qslNumber(scale_.y);
    // The scene's Y is the host's Z.
    const String argument =
        isInSpace_ ? String("mulCompVec3(pos, vec3(") + x + ", " + qslNumber(scale_.z) + ", " + y + "))"
                   : String("mulCompVec2(getTexCoords(0) * 10.0, vec2(") + x + ", " + y + "))";
    return String(functionName()) + "(" + argument + (isFbm_ ? ",8)" : ")");
}

String QSLNoiseShader::getQSLExpression(BaseShader* node, int32_t valueType) {
    const bool isReal = valueType == QSL_REAL;
    if (!read(node)) {
        return isReal ? "1.0" : "Vector(1.0)";
    }
    String value = call();
    if (isColoured_) {
        value = String("lerp(") + qslColour(colour1_) + ", " + qslColour(colour2_) + ", " + value + ")";
        if (isReal) {
            value = String("Vec3ToReal(") + value + ")";
        }
    } else if (!isReal) {
        value = String("vec3(") + value + ")";
    }
    return String("(") + value + " * " + qslNumber(amplitude_) + ")";
}
