// SPDX-License-Identifier: MIT
#include "sdk/render_buffer.h"

#include "foundation/exceptions.h"
#include "scene/scene_node_render_settings.h"

#include <algorithm>

namespace Quenza {

namespace {

const SceneNodeRenderSettings& settingsOf(const SceneNodeRoot& root) {
    const auto* const settings =
        dynamic_cast<const SceneNodeRenderSettings*>(root.getRenderSettingsPointer());
    if (!settings)
        throw QuenzaException("No renderer settings node in scene.");
    return *settings;
}

u32 positive(const SceneNodeRenderSettings& settings, const char* key) {
    const i32 value = settings.getInt(key);
    if (value <= 0)
        throw QuenzaException("The image has no pixels.");
    return u32(value);
}

} // namespace

RenderBuffer::RenderBuffer(const SceneNodeRoot& root)
    : RenderBuffer(positive(settingsOf(root), "width"), positive(settingsOf(root), "height"),
                   u32(std::max<u64>(1, settingsOf(root).getNumLayers()))) {}

RenderBuffer::RenderBuffer(u32 width, u32 height, u32 num_layers) : width_(width), height_(height) {
    for (u32 layer = 0; layer < num_layers; ++layer)
        layers.push_back(Image(width, height));
}

} // namespace Quenza
