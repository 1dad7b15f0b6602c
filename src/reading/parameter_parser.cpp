// SPDX-License-Identifier: MIT
#include "reading/parameter_parser.h"

#include "foundation/string_utils.h"
#include "reading/parser_state.h"
#include "reading/shader_parser.h"
#include "reading/spectrum_parser.h"
#include "reading/xml_values.h"
#include "scene/displacement_param.h"
#include "scene/vec3_param.h"
#include "scene/volume_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

#include <array>
#include <cstring>
#include <span>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

/// The element of the form that `holder` has, one of `names`.
const TiXmlElement& formOf(const TiXmlElement& holder, std::span<const char* const> names) {
    bool found = false;
    for (const char* const name : names)
        found = found || optionalChildElement(holder, name);
    // Says little, but people look it up by these words.
    if (!found)
        throwParserError("Internal Error.", holder);
    const TiXmlElement& form = checkOnlyOneOf(holder, names);
    checkChildrenAreInOnce(holder, names);
    return form;
}

bool isNamed(const TiXmlElement& element, const char* name) {
    return std::strcmp(element.Value(), name) == 0;
}

Ref<WavelengthDependentParam> parseConstant(const TiXmlElement& holder, WavelengthDependentParam*) {
    return new ConstantWavelengthDependentParam(parseSpectrum(childElement(holder, "constant")));
}

Ref<WavelengthIndependentParam> parseConstant(const TiXmlElement& holder, WavelengthIndependentParam*) {
    return new ConstantWavelengthIndependentParam(parseDouble(holder, "constant"));
}

Ref<DisplacementParam> parseConstant(const TiXmlElement& holder, DisplacementParam*) {
    return new ConstantDisplacementParam(parseDouble(holder, "constant"));
}

template <class Family, class ShaderParam, class TextureParam>
Ref<Family> parseSurfaceParam(const ParserState& state, const TiXmlElement& holder, u64 num_textures) {
    static constexpr std::array NAMES{"constant", "texture", "shader"};
    const TiXmlElement& form = formOf(holder, NAMES);
    if (isNamed(form, "constant"))
        return parseConstant(holder, static_cast<Family*>(nullptr));
    if (isNamed(form, "shader"))
        return new ShaderParam(parseShaderInfo(state, form));
    checkChildrenAreInOnce(form, std::array{"texture_index"});
    return new TextureParam(parseTextureIndex(form, num_textures));
}

} // namespace

Ref<WavelengthDependentParam> parseWavelengthDependentParam(const ParserState& state,
                                                            const TiXmlElement& holder, u64 num_textures) {
    return parseSurfaceParam<WavelengthDependentParam, ShaderWavelengthDependentParam,
                             TextureWavelengthDependentParam>(state, holder, num_textures);
}

Ref<WavelengthIndependentParam>
parseWavelengthIndependentParam(const ParserState& state, const TiXmlElement& holder, u64 num_textures) {
    return parseSurfaceParam<WavelengthIndependentParam, ShaderWavelengthIndependentParam,
                             TextureWavelengthIndependentParam>(state, holder, num_textures);
}

Ref<DisplacementParam> parseDisplacementParam(const ParserState& state, const TiXmlElement& holder,
                                              u64 num_textures) {
    return parseSurfaceParam<DisplacementParam, ShaderDisplacementParam, TextureDisplacementParam>(
        state, holder, num_textures);
}

Ref<Vec3Param> parseVec3Param(const ParserState& state, const TiXmlElement& holder, u64 num_textures) {
    static constexpr std::array NAMES{"texture", "shader"};
    const TiXmlElement& form = formOf(holder, NAMES);
    if (isNamed(form, "shader"))
        return new ShaderVec3Param(parseShaderInfo(state, form));
    checkChildrenAreInOnce(form, std::array{"texture_index"});
    return new TextureVec3Param(parseTextureIndex(form, num_textures));
}

Ref<VolumeParam> parseVolumeParam(const ParserState& state, const TiXmlElement& holder) {
    static constexpr std::array NAMES{"constant", "shader", "voxel"};
    const TiXmlElement& form = formOf(holder, NAMES);
    if (isNamed(form, "constant"))
        return new ConstantVolumeParam(parseSpectrum(form));
    const bool wavelength_dependent = parseOptionalBool(form, "wavelength_dependent", false);
    if (isNamed(form, "shader"))
        return new ShaderVolumeParam(parseShaderInfo(state, form, "wavelength_dependent"),
                                     wavelength_dependent);
    checkChildrenAreInOnce(form, std::array{"voxeldata_path", "wavelength_dependent"});
    Ref<VoxelVolumeParam> param = new VoxelVolumeParam;
    param->voxeldata_path = state.resolvePath(parseString(form, "voxeldata_path"));
    param->wavelength_dependent = wavelength_dependent;
    return param;
}

i32 parseTextureIndex(const TiXmlElement& element, u64 num_textures) {
    const i32 index = parseInt(element, "texture_index");
    if (index < 0 || u64(index) >= num_textures)
        throwParserError("Texture index '" + toString(index) + "' is out of bounds: this material has " +
                             toString(num_textures) + " textures.",
                         element);
    return index;
}

} // namespace Quenza
