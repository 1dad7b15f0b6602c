// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers of the host: types of nodes, parameters and flags. Documents store them.

/// The host's interface version that the plug-in is written against; older hosts are refused.
inline constexpr int32_t API_VERSION = 11000;

enum NodeType : int32_t {
    // Base types, for IsInstanceOf.
    Obase = 5155,
    Tbase = 5694,
    Mbase = 5702,
    Xbase = 5707,
    VPbase = 100002,

    ID_DOCUMENT = 100001,
    ID_RENDERDATA = 100003,
    ID_LAYER = 100004,

    Opolygon = 5100,
    Olight = 5102,
    Ocamera = 5103,
    Oinstance = 5126,
    Obend = 5128,
    Otwist = 5134,
    Otaper = 5131,
    Obulge = 5129,
    Onull = 5140,
    Osymmetry = 5142,
    Oarray = 5150,
    Ocube = 5159,
    Osphere = 5160,
    Ocone = 5162,
    Otorus = 5163,
    Odisc = 5164,
    Otube = 5165,
    Oplane = 5168,
    Ocylinder = 5170,
    /// Yields no geometry of its own, only its children do.
    Oselection = 1011146,

    Tpoint = 5600,
    Tpolygon = 5604,
    Tphong = 5612,
    Ttexture = 5616,
    Tmotionblur = 5636,
    Tuvw = 5671,
    Tpolygonselection = 5673,

    Mmaterial = 5703,
    Xbitmap = 5833,
};

enum ShaderParameter : int32_t {
    /// Of the bitmap shader: the image file.
    BITMAPSHADER_FILENAME = 1000,
};

/// Parameters of the standard material, Mmaterial. Colours are multiplied by their brightness.
enum MaterialParameter : int32_t {
    /// Strength of the bump, of 1 for 100 %.
    MATERIAL_BUMP_STRENGTH = 1009,
    MATERIAL_TRANSPARENCY_REFRACTION = 1005,
    MATERIAL_ALPHA_INVERT = 1014,
    MATERIAL_SPECULAR_WIDTH = 1016,
    MATERIAL_SPECULAR_HEIGHT = 1017,
    /// Document units.
    MATERIAL_DISPLACEMENT_HEIGHT = 1025,
    /// 2 is Oren-Nayar.
    MATERIAL_ILLUMINATION_MODEL = 1134,
    MATERIAL_ILLUMINATION_MODEL_ORENNAYAR = 2,
    MATERIAL_COLOR_COLOR = 2100,
    MATERIAL_COLOR_BRIGHTNESS = 2101,
    MATERIAL_LUMINANCE_COLOR = 2300,
    MATERIAL_LUMINANCE_BRIGHTNESS = 2301,
    MATERIAL_TRANSPARENCY_COLOR = 2400,
    MATERIAL_TRANSPARENCY_BRIGHTNESS = 2401,
    MATERIAL_REFLECTION_COLOR = 2500,
    MATERIAL_REFLECTION_BRIGHTNESS = 2501,
    MATERIAL_COLOR_SHADER = 8000,
    MATERIAL_LUMINANCE_SHADER = 8002,
    MATERIAL_BUMP_SHADER = 8006,
    MATERIAL_ALPHA_SHADER = 8007,
    MATERIAL_SPECULAR_SHADER = 8008,
    MATERIAL_DISPLACEMENT_SHADER = 8009,
    MATERIAL_NORMAL_SHADER = 8012,
    /// Blurriness, 0 to 1.
    MATERIAL_TRANSPARENCY_DISPERSION = 8020,
    MATERIAL_REFLECTION_DISPERSION = 8021,
};

/// Bits of a node's info flags.
enum NodeBits : int32_t {
    /// The object is input of a generator.
    BIT_CONTROLOBJECT = 0x200,
    /// The node is selected.
    BIT_ACTIVE = 2,
    /// The material is used: the removal of unused materials leaves it. It shares its number with the
    /// disabled bit of
    /// video posts.
    BIT_MATERIALUSED = 4,
    /// The video post is disabled.
    BIT_VPDISABLED = 4,
};

enum RenderMode : int32_t { MODE_ON = 0, MODE_OFF = 1, MODE_UNDEF = 2 };

