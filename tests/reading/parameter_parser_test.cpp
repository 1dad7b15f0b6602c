// SPDX-License-Identifier: MIT
#include "reading/parameter_parser.h"

#include "reading/parsed_element.h"
#include "reading/parser_state.h"
#include "scene/displacement_param.h"
#include "scene/vec3_param.h"
#include "scene/volume_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "scene/xml_text.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

const ParserState STATE;

/// A family's reader, for a material with four textures.
using ParameterReader = std::function<Ref<Param>(const TiXmlElement&)>;

template <class Read>
ParameterReader with4Textures(const Read& read) {
    return [read](const TiXmlElement& holder) { return Ref<Param>(read(STATE, holder, 4)); };
}

const ParameterReader SPECTRAL = with4Textures(parseWavelengthDependentParam);
const ParameterReader SCALAR = with4Textures(parseWavelengthIndependentParam);
const ParameterReader HEIGHT = with4Textures(parseDisplacementParam);
const ParameterReader VECTOR = with4Textures(parseVec3Param);
const ParameterReader VOLUME = [](const TiXmlElement& holder) { return parseVolumeParam(STATE, holder); };

std::string held(const std::string& children) {
    return "<holder>\n" + children + "</holder>";
}

TEST(ParameterParser, ReadsWhatIsWritten) {
    const Ref<Spectrum> half = new UniformSpectrum(0.5);
    const Ref<ShaderInfo> info = new ShaderInfo("  def eval() real :\n\t1 < 2 && x ? 0.5 : 1  ");
    const Ref<VoxelVolumeParam> voxel = new VoxelVolumeParam;
    voxel->voxeldata_path = "a  b.vox";
    voxel->wavelength_dependent = true;
    const struct {
        ParameterReader read;
        Ref<Param> param;
    } rows[] = {
        {SPECTRAL, new ConstantWavelengthDependentParam(half)},
        {SPECTRAL, new ShaderWavelengthDependentParam(info)},
        {SPECTRAL, new ShaderWavelengthDependentParam},
        {SPECTRAL, new ShaderWavelengthDependentParam(new ShaderInfo)},
        {SPECTRAL, new TextureWavelengthDependentParam(3)},
        {SCALAR, new ConstantWavelengthIndependentParam(0.3)},
        {SCALAR, new ShaderWavelengthIndependentParam(info)},
        {SCALAR, new TextureWavelengthIndependentParam(3)},
        {HEIGHT, new ConstantDisplacementParam(0.3)},
        {HEIGHT, new ShaderDisplacementParam(info)},
        {HEIGHT, new TextureDisplacementParam(3)},
        {VECTOR, new ShaderVec3Param(info)},
        {VECTOR, new TextureVec3Param(3)},
        {VOLUME, new ConstantVolumeParam(half)},
        {VOLUME, new ShaderVolumeParam(info, true)},
        {VOLUME, new ShaderVolumeParam(nullptr, false)},
        {VOLUME, voxel},
    };
    for (const auto& row : rows) {
        const std::string text = xmlText(*row.param);
        const Ref<Param> read = row.read(ParsedElement(held(text)));
        EXPECT_EQ(xmlText(*read), text);
        EXPECT_EQ(typeid(*read), typeid(*row.param)) << text;
    }
}

TEST(ParameterParser, ResolvesPathsOfIncludedFiles) {
    ParserState included;
    included.base_from_scene = "sub";
    const std::string shader =
        "<shader><include>inc.qsl</include><texture><path>t.png</path></texture></shader>";
    const std::string voxel = "<voxel><voxeldata_path>smoke.vox</voxeldata_path></voxel>";
    const std::string texts =
        xmlText(*parseWavelengthIndependentParam(included, ParsedElement(held(shader)), 0)) +
        xmlText(*parseVolumeParam(included, ParsedElement(held(voxel))));
    for (const char* path : {"inc.qsl", "t.png", "smoke.vox"})
        EXPECT_NE(texts.find(">" + included.resolvePath(path).toStdString() + "<"), std::string::npos)
            << texts;
    EXPECT_NE(included.resolvePath("t.png").toStdString(), "t.png");
}

} // namespace
} // namespace Quenza
