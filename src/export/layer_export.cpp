// SPDX-License-Identifier: MIT
#include "export/layer_export.h"

#include "export/scene_exporter.h"
#include "scene/scene_node_render_settings.h"
#include "shared/parameter_ids.h"
#include "shared/text.h"

namespace {

/// Layers of the user have the keys 0 to 9; those of sun and sky are below.
constexpr int32_t USER_LAYERS = 10;

String layerName(const BaseContainer* renderSettings, int32_t key) {
    const String name = String("Layer ") + LongToString(key + 1);
    if (!renderSettings) {
        return name;
    }
    const String custom = renderSettings->GetString(RS_LAYER_NAME_1 + key, name);
    return custom == name ? name : name + ": " + custom;
}

} // namespace

void exportLayers(SceneExporter& exporter) {
    const ExportContext& context = *exporter.context;
    auto& layers = exporter.layerSettings;
    for (int32_t key = 0; key < USER_LAYERS; ++key) {
        const auto found = context.layerMap.find(key);
        if (found == context.layerMap.end()) {
            continue;
        }
        const auto index = static_cast<uint64_t>(found->second);
        if (layers.size() <= index) {
            layers.resize(index + 1);
        }
        layers[index] = new Quenza::LayerSetting(toSceneString(layerName(context.renderSettings, key)));
    }
    const Quenza::Ref<Quenza::SceneNode> node = exporter.root->getRenderSettings();
    if (!node) {
        return;
    }
    auto& settings = static_cast<Quenza::SceneNodeRenderSettings&>(*node);
    settings.layer_settings = layers;
    // Materials refer to layers by index: a slot without a name must not let the later ones move up.
    settings.ensureLayers(layers.size());
}
