// SPDX-License-Identifier: MIT
#include "headless/model/builtin_types.h"

#include "headless/model/primitive_ids.h"
#include "headless/shaders/shader_ids.h"

namespace headless {

namespace {

using enum ParameterKind;

constexpr bool notStored = false;

#define PARAMETER(ID) ID, #ID

const ParameterPreset cube[] = {
    {PARAMETER(PRIM_CUBE_SIZE), vector, {200.0f, 200.0f, 200.0f}},
    {PARAMETER(PRIM_CUBE_SUBX), integer, {1.0f}},
    {PARAMETER(PRIM_CUBE_SUBY), integer, {1.0f}},
    {PARAMETER(PRIM_CUBE_SUBZ), integer, {1.0f}},
    {PARAMETER(PRIM_AXIS), integer, {2.0f}},
};
const ParameterPreset sphere[] = {
    {PARAMETER(PRIM_SPHERE_RAD), real, {100.0f}},
    {PARAMETER(PRIM_SPHERE_SUB), integer, {24.0f}},
    {PARAMETER(PRIM_SPHERE_TYPE), integer, {0.0f}},
    {PARAMETER(PRIM_SPHERE_PERFECT), boolean, {1.0f}},
};
const ParameterPreset disc[] = {
    {PARAMETER(PRIM_DISC_INNER_RAD), real, {0.0f}}, {PARAMETER(PRIM_DISC_RAD), real, {100.0f}},
    {PARAMETER(PRIM_DISC_SUB), integer, {1.0f}},    {PARAMETER(PRIM_DISC_SEG), integer, {36.0f}},
    {PARAMETER(PRIM_AXIS), integer, {2.0f}},
};
const ParameterPreset plane[] = {
    {PARAMETER(PRIM_PLANE_WIDTH), real, {400.0f}},  {PARAMETER(PRIM_PLANE_HEIGHT), real, {400.0f}},
    {PARAMETER(PRIM_PLANE_SUBW), integer, {20.0f}}, {PARAMETER(PRIM_PLANE_SUBH), integer, {20.0f}},
    {PARAMETER(PRIM_AXIS), integer, {2.0f}},
};
const ParameterPreset cylinder[] = {
    {PARAMETER(PRIM_CYLINDER_RADIUS), real, {50.0f}}, {PARAMETER(PRIM_CYLINDER_HEIGHT), real, {200.0f}},
    {PARAMETER(PRIM_CYLINDER_SUBH), integer, {8.0f}}, {PARAMETER(PRIM_CYLINDER_SEG), integer, {36.0f}},
    {PARAMETER(PRIM_CYLINDER_CAPS), boolean, {1.0f}}, {PARAMETER(PRIM_CYLINDER_SUBCAP), integer, {1.0f}},
    {PARAMETER(PRIM_AXIS), integer, {2.0f}},
};
const ParameterPreset cone[] = {
    {PARAMETER(PRIM_CONE_TOP_RAD), real, {0.0f}},   {PARAMETER(PRIM_CONE_BOTTOM_RAD), real, {100.0f}},
    {PARAMETER(PRIM_CONE_HEIGHT), real, {200.0f}},  {PARAMETER(PRIM_CONE_SUBH), integer, {8.0f}},
    {PARAMETER(PRIM_CONE_SEG), integer, {36.0f}},   {PARAMETER(PRIM_CONE_CAPS), boolean, {1.0f}},
    {PARAMETER(PRIM_CONE_SUBCAP), integer, {1.0f}}, {PARAMETER(PRIM_AXIS), integer, {2.0f}},
};
const ParameterPreset torus[] = {
    {PARAMETER(PRIM_TORUS_RING_RAD), real, {100.0f}}, {PARAMETER(PRIM_TORUS_RING_SEG), integer, {36.0f}},
    {PARAMETER(PRIM_TORUS_PIPE_RAD), real, {20.0f}},  {PARAMETER(PRIM_TORUS_PIPE_SEG), integer, {18.0f}},
    {PARAMETER(PRIM_AXIS), integer, {2.0f}},
};
const ParameterPreset tube[] = {
    {PARAMETER(PRIM_TUBE_INNER_RAD), real, {50.0f}}, {PARAMETER(PRIM_TUBE_OUTER_RAD), real, {100.0f}},
    {PARAMETER(PRIM_TUBE_HEIGHT), real, {100.0f}},   {PARAMETER(PRIM_TUBE_SUBH), integer, {1.0f}},
    {PARAMETER(PRIM_TUBE_SEG), integer, {36.0f}},    {PARAMETER(PRIM_TUBE_SUBCAP), integer, {1.0f}},
    {PARAMETER(PRIM_AXIS), integer, {2.0f}},
};

// Nothing stored: a document may hold a million of them.
const ParameterPreset instance[] = {
    {PARAMETER(INSTANCEOBJECT_LINK), link},
    {PARAMETER(INSTANCEOBJECT_RENDERINSTANCE), boolean, {0.0f}, notStored},
};
const ParameterPreset array[] = {
    {PARAMETER(ARRAY_RADIUS), real, {250.0f}},
    {PARAMETER(ARRAY_COPIES), integer, {7.0f}},
};
const ParameterPreset symmetry[] = {
    {PARAMETER(SYMMETRY_PLANE), integer, {0.0f}},
    {PARAMETER(SYMMETRY_WELD), boolean, {1.0f}},
    {PARAMETER(SYMMETRY_TOLERANCE), real, {0.01f}},
};

const ParameterPreset bend[] = {
    {PARAMETER(DEFORM_SIZE), vector, {100.0f, 250.0f, 100.0f}},
    {PARAMETER(DEFORM_STRENGTH), real, {0.0f}},
    {PARAMETER(DEFORM_MODE), integer, {0.0f}},
    {PARAMETER(DEFORM_BEND_DIRECTION), real, {0.0f}},
    {PARAMETER(DEFORM_BEND_KEEP_LENGTH), boolean, {0.0f}},
};
const ParameterPreset taper[] = {
    {PARAMETER(DEFORM_SIZE), vector, {100.0f, 250.0f, 100.0f}},
    {PARAMETER(DEFORM_STRENGTH), real, {0.0f}},
    {PARAMETER(DEFORM_MODE), integer, {0.0f}},
    {PARAMETER(DEFORM_TAPER_CURVATURE), real, {0.0f}},
};
/// Of twist and bulge.
const ParameterPreset strengthOnly[] = {
    {PARAMETER(DEFORM_SIZE), vector, {100.0f, 250.0f, 100.0f}},
    {PARAMETER(DEFORM_STRENGTH), real, {0.0f}},
    {PARAMETER(DEFORM_MODE), integer, {0.0f}},
};

const ParameterPreset camera[] = {
    {PARAMETER(CAMERA_FOCUS), real, {36.0f}},
    {PARAMETER(CAMERA_ZOOM), real, {1.0f}},
    {PARAMETER(CAMERA_PROJECTION), integer, {0.0f}},
    {PARAMETER(CAMERA_APERTURE), real, {36.0f}},
    // That of the lens and the film above.
    {PARAMETER(CAMERA_FOV), real, {0.92729521f}},
    {PARAMETER(CAMERA_TARGET_DISTANCE), real, {2000.0f}},
    {PARAMETER(CAMERA_FILM_OFFSET_X), real, {0.0f}},
    {PARAMETER(CAMERA_FILM_OFFSET_Y), real, {0.0f}},
};
const ParameterPreset light[] = {
    {PARAMETER(LIGHT_COLOR), vector, {1.0f, 1.0f, 1.0f}},
    {PARAMETER(LIGHT_BRIGHTNESS), real, {1.0f}},
    {PARAMETER(LIGHT_TYPE), integer, {0.0f}},
    {PARAMETER(LIGHT_DETAILS_INNERANGLE), real, {0.0f}},
    {PARAMETER(LIGHT_DETAILS_OUTERANGLE), real, {0.52359878f}},
    {PARAMETER(LIGHT_AREADETAILS_SIZEX), real, {200.0f}},
    {PARAMETER(LIGHT_AREADETAILS_SIZEY), real, {200.0f}},
    {PARAMETER(LIGHT_AREADETAILS_SIZEZ), real, {200.0f}},
    {PARAMETER(LIGHT_AREADETAILS_SHAPE), integer, {1.0f}},
    {PARAMETER(LIGHT_AREADETAILS_OBJECT), link},
};

const ParameterPreset phongTag[] = {
    {PARAMETER(PHONGTAG_PHONG_ANGLELIMIT), boolean, {1.0f}},
    {PARAMETER(PHONGTAG_PHONG_ANGLE), real, {1.39626340f}},
    {PARAMETER(PHONGTAG_PHONG_USEEDGES), boolean, {1.0f}},
};
const ParameterPreset textureTag[] = {
    {PARAMETER(TEXTURETAG_OFFSETX), real, {0.0f}},
    {PARAMETER(TEXTURETAG_OFFSETY), real, {0.0f}},
    {PARAMETER(TEXTURETAG_LENGTHX), real, {1.0f}},
    {PARAMETER(TEXTURETAG_LENGTHY), real, {1.0f}},
    {PARAMETER(TEXTURETAG_PROJECTION), integer, {static_cast<float>(P_UVW)}},
    {PARAMETER(TEXTURETAG_RESTRICTION), string},
    {PARAMETER(TEXTURETAG_CAMERA), link},
};
const ParameterPreset motionBlurTag[] = {{PARAMETER(MOTIONBLUR_STRENGTH), real, {1.0f}}};

const ParameterPreset material[] = {
    {PARAMETER(MATERIAL_USE_COLOR), boolean, {1.0f}},
    {PARAMETER(MATERIAL_USE_LUMINANCE), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_TRANSPARENCY), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_REFLECTION), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_ENVIRONMENT), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_FOG), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_BUMP), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_ALPHA), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_SPECULAR), boolean, {1.0f}},
    {PARAMETER(MATERIAL_USE_SPECULARCOLOR), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_GLOW), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_DISPLACEMENT), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_DIFFUSION), boolean, {0.0f}},
    {PARAMETER(MATERIAL_USE_NORMAL), boolean, {0.0f}},
    {PARAMETER(MATERIAL_COLOR_COLOR), vector, {0.8f, 0.8f, 0.8f}},
    {PARAMETER(MATERIAL_COLOR_BRIGHTNESS), real, {1.0f}},
    {PARAMETER(MATERIAL_LUMINANCE_COLOR), vector, {1.0f, 1.0f, 1.0f}},
    {PARAMETER(MATERIAL_LUMINANCE_BRIGHTNESS), real, {1.0f}},
    {PARAMETER(MATERIAL_TRANSPARENCY_COLOR), vector, {1.0f, 1.0f, 1.0f}},
    {PARAMETER(MATERIAL_TRANSPARENCY_BRIGHTNESS), real, {1.0f}},
    {PARAMETER(MATERIAL_TRANSPARENCY_REFRACTION), real, {1.0f}},
    {PARAMETER(MATERIAL_TRANSPARENCY_DISPERSION), real, {0.0f}},
    {PARAMETER(MATERIAL_REFLECTION_COLOR), vector, {1.0f, 1.0f, 1.0f}},
    {PARAMETER(MATERIAL_REFLECTION_BRIGHTNESS), real, {0.2f}},
    {PARAMETER(MATERIAL_REFLECTION_DISPERSION), real, {0.0f}},
    {PARAMETER(MATERIAL_SPECULAR_WIDTH), real, {0.5f}},
    {PARAMETER(MATERIAL_SPECULAR_HEIGHT), real, {0.2f}},
    {PARAMETER(MATERIAL_BUMP_STRENGTH), real, {0.2f}},
    {PARAMETER(MATERIAL_DISPLACEMENT_HEIGHT), real, {10.0f}},
    {PARAMETER(MATERIAL_ALPHA_INVERT), boolean, {0.0f}},
    {PARAMETER(MATERIAL_ILLUMINATION_MODEL), integer, {0.0f}},
    {PARAMETER(MATERIAL_COLOR_SHADER), link},
    {PARAMETER(MATERIAL_LUMINANCE_SHADER), link},
    {PARAMETER(MATERIAL_BUMP_SHADER), link},
    {PARAMETER(MATERIAL_ALPHA_SHADER), link},
    {PARAMETER(MATERIAL_SPECULAR_SHADER), link},
    {PARAMETER(MATERIAL_DISPLACEMENT_SHADER), link},
    {PARAMETER(MATERIAL_NORMAL_SHADER), link},
};
const ParameterPreset bitmapShader[] = {{PARAMETER(BITMAPSHADER_FILENAME), filename}};
const ParameterPreset noiseShader[] = {
    {PARAMETER(NOISE_COLOR1), vector, {0.0f, 0.0f, 0.0f}},
    {PARAMETER(NOISE_COLOR2), vector, {1.0f, 1.0f, 1.0f}},
    {PARAMETER(NOISE_SEED), integer, {665.0f}},
    {PARAMETER(NOISE_OCTAVES), integer, {5.0f}},
    {PARAMETER(NOISE_SCALE), real, {1.0f}},
};
const ParameterPreset gradientShader[] = {
    {PARAMETER(GRADIENT_COLOR1), vector, {0.0f, 0.0f, 0.0f}},
    {PARAMETER(GRADIENT_COLOR2), vector, {1.0f, 1.0f, 1.0f}},
    {PARAMETER(GRADIENT_TYPE), integer, {static_cast<float>(GRADIENT_TYPE_U)}},
    {PARAMETER(GRADIENT_CYCLE), boolean, {0.0f}},
};
const ParameterPreset checkerboardShader[] = {
    {PARAMETER(CHECKERBOARD_COLOR1), vector, {0.0f, 0.0f, 0.0f}},
    {PARAMETER(CHECKERBOARD_COLOR2), vector, {1.0f, 1.0f, 1.0f}},
    {PARAMETER(CHECKERBOARD_FREQUENCY_U), real, {8.0f}},
    {PARAMETER(CHECKERBOARD_FREQUENCY_V), real, {8.0f}},
};
const ParameterPreset fusionShader[] = {
    {PARAMETER(FUSION_MODE), integer, {static_cast<float>(BLEND_NORMAL)}},
    {PARAMETER(FUSION_BLEND), real, {1.0f}},
    {PARAMETER(FUSION_BLEND_CHANNEL), link},
    {PARAMETER(FUSION_MASK_CHANNEL), link},
    {PARAMETER(FUSION_BASE_CHANNEL), link},
};
#define LAYER_PARAMETERS(N)                                                                                  \
    {LAYER_1_SHADER + (N - 1) * LAYER_STEP, "LAYER_" #N "_SHADER", link},                                    \
        {LAYER_1_MODE + (N - 1) * LAYER_STEP, "LAYER_" #N "_MODE", integer, {0.0f}, notStored}, {            \
        LAYER_1_STRENGTH + (N - 1) * LAYER_STEP, "LAYER_" #N "_STRENGTH", real, {1.0f}, notStored            \
    }
const ParameterPreset layerShader[] = {
    LAYER_PARAMETERS(1), LAYER_PARAMETERS(2), LAYER_PARAMETERS(3), LAYER_PARAMETERS(4),
    LAYER_PARAMETERS(5), LAYER_PARAMETERS(6), LAYER_PARAMETERS(7), LAYER_PARAMETERS(8),
};
#undef LAYER_PARAMETERS
const ParameterPreset colorizerShader[] = {
    {PARAMETER(COLORIZER_SHADER), link},
    {PARAMETER(COLORIZER_INPUT), integer, {static_cast<float>(COLORIZER_INPUT_BRIGHTNESS)}},
    {PARAMETER(COLORIZER_COLOR1), vector, {0.0f, 0.0f, 0.0f}},
    {PARAMETER(COLORIZER_COLOR2), vector, {1.0f, 1.0f, 1.0f}},
};

const ParameterPreset renderData[] = {
    {PARAMETER(RDATA_XRES), integer, {800.0f}},
    {PARAMETER(RDATA_YRES), integer, {600.0f}},
    {PARAMETER(RDATA_FRAMERATE), integer, {30.0f}, notStored},
    {PARAMETER(RDATA_FRAMESEQUENCE), integer, {static_cast<float>(RDATA_FRAMESEQUENCE_CURRENTFRAME)}},
    {PARAMETER(RDATA_FRAMEFROM), time},
    {PARAMETER(RDATA_FRAMETO), time},
};

#undef PARAMETER

NodeTypeInfo typeOf(int32_t id, NodeKind kind, const char* name,
                    std::span<const ParameterPreset> presets = {}) {
    NodeTypeInfo type;
    type.id = id;
    type.kind = kind;
    type.name = name;
    type.presets = presets;
    return type;
}

} // namespace

