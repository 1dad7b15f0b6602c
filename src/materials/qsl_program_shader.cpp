// SPDX-License-Identifier: MIT
#include "materials/qsl_program_shader.h"

#include "materials/channels.h"
#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {

/// Stands for a program until the shader has a channel.
constexpr const char* NO_PROGRAM_YET = "default";

const char* programFor(const Channel* channel) {
    if (!channel) {
        return "unhandled channel";
    }
    switch (channel->family) {
    case ChannelFamily::WAVELENGTH_DEPENDENT:
        return "def eval(vec3 pos) vec3:\n\tvec3(0.8)";
    case ChannelFamily::WAVELENGTH_INDEPENDENT:
        return "def eval(vec3 pos) real:\n\t1.0";
    case ChannelFamily::DISPLACEMENT:
        return "def eval() real:\n\t0.0";
    case ChannelFamily::VEC3:
        return "def eval(vec3 pos) vec3 :\n\tvec3(0.0, 0.0, 1.0)";
    }
    return "unhandled channel";
}

/// The first channel of a material that links the shader, or null.
const Channel* channelWith(const BaseMaterial& material, const BaseList2D& shader) {
    const BaseContainer* const data = material.GetDataInstance();
    for (const Channel& entry : channels()) {
        if (data && data->GetLink(entry.shader, nullptr) == &shader) {
            return &entry;
        }
    }
    return nullptr;
}

} // namespace

bool QSLProgramShader::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    if (!data) {
        return false;
    }
    data->SetString(QSL_CODE, NO_PROGRAM_YET);
    return true;
}

bool QSLProgramShader::Message(BaseList2D* node, int32_t type, void* data) {
    BaseContainer* const own = node->GetDataInstance();
    const BaseMaterial* const material = static_cast<const BaseShader*>(node)->GetMaterial();
    if (own && material && material->IsInstanceOf(PLUGINID_MATERIAL) &&
        own->GetString(QSL_CODE) == NO_PROGRAM_YET) {
        own->SetString(QSL_CODE, programFor(channelWith(*material, *node)));
    }
    return ShaderData::Message(node, type, data);
}

bool QSLProgramShader::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_QSL_SHADER, flags);
}
