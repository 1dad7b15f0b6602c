// SPDX-License-Identifier: MIT
#include "materials/material_fixture.h"
#include "materials/spectrum_numbers.h"
#include "scene/medium.h"

namespace {

using MediumExport = MaterialTest;

/// Another number for each parameter of a spectrum, from `first` on.
void setSpectrum(BaseContainer& values, const SpectrumNumbers& numbers, int32_t type, float first) {
    values.SetLong(numbers.type, type);
    values.SetVector(numbers.colour, Vector(0.25f, 0.5f, 0.75f));
    int32_t step = 0;
    for (const int32_t id : {numbers.gamma, numbers.scale, numbers.temperature, numbers.gain, numbers.peakMin,
                             numbers.peakWidth, numbers.peakValue, numbers.baseValue, numbers.uniform}) {
        values.SetReal(id, first + float(++step));
    }
    values.SetLong(numbers.tabStart, 500);
    values.SetLong(numbers.tabEnd, 600);
    values.SetString(numbers.tabValues, "1 x 2");
}

TEST_F(MediumExport, WritesEveryKindAndSpectrum) {
    for (const int32_t type : {MAT_SPECTRUM_RGB, MAT_SPECTRUM_BLACKBODY, MAT_SPECTRUM_PEAK,
                               MAT_SPECTRUM_UNIFORM, MAT_SPECTRUM_TABULATED}) {
        BaseMaterial* const material =
            addMaterial(("Spectra " + std::to_string(type)).c_str(), MAT_KIND_SPECULAR);
        BaseContainer& values = data(material);
        values.SetBool(MAT_MEDIUM_SUBSURFACE, true);
        setSpectrum(values, ABSORPTION_SPECTRUM, type, 10.0f);
        setSpectrum(values, SCATTERING_SPECTRUM, type, 100.0f);
        values.SetLong(MAT_PHASE_KIND, type == MAT_SPECTRUM_RGB         ? MAT_PHASE_HENYEY_GREENSTEIN
                                       : type == MAT_SPECTRUM_BLACKBODY ? MAT_PHASE_UNIFORM
                                                                        : 0);
        exportMaterial(material);
    }
    const int32_t kinds[] = {MAT_MEDIUM_DERMIS, MAT_MEDIUM_EPIDERMIS, MAT_MEDIUM_ATMOSPHERE, 0};
    for (const int32_t kind : kinds) {
        BaseMaterial* const material =
            addMaterial(("Kind " + std::to_string(kind)).c_str(), MAT_KIND_GLOSSY_TRANSPARENT);
        data(material).SetLong(MAT_MEDIUM_KIND, kind);
        data(material).SetLong(MAT_MEDIUM_PRECEDENCE, 3);
        data(material).SetBool(MAT_MEDIUM_SUBSURFACE, true);
        data(material).SetVector(MAT_ATMOSPHERE_CENTRE, Vector(1.0f, 2.0f, 3.0f));
        exportMaterial(material);
    }
    std::string media;
    for (const auto& node : scene().getChildren()) {
        if (node->getType() == Quenza::NODE_MEDIUM) {
            media += xml(node->getUID());
        }
    }
    EXPECT_EQ(media, golden("media.xml", media));
}

TEST_F(MediumExport, IsSharedByAllThatTakeIt) {
    BaseMaterial* const water = addMaterial("Water", MAT_KIND_SPECULAR);
    BaseMaterial* const glass = addMaterial("Glass", MAT_KIND_GLOSSY_TRANSPARENT);
    BaseMaterial* const paper = addMaterial("Paper", MAT_KIND_DIFFUSE_TRANSMITTER);
    for (BaseMaterial* const taker : {glass, paper}) {
        data(taker).SetLink(MAT_MEDIUM_SOURCE, water);
        exportMaterial(taker);
    }
    exportMaterial(water);
    EXPECT_EQ(nodeNames(), "1 nullMat: null_material\n2 Glass: glossy_transparent\n3 MedWater: medium\n"
                           "4 Paper: diffuse_transmitter\n5 Water: specular\n");
}

} // namespace
