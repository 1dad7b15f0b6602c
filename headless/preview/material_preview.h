// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image.h"
#include "headless/model/document.h"
#include "headless/preview/preview_scenes.h"

namespace headless {

class Host;

struct PreviewSize {
    int32_t width = 256;
    int32_t height = 256;
};

/// True when a material makes its previews itself.
bool makesPreviews(Material& material);

/// Has a material of a plug-in make its preview on a copy of `scene`, as the material manager does: on a
/// thread of its own, while the main thread answers calls. Main thread. Gives a RenderResult:
/// RENDERRESULT_NOMACHINE when the material refuses, RENDERRESULT_USERBREAK after Ctrl-C. The image is black
/// unless something was rendered. Throws HostError when the material can't be brought onto the scene.
int32_t renderPreview(Host& host, Material& material, PreviewScene& scene, const PreviewSize& size,
                      Image& image);

} // namespace headless
