// SPDX-License-Identifier: MIT
#include "export/default_materials.h"

#include "export/scene_exporter.h"
#include "materials/material_export.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/oren_nayar_material.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "shared/add_material.h"

using namespace Quenza;

namespace {

Ref<WavelengthDependentParam> constantColour(double r, double g, double b) {
    return new ConstantWavelengthDependentParam(new RGBSpectrum(Vec3d{r, g, b}, 2.2));
}

Ref<Material> clayMaterial(const ::Vector& colour) {
    const Ref<OrenNayarMaterial> material = new OrenNayarMaterial;
    material->albedo = constantColour(double(colour.x), double(colour.y), double(colour.z));
    material->sigma = new ConstantWavelengthIndependentParam(0.3);
    return material;
}

Ref<Material> greyMaterial() {
    const Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->albedo = constantColour(0.8, 0.8, 0.8);
    return material;
}

} // namespace

void exportDefaultMaterials(SceneExporter& exporter) {
    ExportContext& context = *exporter.context;
    exportNullMaterial(*exporter.root, context);
    context.defaultMaterialUID = addMaterial(
        *exporter.root, context.overrideMaterials ? clayMaterial(context.overrideColour) : greyMaterial(),
        "default");
}
