// SPDX-License-Identifier: MIT
#include "reading/parameter_parser.h"

#include "reading/parsed_element.h"
#include "reading/parser_state.h"
#include "reading/shader_parser.h"
#include "reading/texture_parser.h"
#include "scene/displacement_param.h"
#include "scene/rotation.h"
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
using Reader = std::function<Ref<Param>(const TiXmlElement&)>;

template <class Read>
Reader with4Textures(const Read& read) {
    return [read](const TiXmlElement& holder) { return Ref<Param>(read(STATE, holder, 4)); };
}

const Reader SPECTRAL = with4Textures(parseWavelengthDependentParam);
const Reader SCALAR = with4Textures(parseWavelengthIndependentParam);
const Reader HEIGHT = with4Textures(parseDisplacementParam);
const Reader VECTOR = with4Textures(parseVec3Param);
const Reader VOLUME = [](const TiXmlElement& holder) { return parseVolumeParam(STATE, holder); };

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
        Reader read;
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

TEST(ParameterParser, RefusesWhatIsWrong) {
    const struct {
        Reader read;
        const char* text;
        const char* message;
    } rows[] = {
        {SPECTRAL, "", "Internal Error.  (In element 'holder', around line 1, column 1)"},
        {SPECTRAL, "<voxel/>", "Internal Error.  (In element 'holder', around line 1, column 1)"},
        {SCALAR, "<map/>", "Internal Error.  (In element 'holder', around line 1, column 1)"},
        {HEIGHT, "0.5", "Internal Error.  (In element 'holder', around line 1, column 1)"},
        {VECTOR, "<constant>1 0 0</constant>",
         "Internal Error.  (In element 'holder', around line 1, column 1)"},
        {VOLUME, "<texture/>", "Internal Error.  (In element 'holder', around line 1, column 1)"},
        {SCALAR, "<constant>1</constant> <shader/>",
         "Found unexpected element 'shader',  already parsed mutually exclusive element 'constant'  (In "
         "element "
         "'shader', around line 2, column 24)"},
        {HEIGHT, "<constant>1 m</constant>",
         "Parse error while parsing double from '1 m'  (In element 'constant', around line 2, column 1)"},
        {SPECTRAL, "<constant/>",
         "Failed to find child for element 'constant' - Child should be one of 'rgb', 'blackbody', 'peak', "
         "'regular_tabulated', 'uniform'  (In element 'constant', around line 2, column 1)"},
        {SPECTRAL, "<texture><texture_index>4</texture_index></texture>",
         "Texture index '4' is out of bounds: this material has 4 textures.  (In element 'texture', around "
         "line 2, "
         "column 1)"},
        {VECTOR, "<texture><texture_index>-1</texture_index></texture>",
         "Texture index '-1' is out of bounds: this material has 4 textures.  (In element 'texture', around "
         "line 2, "
         "column 1)"},
        {HEIGHT, "<texture/>",
         "could not find element 'texture_index'  (In element 'texture', around line 2, column 1)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(refusal(held(row.text), row.read), row.message) << row.text;
}

TEST(TextureParser, RefusesWhatIsWrong) {
    const BadElement rows[] = {
        {"<path>a</path><tex_coord_generation/>",
         "Failed to find child for element 'tex_coord_generation' - Child should be one of 'uv', "
         "'spherical', "
         "'spherical_environment'  (In element 'tex_coord_generation', around line 2, column 15)"},
        {"<path>a</path><tex_coord_generation><spherical/></tex_coord_generation>",
         "Failed to find expected element 'rotation'  (In element 'spherical', around line 2, column 37)"},
        {"<path>a</path><tex_coord_generation><uv><matrix>1 0 0</matrix></uv></tex_coord_generation>",
         "syntax error while parsing Matrix2.  (In element 'matrix', around line 2, column 41)"},
    };
    for (const BadElement& row : rows)
        EXPECT_EQ(refusal(held(row.text), [](const TiXmlElement& e) { parseTexture(STATE, e); }), row.message)
            << row.text;
}

TEST(ShaderParser, RefusesWhatIsWrong) {
    const BadElement rows[] = {
        {"<param/>", "Failed to find child for element 'param' - Child should be one of 'real', 'int', "
                     "'colour3'  (In element "
                     "'param', around line 2, column 1)"},
    };
    for (const BadElement& row : rows)
        EXPECT_EQ(refusal(held(row.text), [](const TiXmlElement& e) { parseShaderInfo(STATE, e); }),
                  row.message)
            << row.text;
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