std::span<const NodeTypeInfo> builtinTypes() {
    static const NodeTypeInfo types[] = {
        typeOf(Onull, NodeKind::object, "Null"),
        typeOf(Opolygon, NodeKind::object, "Polygon"),
        typeOf(Oselection, NodeKind::object, "Selection"),
        typeOf(Ocube, NodeKind::object, "Cube", cube),
        typeOf(Osphere, NodeKind::object, "Sphere", sphere),
        typeOf(Odisc, NodeKind::object, "Disc", disc),
        typeOf(Oplane, NodeKind::object, "Plane", plane),
        typeOf(Ocylinder, NodeKind::object, "Cylinder", cylinder),
        typeOf(Ocone, NodeKind::object, "Cone", cone),
        typeOf(Otorus, NodeKind::object, "Torus", torus),
        typeOf(Otube, NodeKind::object, "Tube", tube),
        typeOf(Oinstance, NodeKind::object, "Instance", instance),
        typeOf(Oarray, NodeKind::object, "Array", array),
        typeOf(Osymmetry, NodeKind::object, "Symmetry", symmetry),
        typeOf(Obend, NodeKind::object, "Bend", bend),
        typeOf(Otwist, NodeKind::object, "Twist", strengthOnly),
        typeOf(Otaper, NodeKind::object, "Taper", taper),
        typeOf(Obulge, NodeKind::object, "Bulge", strengthOnly),
        typeOf(Ocamera, NodeKind::object, "Camera", camera),
        typeOf(Olight, NodeKind::object, "Light", light),

        typeOf(Ttexture, NodeKind::tag, "Texture", textureTag),
        typeOf(Tuvw, NodeKind::tag, "UVW"),
        typeOf(Tphong, NodeKind::tag, "Phong", phongTag),
        typeOf(Tpolygonselection, NodeKind::tag, "Polygon Selection"),
        typeOf(Tmotionblur, NodeKind::tag, "Motion Blur", motionBlurTag),

        typeOf(Mmaterial, NodeKind::material, "Mat", material),
        typeOf(Xbitmap, NodeKind::shader, "Bitmap", bitmapShader),
        typeOf(Xnoise, NodeKind::shader, "Noise", noiseShader),
        typeOf(Xgradient, NodeKind::shader, "Gradient", gradientShader),
        typeOf(Xcheckerboard, NodeKind::shader, "Checkerboard", checkerboardShader),
        typeOf(Xfusion, NodeKind::shader, "Fusion", fusionShader),
        typeOf(Xlayer, NodeKind::shader, "Layer", layerShader),
        typeOf(Xcolorizer, NodeKind::shader, "Colorizer", colorizerShader),
        typeOf(ID_RENDERDATA, NodeKind::renderData, "Render Setting", renderData),
    };
    return types;
}

} // namespace headless