enum ObjectParameter : int32_t {
    LIGHT_COLOR = 90000,
    LIGHT_BRIGHTNESS = 90001,
    LIGHT_TYPE = 90002,
    LIGHT_TYPE_OMNI = 0,
    LIGHT_TYPE_SPOT = 1,
    LIGHT_TYPE_AREA = 8,
    LIGHT_AREADETAILS_SIZEX = 100010,
    LIGHT_AREADETAILS_SIZEY = 100011,
    LIGHT_AREADETAILS_SIZEZ = 100012,
    LIGHT_AREADETAILS_SHAPE = 100015,
    LIGHT_AREADETAILS_SHAPE_DISC = 0,
    LIGHT_AREADETAILS_SHAPE_RECTANGLE = 1,
    LIGHT_AREADETAILS_SHAPE_SPHERE = 2,
    LIGHT_AREADETAILS_SHAPE_CYLINDER = 3,
    LIGHT_AREADETAILS_SHAPE_CUBE = 4,
    LIGHT_AREADETAILS_SHAPE_HEMISPHERE = 5,
    LIGHT_AREADETAILS_SHAPE_OBJECT = 6,
    LIGHT_AREADETAILS_OBJECT = 100014,

    INSTANCEOBJECT_LINK = 1001,
    INSTANCEOBJECT_RENDERINSTANCE = 1002,

    PRIM_CUBE_SIZE = 1100,

    PRIM_SPHERE_RAD = 1110,
    PRIM_SPHERE_SUB = 1111,
    PRIM_SPHERE_TYPE = 1112,
    PRIM_SPHERE_TYPE_HEMISPHERE = 5,
    PRIM_SPHERE_PERFECT = 1113,

    PRIM_DISC_RAD = 1161,
    PRIM_DISC_SUB = 1162,
    PRIM_DISC_SEG = 1163,

    PRIM_PLANE_WIDTH = 1230,
    PRIM_PLANE_HEIGHT = 1231,
    PRIM_PLANE_SUBW = 1232,
    PRIM_PLANE_SUBH = 1233,

    /// Direction of a primitive's axis: 0 +X, 1 -X, 2 +Y, 3 -Y, 4 +Z, 5 -Z.
    PRIM_AXIS = 1300,
    PRIM_AXIS_PLUS_Z = 4,

    PRIM_CYLINDER_RADIUS = 5000,
    PRIM_CYLINDER_HEIGHT = 5005,
    PRIM_CYLINDER_SEG = 5008,
};

enum CameraParameter : int32_t {
    /// A parallel camera sees 1024 document units divided by the zoom across.
    CAMERA_ZOOM = 1000,
    CAMERA_PROJECTION = 1001,
    CAMERA_PROJECTION_PARALLEL = 1,
    /// Width of the film in millimetres.
    CAMERA_APERTURE = 1006,
    /// Horizontal field of view in radians.
    CAMERA_FOV = 1008,
    CAMERA_TARGET_DISTANCE = 1010,
    /// In widths and heights of the film.
    CAMERA_FILM_OFFSET_X = 1118,
    CAMERA_FILM_OFFSET_Y = 1119,
};

enum TagParameter : int32_t {
    TEXTURETAG_OFFSETX = 1000,
    TEXTURETAG_OFFSETY = 1001,
    TEXTURETAG_LENGTHX = 1002,
    TEXTURETAG_LENGTHY = 1003,
    TEXTURETAG_PROJECTION = 1004,
    TEXTURETAG_RESTRICTION = 1006,

    PHONGTAG_PHONG_ANGLELIMIT = 1001,
    PHONGTAG_PHONG_ANGLE = 1002,
    PHONGTAG_PHONG_USEEDGES = 1003,

    MOTIONBLUR_STRENGTH = 1000,
};

enum TextureProjection : int32_t {
    P_SPHERICAL = 0,
    P_CYLINDRICAL = 1,
    P_FLAT = 2,
    P_CUBIC = 3,
    P_FRONTAL = 4,
    P_SPATIAL = 5,
    P_UVW = 6,
    P_SHRINKWRAP = 7,
    P_CAMERAMAP = 8,
};

enum RenderDataParameter : int32_t {
    RDATA_FRAMEADVANCE = 5002,
    RDATA_FRAMERATE = 5004,
    RDATA_XRES = 5008,
    RDATA_YRES = 5009,
    RDATA_FRAMESEQUENCE = 5011,
    RDATA_FRAMEFROM = 5012,
    RDATA_FRAMETO = 5013,
    /// Number of the video post that renders; 0 and 1 are the host's own engines.
    RDATA_RENDERENGINE = 5300,
};

enum FrameSequence : int32_t {
    RDATA_FRAMESEQUENCE_MANUAL = 0,
    RDATA_FRAMESEQUENCE_CURRENTFRAME = 1,
    RDATA_FRAMESEQUENCE_ALLFRAMES = 2,
    RDATA_FRAMESEQUENCE_PREVIEWRANGE = 3,
};

enum WorldPreference : int32_t {
    /// Unit of documents without one of their own: 1 kilometres, 2 metres, 3 centimetres, 4 millimetres.
    WPREF_UNITS_BASIC = 10000,
};
