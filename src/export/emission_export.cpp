// SPDX-License-Identifier: MIT
#include "export/emission_export.h"

#include "foundation/file_utils.h"
#include "host/material.h"
#include "host/tag.h"
#include "shared/export_context.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_state.h"
#include "shared/text.h"

using Quenza::EmissionScale;
using Quenza::IESProfile;
using Quenza::Ref;
using Quenza::SceneNodeModel;
using Quenza::SceneNodeUID;

namespace {

/// The numbers of a document for the four measures, in the scene's order.
using MeasureNumbers = int32_t[4];

constexpr MeasureNumbers TAG_MEASURES = {LIGHT_MEASURE_LUMINOUS_FLUX, LIGHT_MEASURE_LUMINOUS_INTENSITY,
                                         LIGHT_MEASURE_LUMINANCE, LIGHT_MEASURE_LUMINOUS_EMITTANCE};
constexpr MeasureNumbers MATERIAL_MEASURES = {MAT_MEASURE_LUMINOUS_FLUX, MAT_MEASURE_LUMINOUS_INTENSITY,
                                              MAT_MEASURE_LUMINANCE, MAT_MEASURE_LUMINOUS_EMITTANCE};

/// An unknown number leaves the measure of a new scale.
Ref<EmissionScale> makeEmissionScale(SceneNodeUID uid, const MeasureNumbers& numbers, int32_t number,
                                     float value) {
    const Ref<EmissionScale> scale = new EmissionScale;
    scale->material_uid = uid;
    scale->value = double(value);
    for (uint32_t measure = 0; measure < std::size(numbers); ++measure) {
        if (numbers[measure] == number) {
            scale->measure = measure;
        }
    }
    return scale;
}

} // namespace

void addTagEmission(const ExportContext& context, SceneNodeModel& model, const BaseTag* lightTag) {
    const BaseContainer& data = *lightTag->GetDataInstance();
    if (data.GetBool(LIGHT_USE_EMISSION_SCALE)) {
        model.emission_scales.push_back(makeEmissionScale(context.lightMaterialUID, TAG_MEASURES,
                                                          data.GetLong(LIGHT_EMISSION_SCALE_MEASURE),
                                                          data.GetReal(LIGHT_EMISSION_SCALE_VALUE, 100.0f)));
    }
    if (data.GetLong(LIGHT_USE_IES) == 1) {
        addIESProfile(model, context.lightMaterialUID, data.GetFilename(LIGHT_IES_FILE));
    }
}

void addMaterialEmission(const ExportContext& context, SceneNodeModel& model,
                         const std::vector<BaseMaterial*>& materials) {
    for (BaseMaterial* const material : materials) {
        const auto found = context.materialMap.find(material);
        if (found == context.materialMap.end() || !found->second) {
            continue;
        }
        const SceneNodeUID uid = found->second->getUID();
        if (const Ref<EmissionScale> scale = exportEmissionScale(material, uid)) {
            model.emission_scales.push_back(scale);
        }
        const BaseContainer& data = *material->GetDataInstance();
        const Filename file = data.GetFilename(MAT_IES_FILE);
        if (data.GetLong(MAT_USE_IES) == 1 && file.Content()) {
            addIESProfile(model, uid,
                          toFilename(Quenza::FileUtils::join(toSceneString(context.sceneDirectory),
                                                             toSceneString(file))));
        }
    }
}

void addIESProfile(SceneNodeModel& model, SceneNodeUID materialUID, const Filename& path) {
    const Ref<IESProfile> profile = new IESProfile;
    profile->path = toSceneString(path);
    profile->material_uid = materialUID;
    model.ies_profiles.push_back(profile);
}

Filename defaultIESFile() {
    const Filename* const folder = pluginState().pluginPath.get();
    return (folder ? *folder : Filename()) + "presets" + "default.ies";
}

Ref<EmissionScale> exportEmissionScale(const BaseMaterial* material, SceneNodeUID uid) {
    const BaseContainer& data = *material->GetDataInstance();
    if (!data.GetBool(MAT_USE_EMISSION_SCALE)) {
        return nullptr;
    }
    return makeEmissionScale(uid, MATERIAL_MEASURES,
                             data.GetLong(MAT_EMISSION_SCALE_MEASURE, MAT_MEASURE_LUMINOUS_FLUX),
                             data.GetReal(MAT_EMISSION_SCALE_VALUE, 100.0f));
}
