// SPDX-License-Identifier: MIT
#include "export/background_export.h"

#include "export/emission_export.h"
#include "export/scene_exporter.h"
#include "host/material.h"
#include "materials/background_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/render_settings_parts.h"
#include "scene/scene_node_background_settings.h"
#include "shared/light_layers.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/scene_space.h"
#include "shared/spectra.h"

using namespace Quenza;

namespace {

Ref<Material> whiteEnvironment() {
    const Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->base_emission = constantParam(makeUniformSpectrum(1.0f));
    return material;
}

/// The sun shines along the object's Z axis.
Vec3d sunDirection(const ExportContext& context) {
    const BaseObject* const sun = context.renderSettings->GetObjectLink(RS_SUN_OBJECT, context.document);
    const ::Vector axis = sun ? sun->GetMg().axisZ : ::Vector();
    return sun && isFinite(axis) ? toSceneSpaceDouble(-axis) : Vec3d{1.0, 1.0, 1.0};
}

/// Sun and sky come before all lights: their layers are the first.
void addSunSkyLayers(SceneExporter& exporter, SunSkyMaterial& material) {
    std::map<int32_t, int32_t>& layers = exporter.context->layerMap;
    const bool isSplit = exporter.context->renderSettings->GetBool(RS_SPLIT_SUN_SKY);
    const auto addLayer = [&exporter](const char* name) {
        exporter.layerSettings.push_back(new LayerSetting(name));
    };
    material.sun_layer = 0;
    if (isSplit) {
        material.sky_layer = 1;
        layers[LAYER_KEY_SUN] = 0;
        addLayer("Sun");
        addLayer("Sky");
    } else {
        addLayer("Sun/Sky");
    }
    layers[LAYER_KEY_SKY] = isSplit ? 1 : 0;
}

Ref<Material> sunAndSky(SceneExporter& exporter) {
    const BaseContainer& settings = *exporter.context->renderSettings;
    const Ref<SunSkyMaterial> material = new SunSkyMaterial;
    material->sundir = sunDirection(*exporter.context);
    material->turbidity = double(settings.GetReal(RS_TURBIDITY));
    material->extra_atmospheric = settings.GetBool(RS_EXTRA_ATMOSPHERIC);
    addSunSkyLayers(exporter, *material);
    material->model = settings.GetBool(RS_CAPTURED_SKY) ? "captured-simulation" : "original";
    return material;
}

/// Null when nothing is linked that shines.
const BaseMaterial* linkedMaterial(const ExportContext& context) {
    const auto* const material = static_cast<const BaseMaterial*>(
        context.renderSettings->GetLink(RS_BACKGROUND_LINK, context.document, PLUGINID_MATERIAL));
    return material && material->GetDataInstance()->GetBool(MAT_EMISSION_ENABLED) ? material : nullptr;
}

} // namespace

bool exportBackground(SceneExporter& exporter) {
    ExportContext& context = *exporter.context;
    const Ref<SceneNodeBackgroundSettings> node = new SceneNodeBackgroundSettings;
    exporter.root->addChild(node);
    if (!context.renderSettings) {
        node->background_material = whiteEnvironment();
        return true;
    }
    switch (context.renderSettings->GetLong(RS_BACKGROUND)) {
    case RS_BACKGROUND_SUN_SKY:
        node->background_material = sunAndSky(exporter);
        return true;
    case RS_BACKGROUND_MATERIAL: {
        const BaseMaterial* const material = linkedMaterial(context);
        if (!material) {
            return false;
        }
        node->background_material = exportBackgroundMaterial(context, material);
        node->emission_scale = exportEmissionScale(material, SceneNodeUID());
        return true;
    }
    default:
        return true;
    }
}
