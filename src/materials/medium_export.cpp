// SPDX-License-Identifier: MIT
#include "materials/medium_export.h"

#include "host/material.h"
#include "materials/spectrum_export.h"
#include "scene/medium.h"
#include "scene/scene_node_medium.h"
#include "scene/volume_param.h"
#include "shared/export_context.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/scene_space.h"
#include "shared/spectra.h"
#include "shared/text.h"

#include <unordered_set>
#include <vector>

using Quenza::Medium;
using Quenza::Ref;
using Quenza::SceneNodeMedium;

namespace {

/// A material on the way along the links.
struct Step {
    const BaseMaterial* source;
    BaseMaterial* key;
    String name;
};

Ref<Quenza::PhaseFunction> makePhaseFunction(const BaseContainer& data) {
    switch (data.GetLong(MAT_PHASE_KIND)) {
    case MAT_PHASE_UNIFORM:
        return new Quenza::UniformPhaseFunction;
    case MAT_PHASE_HENYEY_GREENSTEIN: {
        const Ref<Quenza::HenyeyGreensteinPhaseFunction> function = new Quenza::HenyeyGreensteinPhaseFunction;
        function->g_spectrum = new Quenza::ConstantVolumeParam(
            makeRGBSpectrum(data.GetVector(MAT_PHASE_G_COLOUR), data.GetReal(MAT_PHASE_G_GAMMA), 1.0f));
        return function;
    }
    default:
        return nullptr;
    }
}

Ref<Medium> makeBasicMedium(const BaseContainer& data) {
    const Ref<Quenza::BasicMedium> medium = new Quenza::BasicMedium;
    medium->ior = double(data.GetReal(MAT_MEDIUM_IOR, 1.3f));
    medium->cauchy_b_coeff = double(data.GetReal(MAT_MEDIUM_CAUCHY_B));
    medium->absorption_coefficient =
        new Quenza::ConstantVolumeParam(makeSpectrum(data, ABSORPTION_SPECTRUM, ColourMeaning::INVERTED));
    if (data.GetLong(MAT_MEDIUM_SUBSURFACE) == 1) {
        const Ref<Quenza::SubsurfaceScattering> scattering = new Quenza::SubsurfaceScattering;
        scattering->scattering_coefficient =
            new Quenza::ConstantVolumeParam(makeSpectrum(data, SCATTERING_SPECTRUM));
        scattering->phase_function = makePhaseFunction(data);
        medium->subsurface_scattering = scattering;
    }
    return medium;
}

Ref<Medium> makeDermis(const BaseContainer& data) {
    const Ref<Quenza::Dermis> medium = new Quenza::Dermis;
    medium->hemoglobin_fraction = double(data.GetReal(MAT_DERMIS_HEMOGLOBIN));
    return medium;
}

Ref<Medium> makeEpidermis(const BaseContainer& data) {
    const Ref<Quenza::Epidermis> medium = new Quenza::Epidermis;
    medium->melanin_fraction = double(data.GetReal(MAT_EPIDERMIS_MELANIN));
    medium->melanin_type_blend = double(data.GetReal(MAT_EPIDERMIS_MELANIN_TYPE));
    return medium;
}

Ref<Medium> makeAtmosphere(const BaseContainer& data, float sceneScale) {
    const Ref<Quenza::Atmosphere> medium = new Quenza::Atmosphere;
    medium->turbidity = double(data.GetReal(MAT_ATMOSPHERE_TURBIDITY, 2.0f));
    medium->center = toSceneSpaceDouble(data.GetVector(MAT_ATMOSPHERE_CENTRE) * sceneScale);
    return medium;
}

/// Null for a kind that isn't known.
Ref<Medium> makeMedium(const BaseContainer& data, float sceneScale) {
    switch (data.GetLong(MAT_MEDIUM_KIND, MAT_MEDIUM_BASIC)) {
    case MAT_MEDIUM_BASIC:
        return makeBasicMedium(data);
    case MAT_MEDIUM_DERMIS:
        return makeDermis(data);
    case MAT_MEDIUM_EPIDERMIS:
        return makeEpidermis(data);
    case MAT_MEDIUM_ATMOSPHERE:
        return makeAtmosphere(data, sceneScale);
    default:
        return nullptr;
    }
}

Ref<SceneNodeMedium> makeNode(const Step& step, float sceneScale) {
    const BaseContainer& data = *step.source->GetDataInstance();
    const Ref<Medium> medium = makeMedium(data, sceneScale);
    if (medium) {
        medium->precedence = data.GetLong(MAT_MEDIUM_PRECEDENCE, 1);
    }
    const Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
    node->setName(toSceneString(String("Med") + step.name));
    return node;
}

bool hasMedium(const BaseMaterial* material) {
    switch (material->GetDataInstance()->GetLong(MAT_KIND)) {
    case MAT_KIND_DIFFUSE_TRANSMITTER:
    case MAT_KIND_SPECULAR:
    case MAT_KIND_GLOSSY_TRANSPARENT:
        return true;
    default:
        return false;
    }
}

/// The material whose medium this one takes, or null.
BaseMaterial* findSource(const BaseMaterial* material, const BaseDocument* document) {
    auto* const linked = static_cast<BaseMaterial*>(
        material->GetDataInstance()->GetLink(MAT_MEDIUM_SOURCE, document, PLUGINID_MATERIAL));
    return linked && hasMedium(linked) ? linked : nullptr;
}

} // namespace

Quenza::SceneNodeUID exportMedium(const BaseMaterial* source, const String& name, Quenza::SceneNodeRoot& root,
                                  ExportContext& context, BaseMaterial* key) {
    Step step{source, key, name};
    std::unordered_set<const BaseMaterial*> passed;
    std::vector<BaseMaterial*> takers;
    Ref<SceneNodeMedium> node;
    while (!node) {
        const auto known = context.mediumMap.find(step.key);
        if (known != context.mediumMap.end()) {
            node = known->second;
            break;
        }
        const bool isCircle = !passed.insert(step.key).second;
        BaseMaterial* const next = isCircle ? nullptr : findSource(step.source, context.document);
        if (next) {
            takers.push_back(step.key);
            step = {next, next, next->GetName()};
            continue;
        }
        node = makeNode(step, context.sceneScale);
        context.mediumMap[step.key] = node;
        root.addChild(node);
    }
    // The links needn't be followed again.
    for (BaseMaterial* const taker : takers) {
        context.mediumMap[taker] = node;
    }
    return node->getUID();
}
