// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"
#include "materials/material_preview.h"
#include "materials/material_shading.h"

#include <atomic>

/// The plug-in's material: a kind, channels and a medium, all in the container of its node.
class QuenzaMaterial : public MaterialData {
public:
    bool Init(BaseList2D* node) override;
    /// Also passes every message to the shaders of the channels.
    bool Message(BaseList2D* node, int32_t type, void* data) override;
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;

    int32_t InitRender(BaseMaterial* material, const InitRenderStruct& init) override;
    void FreeRender(BaseMaterial* material) override;
    void CalcSurface(BaseMaterial* material, VolumeData* volume) override;
    void CalcTransparency(BaseMaterial* material, VolumeData* volume) override;
    /// The albedo, flat or as its shader gives it.
    bool InitGLImage(BaseMaterial* material, BaseDocument* document, BaseThread* thread,
                     BaseBitmap* bitmap) override;

    /// Grows whenever the look of the material may have changed: what was drawn of it at another count is
    /// out of date. Any thread.
    int32_t invalidations() const { return invalidations_; }

private:
    MaterialShading shading_;
    MaterialPreview preview_;
    std::atomic<int32_t> invalidations_{0};
};
