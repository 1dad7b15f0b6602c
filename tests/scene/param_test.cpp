// SPDX-License-Identifier: MIT
#include "scene/displacement_param.h"
#include "scene/vec3_param.h"
#include "scene/volume_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

const char* const UNIFORM_TEXT =
    "\t<constant>\n\t\t<uniform>\n\t\t\t<value>0.5</value>\n\t\t</uniform>\n\t</constant>\n";
const char* const SHADER_TEXT = "\t<shader>\n\t\t<shader><![CDATA[q]]></shader>\n\t</shader>\n";
const char* const TEXTURE_TEXT = "\t<texture>\n\t\t<texture_index>3</texture_index>\n\t</texture>\n";

TEST(Param, WritesEveryFormOfEveryFamily) {
    const Ref<Spectrum> half = new UniformSpectrum(0.5);
    const Ref<ShaderInfo> info = new ShaderInfo("q");
    Ref<VoxelVolumeParam> voxel = new VoxelVolumeParam;
    voxel->voxeldata_path = "a  b.vox";
    voxel->wavelength_dependent = true;
    struct Case {
        Ref<Param> param;
        u32 type;
        std::string text;
    };
    const Case cases[] = {
        {new ConstantWavelengthDependentParam(half), 0, UNIFORM_TEXT},
        {new ConstantWavelengthDependentParam, 0, "\t<constant>\n\t</constant>\n"},
        {new ShaderWavelengthDependentParam(info), 1, SHADER_TEXT},
        {new ShaderWavelengthDependentParam, 1, "\t<shader>\n\t</shader>\n"},
        {new ShaderWavelengthDependentParam(new ShaderInfo), 1,
         "\t<shader>\n\t\t<shader><![CDATA[]]></shader>\n\t</shader>\n"},
        {new TextureWavelengthDependentParam(3), 2, TEXTURE_TEXT},
        {new ConstantWavelengthIndependentParam(0.3), 0, "\t<constant>0.3</constant>\n"},
        {new ShaderWavelengthIndependentParam(info), 1, SHADER_TEXT},
        {new TextureWavelengthIndependentParam(3), 2, TEXTURE_TEXT},
        {new ConstantDisplacementParam(0.3), 0, "\t<constant>\n\t\t0.3\n\t</constant>\n"},
        {new ShaderDisplacementParam(info), 1, SHADER_TEXT},
        {new TextureDisplacementParam(3), 2, TEXTURE_TEXT},
        {new ConstantVolumeParam(half), 0, UNIFORM_TEXT},
        {new ShaderVolumeParam(info, true), 1,
         "\t<shader>\n\t\t<shader><![CDATA[q]]></shader>\n"
         "\t\t<wavelength_dependent>true</wavelength_dependent>\n\t</shader>\n"},
        {voxel, 2,
         "\t<voxel>\n\t\t<voxeldata_path><![CDATA[a  b.vox]]></voxeldata_path>\n"
         "\t\t<wavelength_dependent>true</wavelength_dependent>\n\t</voxel>\n"},
        {new ShaderVec3Param(info), 0, SHADER_TEXT},
        {new TextureVec3Param(3), 1, TEXTURE_TEXT},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.param->getType(), c.type) << c.text;
        EXPECT_EQ(xmlText(*c.param, 1), c.text);
    }
}

TEST(Param, TurnsIntoTheWavelengthFamilies) {
    const Ref<Spectrum> half = new UniformSpectrum(0.5);
    const Ref<ShaderInfo> info = new ShaderInfo("q");
    const char* const number = "\t<constant>0.5</constant>\n";
    struct Case {
        Ref<ConvertibleParam> param;
        std::string independent; ///< Empty: none.
        std::string dependent;
    };
    const Case cases[] = {
        {new ConstantWavelengthDependentParam(half), "", UNIFORM_TEXT},
        {new ConstantWavelengthIndependentParam(0.5), number, UNIFORM_TEXT},
        {new ConstantDisplacementParam(0.5), number, UNIFORM_TEXT},
        {new ConstantVolumeParam(half), "", UNIFORM_TEXT},
        {new ShaderWavelengthDependentParam(info), SHADER_TEXT, SHADER_TEXT},
        {new ShaderVolumeParam(info, false), SHADER_TEXT, SHADER_TEXT},
        {new TextureDisplacementParam(3), TEXTURE_TEXT, TEXTURE_TEXT},
        {new VoxelVolumeParam, "", ""},
    };
    for (const Case& c : cases) {
        const Ref<WavelengthIndependentParam> independent = c.param->cloneWavelengthIndependent();
        const Ref<WavelengthDependentParam> dependent = c.param->cloneWavelengthDependent();
        EXPECT_EQ(independent ? xmlText(*independent, 1) : "", c.independent);
        EXPECT_EQ(dependent ? xmlText(*dependent, 1) : "", c.dependent);
    }
}

TEST(Param, ConstantsAreCopiedAndShadersShared) {
    Ref<UniformSpectrum> spectrum = new UniformSpectrum(0.5);
    const ConstantWavelengthDependentParam constant{Ref<Spectrum>(spectrum)};
    const Ref<WavelengthDependentParam> copy = constant.cloneWavelengthDependent();
    spectrum->value = 1;
    EXPECT_EQ(xmlText(*copy, 1), UNIFORM_TEXT);

    const Ref<ShaderInfo> info = new ShaderInfo("q");
    const ShaderWavelengthIndependentParam shader(info);
    const Ref<WavelengthDependentParam> other = shader.cloneWavelengthDependent();
    info->shader = "changed";
    EXPECT_NE(xmlText(*other).find("[changed]"), std::string::npos);
}

} // namespace
} // namespace Quenza
