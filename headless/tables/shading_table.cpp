// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include <exception>

#include "headless/bake/bake.h"
#include "headless/model/handles.h"
#include "headless/runtime/thread.h"
#include "headless/shaders/shader_sampling.h"
#include "headless/shaders/surface_light.h"

namespace headless {

namespace {

int32_t beginRender(BaseShader* shader, const InitRenderStruct& init) {
    return initRender(*fromHost(shader), init);
}

void endRender(BaseShader* shader) {
    freeRender(*fromHost(shader));
}

Vector sampleShader(BaseShader* shader, const ChannelData& channel) {
    return sample(*fromHost(shader), channel);
}

/// There is no scene that a mirror could show.
Vector traceColor(VolumeData*, const ShadingRay&, float) {
    return {};
}

void illumSurfacePoint(VolumeData* volume, Vector* diffuse, Vector* highlights) {
    lightFromViewer(*volume, diffuse, highlights);
}

BaseDocument* initBakeTexture(BaseDocument* document, ::TextureTag* texture, ::UVWTag* uvw,
                              const BaseContainer&, int32_t* error, BaseThread*) {
    int32_t result = BAKE_TEX_ERR_NO_DOC;
    std::unique_ptr<BakeDocument> made;
    if (document) {
        made = makeBakeDocument(*fromHost(document), texture ? fromHost(texture) : nullptr,
                                uvw ? fromHost(uvw) : nullptr, result);
    }
    if (error) {
        *error = result;
    }
    return made ? toHost(static_cast<const Document*>(made.release())) : nullptr;
}

int32_t bake(BaseDocument* bakeDocument, const BaseContainer& settings, BaseBitmap* bitmap,
             BaseThread* baseThread) {
    auto* const document = bakeDocument ? dynamic_cast<BakeDocument*>(fromHost(bakeDocument)) : nullptr;
    if (!document) {
        return BAKE_TEX_ERR_NO_RENDER_DOC;
    }
    if (!bitmap) {
        return BAKE_TEX_ERR_NO_BITMAP;
    }
    try {
        return bakeTexture(*document, settings, *fromHost(bitmap),
                           [baseThread] { return baseThread && baseThread->TestBreak(); });
    } catch (const std::exception&) {
        return BAKE_TEX_ERR_NO_MEM;
    }
}

} // namespace

const ShadingTable* shadingTable() {
    static constexpr ShadingTable table = {
        .InitRender = beginRender,
        .FreeRender = endRender,
        .Sample = sampleShader,
        .TraceColor = traceColor,
        .IllumSurfacePoint = illumSurfacePoint,
        .InitBakeTexture = initBakeTexture,
        .BakeTexture = bake,
    };
    return &table;
}

} // namespace headless
