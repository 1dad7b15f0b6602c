// SPDX-License-Identifier: MIT
#pragma once

#include "host/preview.h"

/// A material's answers to the host's messages about its preview: it is rendered by the plug-in's own video
/// post, on a copy of a stage that holds clones of the material and its parts. The host calls from its
/// preview thread, for one material one message at a time.
class MaterialPreview {
public:
    static bool isMessage(int32_t type);

    /// The message's result; `data` is its record. False for null.
    bool answer(const BaseMaterial& material, int32_t type, void* data);

private:
    bool generate(const BaseMaterial& material, MatPreviewGenerateImage& record);

    /// There is no renderer for the material, or nothing to render: not asked again as long as the material
    /// lives.
    bool failed_ = false;
};
