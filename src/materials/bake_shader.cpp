// SPDX-License-Identifier: MIT
#include "materials/bake_shader.h"

#include "host/bake.h"
#include "host/ids.h"
#include "host/material.h"
#include "host/object.h"
#include "host/tag.h"
#include "materials/bake_memory.h"
#include "shared/export_context.h"
#include "shared/parameter_ids.h"

#include <cmath>

namespace {

struct ImageSize {
    int32_t width;
    int32_t height;
};

/// Previews stay near a quarter of a megapixel.
constexpr double PREVIEW_PIXELS = 262144.0;

ImageSize bakeSize(const BaseContainer& material, bool isPreview) {
    const ImageSize size{material.GetLong(MAT_BAKE_WIDTH), material.GetLong(MAT_BAKE_HEIGHT)};
    const double pixels = double(size.width) * double(size.height);
    if (!isPreview || pixels <= PREVIEW_PIXELS) {
        return size;
    }
    const double scale = std::sqrt(PREVIEW_PIXELS / pixels);
    return {static_cast<int32_t>(size.width * scale), static_cast<int32_t>(size.height * scale)};
}

/// A document that shows `shader` on a plane; `tag` becomes the plane's texture tag. Null when the host has
/// no memory.
OwnedDocument makeStage(const BaseShader& shader, BaseDocument& source, TextureTag*& tag) {
    OwnedDocument stage(BaseDocument::Alloc());
    if (!stage) {
        return nullptr;
    }
    // Textures that the shader names are looked for beside the document, and its look may change in time.
    stage->SetDocumentPath(source.GetDocumentPath());
    stage->SetFps(source.GetFps());
    stage->SetTime(source.GetTime());
    if (const RenderData* const settings = source.GetActiveRenderData()) {
        if (auto* const copy = static_cast<RenderData*>(settings->GetClone())) {
            stage->InsertRenderData(copy);
        }
    }
    BaseObject* const plane = BaseObject::Alloc(Oplane);
    if (!plane) {
        return nullptr;
    }
    stage->InsertObject(plane);
    BaseMaterial* const material = BaseMaterial::Alloc(Mmaterial);
    if (!material) {
        return nullptr;
    }
    stage->InsertMaterial(material);
    auto* const copy = static_cast<BaseShader*>(shader.GetClone());
    tag = static_cast<TextureTag*>(plane->MakeTag(Ttexture));
    if (!copy || !tag) {
        BaseShader* unused = copy;
        BaseShader::Free(unused);
        return nullptr;
    }
    material->InsertShader(copy);
    material->GetDataInstance()->SetLink(MATERIAL_COLOR_SHADER, copy);
    tag->SetMaterial(material);
    tag->GetDataInstance()->SetLong(TEXTURETAG_PROJECTION, P_UVW);
    return stage;
}

BaseContainer bakeSettings(ImageSize size) {
    BaseContainer settings;
    settings.SetBool(BAKE_TEX_COLOR, true);
    settings.SetBool(BAKE_TEX_AMBIENT_OCCLUSION, false);
    settings.SetBool(BAKE_TEX_SURFACECOLOR, false);
    settings.SetLong(BAKE_TEX_WIDTH, size.width);
    settings.SetLong(BAKE_TEX_HEIGHT, size.height);
    settings.SetReal(BAKE_TEX_UV_LEFT, 0.0f);
    settings.SetReal(BAKE_TEX_UV_RIGHT, 1.0f);
    settings.SetReal(BAKE_TEX_UV_TOP, 0.0f);
    settings.SetReal(BAKE_TEX_UV_BOTTOM, 1.0f);
    return settings;
}

bool renderShader(const BaseShader& shader, BaseDocument& source, ImageSize size, BaseBitmap& image) {
    TextureTag* tag = nullptr;
    const OwnedDocument stage = makeStage(shader, source, tag);
    if (!stage) {
        return false;
    }
    const BaseContainer settings = bakeSettings(size);
    int32_t error = BAKE_TEX_ERR_NONE;
    const OwnedDocument bake(InitBakeTexture(stage.get(), tag, nullptr, settings, &error));
    return bake && error == BAKE_TEX_ERR_NONE &&
           BakeTexture(bake.get(), settings, &image) == BAKE_TEX_ERR_NONE;
}

} // namespace

bool bakeShaderToFile(BaseShader* shader, const Filename& file, const BaseContainer* material,
                      int32_t saveFlags, ExportContext& context) {
    if (!shader || !material || !context.document) {
        return false;
    }
    const ImageSize size = bakeSize(*material, context.isMaterialPreview);
    const OwnedBitmap image(MultipassBitmap::AllocWrapper(size.width, size.height, COLORMODE_RGB));
    if (!image || !renderShader(*shader, *context.document, size, *image)) {
        return false;
    }
    return saveAsJpeg(*image, file, saveFlags);
}
