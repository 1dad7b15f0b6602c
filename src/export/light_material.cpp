// SPDX-License-Identifier: MIT
#include "export/light_material.h"

#include "export/scene_exporter.h"
#include "host/ids.h"
#include "host/tag.h"
#include "scene/materials/diffuse_material.h"
#include "shared/add_material.h"
#include "shared/light_layers.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/spectra.h"

using Quenza::Ref;
using Quenza::Spectrum;

namespace {

Ref<Spectrum> spectrumOfLight(const BaseContainer& light) {
    constexpr float GAMMA = 2.2f;
    return makeRGBSpectrum(light.GetVector(LIGHT_COLOR), GAMMA, light.GetReal(LIGHT_BRIGHTNESS));
}

Ref<Spectrum> spectrumOfTag(const BaseContainer& tag) {
    switch (tag.GetLong(LIGHT_SPECTRUM, LIGHT_SPECTRUM_RGB)) {
    case LIGHT_SPECTRUM_PEAK:
        return makePeakSpectrum(tag.GetReal(LIGHT_PEAK_LOW), tag.GetReal(LIGHT_PEAK_WIDTH),
                                tag.GetReal(LIGHT_PEAK_VALUE), tag.GetReal(LIGHT_PEAK_BASE));
    case LIGHT_SPECTRUM_BLACKBODY:
        return makeBlackbodySpectrum(tag.GetReal(LIGHT_BLACKBODY_TEMPERATURE),
                                     tag.GetReal(LIGHT_BLACKBODY_GAIN));
    case LIGHT_SPECTRUM_UNIFORM:
        return makeUniformSpectrum(tag.GetReal(LIGHT_UNIFORM_VALUE));
    default:
        return makeRGBSpectrum(tag.GetVector(LIGHT_RGB_COLOUR), tag.GetReal(LIGHT_RGB_GAMMA), 1.0f);
    }
}

} // namespace

void exportLightMaterial(SceneExporter& exporter, const BaseObject* light) {
    ExportContext& context = *exporter.context;
    const Ref<Quenza::DiffuseMaterial> material = new Quenza::DiffuseMaterial;
    if (const BaseTag* const tag = light->GetTag(PLUGINID_LIGHT_TAG)) {
        const BaseContainer& data = *tag->GetDataInstance();
        material->layer = layerIndex(context, data.GetLong(LIGHT_LAYER));
        material->base_emission = constantParam(spectrumOfTag(data));
    } else {
        material->layer = layerIndex(context, LIGHT_LAYER_1);
        material->base_emission = constantParam(spectrumOfLight(*light->GetDataInstance()));
    }
    context.lightMaterialUID = addMaterial(*exporter.root, material, "defaultLight");
}
