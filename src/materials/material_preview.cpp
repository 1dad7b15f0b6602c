// SPDX-License-Identifier: MIT
#include "materials/material_preview.h"

#include "host/ids.h"
#include "host/tag.h"
#include "host/videopost.h"
#include "materials/preview_clones.h"
#include "materials/preview_scene.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <algorithm>
#include <iterator>

namespace {

/// The host's own renderer, for drafts.
constexpr int32_t HOST_ENGINE = 1;

struct Quality {
    int32_t value;
    float samplesPerPixel;
};
constexpr Quality QUALITIES[] = {
    {MAT_PREVIEW_LOW, 24.0f},
    {MAT_PREVIEW_MEDIUM, 48.0f},
    {MAT_PREVIEW_HIGH, 96.0f},
    {MAT_PREVIEW_VERY_HIGH, 192.0f},
};
constexpr float OTHER_SAMPLES_PER_PIXEL = 48.0f;

int32_t qualityOf(const BaseMaterial& material) {
    return material.GetDataInstance()->GetLong(MAT_PREVIEW_QUALITY, MAT_PREVIEW_MEDIUM);
}

float samplesPerPixel(const BaseMaterial& material) {
    const Quality* const found = std::ranges::find(QUALITIES, qualityOf(material), &Quality::value);
    return found != std::end(QUALITIES) ? found->samplesPerPixel : OTHER_SAMPLES_PER_PIXEL;
}

/// A blend of less than two materials has no look of its own.
bool isWhole(const BaseMaterial& material) {
    const BaseContainer& data = *material.GetDataInstance();
    const auto isSet = [&](int32_t link) {
        return data.GetLink(link, material.GetDocument(), Mbase) != nullptr;
    };
    return data.GetLong(MAT_KIND, MAT_KIND_DIFFUSE) != MAT_KIND_BLEND ||
           (isSet(MAT_BLEND_MATERIAL_A) && isSet(MAT_BLEND_MATERIAL_B));
}

bool describe(MatPreviewObjectInfo& record) {
    record.handlesPreview = 1;
    record.needsOwnScene = 1;
    record.flags = 4;
    return true;
}

void wear(const BaseObject& object, BaseMaterial& clone) {
    if (BaseTag* const tag = object.GetTag(Ttexture)) {
        static_cast<TextureTag*>(tag)->SetMaterial(&clone);
    }
}

bool prepare(const BaseMaterial& material, MatPreviewPrepareScene& record) {
    BaseDocument* const stage = record.previewDocument;
    if (!stage) {
        return false;
    }
    if (record.sourceDocument) {
        // So that textures are found as in the source.
        stage->SetDocumentPath(record.sourceDocument->GetDocumentPath());
    }
    BaseMaterial* const clone = cloneIntoPreview(material, *stage);
    BaseObject* const object = findPreviewObject(*stage, PREVIEW_OBJECT);
    if (object && record.sourceObject && !(record.matrix == Matrix())) {
        record.sourceObject->SetMg(record.matrix);
    }
    if (!clone) {
        return false;
    }
    record.material = clone;
    if (object) {
        wear(*object, *clone);
    }
    record.sceneLoaded = 1;
    return true;
}

} // namespace

bool MaterialPreview::isMessage(int32_t type) {
    return type == MATPREVIEW_GET_OBJECT_INFO || type == MATPREVIEW_PREPARE_SCENE ||
           type == MATPREVIEW_MODIFY_CACHE_SCENE || type == MATPREVIEW_GENERATE_IMAGE;
}

bool MaterialPreview::answer(const BaseMaterial& material, int32_t type, void* data) {
    if (!data) {
        return false;
    }
    switch (type) {
    case MATPREVIEW_GET_OBJECT_INFO:
        return describe(*static_cast<MatPreviewObjectInfo*>(data));
    case MATPREVIEW_PREPARE_SCENE:
        return prepare(material, *static_cast<MatPreviewPrepareScene*>(data));
    case MATPREVIEW_MODIFY_CACHE_SCENE: {
        BaseDocument* const stage = static_cast<const MatPreviewModifyCacheScene*>(data)->previewDocument;
        if (stage) {
            setUpPreviewScene(*stage);
        }
        return stage != nullptr;
    }
    case MATPREVIEW_GENERATE_IMAGE:
        return generate(material, *static_cast<MatPreviewGenerateImage*>(data));
    default:
        return false;
    }
}

bool MaterialPreview::generate(const BaseMaterial& material, MatPreviewGenerateImage& record) {
    if (failed_) {
        return false;
    }
    BaseDocument* const stage = record.previewDocument;
    if (!stage || !record.bitmap || record.abort) {
        return true;
    }
    BaseVideoPost* const videoPost = findPreviewSettings(*stage);
    if (!videoPost || !isWhole(material) || qualityOf(material) == MAT_PREVIEW_NONE) {
        record.result = RENDERRESULT_NOMACHINE;
        failed_ = true;
        return true;
    }
    videoPost->GetDataInstance()->SetReal(RS_HALT_SPP, samplesPerPixel(material));
    BaseContainer& settings = *stage->GetActiveRenderData()->GetDataInstance();
    settings.SetLong(RDATA_RENDERENGINE, record.draft ? HOST_ENGINE : PLUGINID_RENDER_SETTINGS);
    settings.SetLong(RDATA_XRES, record.bitmap->GetBw());
    settings.SetLong(RDATA_YRES, record.bitmap->GetBh());
    settings.SetLong(RDATA_FRAMEADVANCE, 1);
    record.result = RenderDocument(stage, settings, record.bitmap,
                                   RENDERFLAGS_EXTERNAL | RENDERFLAGS_PREVIEWRENDER, record.thread);
    failed_ = record.result == RENDERRESULT_NOMACHINE;
    return true;
}
