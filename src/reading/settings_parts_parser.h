// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/render_settings_parts.h"

class TiXmlElement;

namespace Quenza {

/// Readers of the parts of `renderer_settings` that are no rows of its table. They throw
/// SceneParseUtilsExcep.

/// A `render_region`; all four of its children are required.
Ref<RenderRegion> parseRenderRegion(const TiXmlElement& element);
/// A `layer_setting`.
Ref<LayerSetting> parseLayerSetting(const TiXmlElement& element);
/// A `selected_gpu_device`. A `subsystem` of any text but "CUDA" means OpenCL.
Ref<GPUDeviceSettings> parseGPUDevice(const TiXmlElement& element);

} // namespace Quenza
