// SPDX-License-Identifier: MIT
#include "headless/documents/part_readers.h"

namespace headless {

namespace {

/// Puts a shader behind the others of a list and gives it back.
using InsertShader = std::function<Shader&(std::unique_ptr<Shader>)>;

void readShaders(const JsonCursor& shaders, int depth, DocumentReading& reading, const InsertShader& insert) {
    if (depth > MAX_NESTING) {
        shaders.fail("shaders are nested too deep");
    }
    for (size_t i = 0, count = shaders.arraySize(); i < count; ++i) {
        const JsonCursor cursor = shaders.at(i);
        cursor.expectKeys({"type", "id", "name", "layer", "parameters", "tracks", "shaders"});
        const NodeTypeInfo& type = readType(cursor.at("type"), NodeKind::shader, "shader");
        Shader& shader = insert(createShader(type.id));
        readCommon(cursor, shader, reading);
        if (const auto inner = cursor.find("shaders")) {
            readShaders(*inner, depth + 1, reading, [&shader](std::unique_ptr<Shader> made) -> Shader& {
                return shader.insertChild(std::move(made), shader.children().last());
            });
        }
    }
}

void readMaterial(const JsonCursor& cursor, DocumentReading& reading) {
    cursor.expectKeys({"type", "id", "name", "layer", "parameters", "tracks", "shaders"});
    const auto type = cursor.find("type");
    Material& material = reading.document.appendMaterial(
        createMaterial(type ? readType(*type, NodeKind::material, "material").id : int32_t{Mmaterial}));
    if (const auto shaders = cursor.find("shaders")) {
        readShaders(*shaders, 1, reading, [&material](std::unique_ptr<Shader> made) -> Shader& {
            return material.insertShader(std::move(made), material.shaders().last());
        });
    }
    readCommon(cursor, material, reading);
    // As when an artist looks at the page: a plug-in's material settles what follows from its parameters.
    material.message(MSG_DESCRIPTION_VALIDATE, nullptr);
}

} // namespace

void readMaterials(const JsonCursor& materials, DocumentReading& reading) {
    for (size_t i = 0, count = materials.arraySize(); i < count; ++i) {
        readMaterial(materials.at(i), reading);
    }
}

} // namespace headless
