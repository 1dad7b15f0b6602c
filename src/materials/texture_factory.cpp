// SPDX-License-Identifier: MIT
#include "materials/texture_factory.h"

#include "host/general.h"
#include "host/ids.h"
#include "host/material.h"
#include "materials/file_names.h"
#include "scene/rotation.h"
#include "scene/tex_coord_generator.h"
#include "shared/export_context.h"
#include "shared/plugin_state.h"
#include "shared/temporary_file.h"
#include "shared/text.h"

#include <cstdio>

using Quenza::Ref;
using Quenza::Texture;

namespace {

const String PRESET_SCHEME = "preset://";

bool isPreset(const Filename& name) {
    return name.GetUtf8().starts_with(PRESET_SCHEME.GetUtf8());
}

/// The file part of what a preset becomes among the scene's textures.
Filename presetFile(const Filename& preset, const String& addition) {
    const String flat =
        replaceAll(replaceAll(replaceAll(preset.GetString(), "://", "_"), "/", "_"), "\\", "_");
    Filename stem(flat);
    const String suffix = stem.GetSuffix();
    constexpr int32_t LONGEST_SUFFIX = 8;
    if (!suffix.Content() || suffix.GetLength() > LONGEST_SUFFIX) {
        return Filename(legalFileName(flat + addition, ""));
    }
    stem.ClearSuffix();
    return Filename(legalFileName(stem.GetString() + addition, String(".") + suffix));
}

/// Two presets can have one flat name: "a/b_c" and "a_b/c". The second is told apart by its checksum.
Filename presetTarget(const Filename& preset, ExportContext& context) {
    const auto isFree = [&](const Filename& file) {
        return context.presetTextures.try_emplace(file.GetString().ToLower(), preset).first->second == preset;
    };
    Filename file = presetFile(preset, "");
    if (!isFree(file)) {
        const std::string& name = preset.GetUtf8();
        char addition[16];
        std::snprintf(addition, sizeof addition, "_%08x", CalcCRC32(name.data(), name.size(), 0));
        file = presetFile(preset, addition);
    }
    return context.textureDirectory + file;
}

/// In the folder that all exports share there may be a copy already that another export will delete.
Filename copyToTemporaryFile(const Filename& preset, ExportContext& context) {
    for (const auto& [file, copied] : context.presetTextures) {
        if (copied == preset) {
            return context.textureDirectory + Filename(file);
        }
    }
    Filename file = presetFile(preset, "");
    Claim claim = claimTemporaryFile(context.textureDirectory + file, context);
    for (int32_t number = 2; claim == Claim::TAKEN; ++number) {
        file = presetFile(preset, String("_") + LongToString(number));
        claim = claimTemporaryFile(context.textureDirectory + file, context);
    }
    const Filename target = context.textureDirectory + file;
    if (!GeFCopyFile(preset, target, true) && claim == Claim::MADE) {
        // The renderer shall say that there is no file, and not that it's damaged.
        GeFKill(target);
        context.extraFiles->pop_back();
    }
    context.presetTextures.emplace(file.GetString(), preset);
    return target;
}

/// Copies a preset to the scene's textures unless it's there. A failure is found by the renderer.
Filename copyPreset(const Filename& preset, ExportContext& context) {
    if (context.extraFiles) {
        return copyToTemporaryFile(preset, context);
    }
    const Filename target = presetTarget(preset, context);
    if (!GeFExist(target)) {
        GeFCopyFile(preset, target, false);
    }
    return target;
}

/// Empty when there is no such file.
Filename search(const Filename& name, const Filename& documentPath, const Filename& extraFolder) {
    if (name.GetString().SubStr(1, 1) == ":") {
        return name;
    }
    Filename found;
    if (!name.Content() || !GenerateTexturePath(documentPath, name, extraFolder, &found)) {
        return Filename();
    }
    return found.Content() ? found : name;
}

Filename findFile(const Filename& name, const ExportContext& context) {
    const Filename documentPath = context.document->GetDocumentPath();
    Filename found;
    if (context.isMaterialPreview) {
        const Filename* const folder = pluginState().pluginPath.get();
        found = search(name, documentPath, (folder ? *folder : Filename()) + "res" + "materialpreview");
    }
    return found.Content() ? found : search(name, documentPath, Filename());
}

Ref<Quenza::TexCoordGenerator> makeGenerator(bool isSpherical) {
    if (!isSpherical) {
        return new Quenza::UVTexCoordGenerator;
    }
    /// Turns the image's seam to where the host has it.
    constexpr double SEAM_ANGLE = 1.6;
    const Ref<Quenza::SphericalTexCoordGenerator> generator = new Quenza::SphericalTexCoordGenerator;
    generator->rotation = new Quenza::AxisRotation(Quenza::Vec3d{0.0, 0.0, 1.0}, SEAM_ANGLE);
    return generator;
}

} // namespace

Texture makeTextureFromLink(const BaseShader* bitmap, const TextureMapping& mapping, ExportContext& context) {
    if (!bitmap) {
        return Texture();
    }
    const Filename name = bitmap->GetDataInstance()->GetFilename(BITMAPSHADER_FILENAME);
    return makeTextureFromFile(isPreset(name) ? copyPreset(name, context) : findFile(name, context), mapping);
}

Texture makeTextureFromFile(const Filename& path, const TextureMapping& mapping) {
    Texture texture;
    texture.path = toSceneString(path);
    texture.a = double(mapping.a);
    texture.b = double(mapping.b);
    texture.c = double(mapping.c);
    texture.exponent = double(mapping.gamma);
    texture.tex_coord_generation = makeGenerator(mapping.spherical);
    texture.smooth = mapping.smooth;
    return texture;
}
