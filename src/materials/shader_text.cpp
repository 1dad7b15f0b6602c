// SPDX-License-Identifier: MIT
#include "materials/shader_text.h"

#include "host/material.h"
#include "materials/file_names.h"
#include "materials/qsl_shader.h"
#include "materials/texture_factory.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/text.h"

using Quenza::Ref;
using Quenza::ShaderInfo;
using Quenza::Texture;

namespace {

/// Helpers of the language for what the plug-in's shaders write.
constexpr const char* PRELUDE =
    "def Vec3ToReal(vec3 v) real : ((doti(v) + dotj(v) + dotk(v)) / 3.0)\n"
    "def mulCompVec2(vec2 a, vec2 b) vec2 : vec2(doti(a) * doti(b), dotj(a) * dotj(b))\n"
    "def mulCompVec3(vec3 a, vec3 b) vec3 : vec3(doti(a) * doti(b), dotj(a) * dotj(b), dotk(a) * dotk(b))\n";

/// An image of a program text shader, and what stands for its index in the text.
struct ProgramImage {
    int32_t file;
    const char* marker;
};
constexpr ProgramImage PROGRAM_IMAGES[] = {
    {QSL_TEXTURE_1, "$tex01$"}, {QSL_TEXTURE_2, "$tex02$"}, {QSL_TEXTURE_3, "$tex03$"}};

/// The artist's text is the whole program.
String programText(const BaseContainer& data, Quenza::Vector<Texture>& textures) {
    String text = data.GetString(QSL_CODE, "no shader");
    for (const ProgramImage& image : PROGRAM_IMAGES) {
        const Filename file = data.GetFilename(image.file);
        if (file.Content()) {
            text = replaceAll(text, image.marker, LongToString(static_cast<int64_t>(textures.size())));
            textures.push_back(makeTextureFromFile(file, TextureMapping()));
        }
    }
    return text;
}

String expressionText(BaseShader* shader, const char* header, QSLValueType valueType) {
    QSLShaderData* const expression = findQSLShader(shader);
    return String(PRELUDE) + header + (expression ? expression->getQSLExpression(shader, valueType) : "");
}

} // namespace

Ref<ShaderInfo> makeShaderInfo(BaseShader* shader, Quenza::Vector<Texture>& textures, const char* header,
                               QSLValueType valueType) {
    if (!shader) {
        return nullptr;
    }
    const String text = shader->IsInstanceOf(PLUGINID_QSL_SHADER)
                            ? programText(*shader->GetDataInstance(), textures)
                            : expressionText(shader, header, valueType);
    return new ShaderInfo(toSceneString(text));
}
