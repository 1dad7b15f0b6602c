// SPDX-License-Identifier: MIT
#include "materials/channels.h"
#include "materials/import_fixture.h"

// What each kind of material, channel and medium of a material file becomes.

namespace {

using ImportMaterial = ImportTest;

/// A parameter of the scene's materials and the channel that it becomes.
struct Parameter {
    const char* kind;
    const char* element;
    ChannelId id;
    int32_t materialKind;
};
const Parameter PARAMETERS[] = {
    {"diffuse", "albedo", ChannelId::ALBEDO, 6025},
    {"diffuse", "bump", ChannelId::BUMP, 6025},
    {"diffuse", "displacement", ChannelId::DISPLACEMENT, 6025},
    {"diffuse", "normal_map", ChannelId::NORMAL_MAP, 6025},
    {"diffuse", "emission", ChannelId::EMISSION, 6025},
    {"oren_nayar", "albedo", ChannelId::ALBEDO, 6026},
    {"oren_nayar", "sigma", ChannelId::SIGMA, 6026},
    {"phong", "diffuse_albedo", ChannelId::ALBEDO, 6027},
    {"phong", "specular_reflectivity", ChannelId::ALBEDO, 6027},
    {"phong", "exponent", ChannelId::EXPONENT, 6027},
    {"phong", "bump", ChannelId::BUMP, 6027},
    {"diffuse_transmitter", "albedo", ChannelId::ALBEDO, 6028},
    {"diffuse_transmitter", "emission", ChannelId::EMISSION, 6028},
    {"specular", "absorption_layer_transmittance", ChannelId::ABSORPTION_LAYER, 6029},
    {"specular", "normal_map", ChannelId::NORMAL_MAP, 6029},
    {"glossy_transparent", "exponent", ChannelId::EXPONENT, 6031},
    {"glossy_transparent", "absorption_layer_transmittance", ChannelId::ABSORPTION_LAYER, 6031},
    {"glossy_transparent", "displacement", ChannelId::DISPLACEMENT, 6031},
    {"blend", "blend", ChannelId::BLEND, 6030},
    {"coating", "absorption", ChannelId::COATING_ABSORPTION, 6300},
    {"coating", "thickness", ChannelId::COATING_THICKNESS, 6300},
    {"coating", "roughness", ChannelId::ROUGHNESS, 6300},
    {"coating", "fresnel_scale", ChannelId::FRESNEL_SCALE, 6300},
    {"coating", "bump", ChannelId::BUMP, 6300},
    {"double_sided_thin", "transmittance", ChannelId::TRANSMITTANCE, 6301},
    {"double_sided_thin", "front_fresnel_scale", ChannelId::FRESNEL_SCALE, 6301},
    {"double_sided_thin", "back_fresnel_scale", ChannelId::BACK_FRESNEL_SCALE, 6301},
    {"double_sided_thin", "front_roughness", ChannelId::ROUGHNESS, 6301},
    {"double_sided_thin", "back_roughness", ChannelId::BACK_ROUGHNESS, 6301},
    {"double_sided_thin", "r_f", ChannelId::R_F, 6301},
    {"double_sided_thin", "emission", ChannelId::EMISSION, 6301},
};

/// A body of one kind, with empty references where the format asks for them, and the plug-in's own presets
/// where the format's are others.
std::string bodyOf(const std::string& kind, const std::string& content, const std::string& textures = "") {
    const std::map<std::string, std::string> references = {
        {"phong", "<ior>1.6</ior>"},
        {"blend", "<a_name></a_name><b_name></b_name>"},
        {"coating", "<substrate_material_name></substrate_material_name>"},
        {"double_sided_thin", "<front_material_name></front_material_name>"
                              "<back_material_name></back_material_name>"}};
    const auto found = references.find(kind);
    return "<" + kind + ">" + textures + (found == references.end() ? "" : found->second) + content + "</" +
           kind + ">";
}
std::string element(const std::string& name, const std::string& content) {
    return "<" + name + ">" + content + "</" + name + ">";
}
std::string textureElement(const std::string& path) {
    return "<texture><path>" + path +
           "</path><a>0.25</a><b>0.5</b><c>-0.75</c><exponent>1.5</exponent><smooth>true</smooth></texture>";
}

TEST_F(ImportMaterial, TexturesAndProgramsOfEveryChannel) {
    const std::string image = addImageFile("wood.png");
    const std::string program = "def eval(vec3 pos) real: 0.5";
    for (const Parameter& parameter : PARAMETERS) {
        SCOPED_TRACE(std::string(parameter.kind) + " " + parameter.element);
        const Channel& target = channel(parameter.id);
        const auto importForm = [&](const std::string& form, const std::string& textures) {
            return importOne(bodyOf(parameter.kind, element(parameter.element, form), textures));
        };
        const std::string textureForm = "<texture><texture_index>1</texture_index></texture>";
        BaseMaterial* made =
            importForm(textureForm, textureElement("other.png") + textureElement("wood.png"));
        ASSERT_TRUE(made);
        EXPECT_EQ(lines(), std::vector<std::string>{"Loaded texture: " + image});
        EXPECT_EQ(data(made).GetLong(MAT_KIND), parameter.materialKind);
        BaseShader* shader = shaderOf(made, target.shader);
        ASSERT_TRUE(shader);
        EXPECT_EQ(shader->GetType(), Xbitmap);
        EXPECT_EQ(data(shader).GetFilename(BITMAPSHADER_FILENAME).GetUtf8(), image);
        EXPECT_TRUE(data(made).GetBool(target.enable));
        EXPECT_EQ(data(made).GetReal(target.textureGamma), 1.5f);
        EXPECT_EQ(data(made).GetReal(target.a), 0.25f);
        EXPECT_EQ(data(made).GetReal(target.b), 0.5f);
        EXPECT_EQ(data(made).GetReal(target.c), -0.75f);
        // The exponent's flag ends up as the bump's.
        const bool isExponent = parameter.id == ChannelId::EXPONENT;
        EXPECT_EQ(data(made).GetBool(6289), false);
        EXPECT_EQ(data(made).GetBool(6287), isExponent || parameter.id == ChannelId::BUMP);
        if (target.smooth != 0 && !isExponent) {
            EXPECT_TRUE(data(made).GetBool(target.smooth));
        }

        made = importForm("<texture><texture_index>0</texture_index></texture>", textureElement("gone.png"));
        EXPECT_EQ(lines(),
                  std::vector<std::string>{"Failed to load texture from: " + folder() + "/gone.png"});
        EXPECT_EQ(changes(made), std::string(parameter.element) == "specular_reflectivity" ? "6039=1" : "");

        made = importForm("<shader><shader>" + program + "</shader></shader>", "");
        shader = shaderOf(made, target.shader);
        ASSERT_TRUE(shader);
        EXPECT_EQ(shader->GetType(), PLUGINID_QSL_SHADER);
        EXPECT_EQ(data(shader).GetString(1405), String(program));
        EXPECT_TRUE(data(made).GetBool(target.enable));
        EXPECT_TRUE(lines().empty());
        EXPECT_TRUE(host().messages().empty());
    }
}

const char* const RGB = "<rgb><rgb>0.5 4 2</rgb><gamma>1.5</gamma></rgb>";
const char* const DARK_RGB = "<rgb><rgb>0.25 1 0.5</rgb><gamma>1.5</gamma></rgb>";
const char* const BLACKBODY = "<blackbody><temperature>4000</temperature><gain>0.5</gain></blackbody>";
const char* const UNIFORM = "<uniform><value>0.25</value></uniform>";
const char* const PEAK = "<peak><peak_min>450</peak_min><peak_width>50</peak_width><peak_value>2</peak_value>"
                         "<base_value>0.125</base_value></peak>";
const char* const TABULATED =
    "<regular_tabulated><start_wavelength>3.8e-7</start_wavelength><end_wavelength>7.2e-7</end_wavelength>"
    "<num_values>3</num_values><values>0.5 0.1234567 20</values></regular_tabulated>";

struct ConstantCase {
    const char* kind;
    const char* element;
    const char* constant;
    const char* changes;
    /// Up to the material's name; "" for none.
    const char* warning;
};
const ConstantCase CONSTANTS[] = {
    {"diffuse", "albedo", RGB, "6081=1f 6114=(0.5,4,2) 6115=1.5f", ""},
    {"diffuse", "albedo", UNIFORM, "6081=1f 6114=(0.25,0.25,0.25) 6115=1f", ""},
    {"diffuse", "albedo", BLACKBODY, "", "Albedo blackbody spectrum"},
    {"diffuse", "albedo", TABULATED, "", "Albedo tabulated spectrum"},
    {"diffuse", "albedo", PEAK, "", "Albedo peak spectrum"},
    {"phong", "diffuse_albedo", UNIFORM, "6081=1f 6114=(0.25,0.25,0.25) 6115=1f", ""},
    {"phong", "specular_reflectivity", UNIFORM, "6039=1 6081=1f 6114=(0.25,0.25,0.25) 6115=1f", ""},
    {"specular", "absorption_layer_transmittance", RGB, "6271=(0.5,4,2) 6272=1f 6273=1.5f 6280=1", ""},
    {"specular", "absorption_layer_transmittance", UNIFORM, "6271=(0.25,0.25,0.25) 6272=1f 6273=1f 6280=1",
     ""},
    {"specular", "absorption_layer_transmittance", BLACKBODY, "", "Absorption layer blackbody spectrum"},
    {"specular", "absorption_layer_transmittance", TABULATED, "", "Absorption layer spectrum"},
    {"specular", "absorption_layer_transmittance", PEAK, "", "Absorption layer spectrum"},
    {"diffuse", "emission", RGB, "", "Emission RGB spectrum"},
    {"diffuse", "emission", BLACKBODY, "", "Emission blackbody spectrum"},
    {"diffuse", "emission", UNIFORM, "", "Emission uniform spectrum"},
    {"diffuse", "emission", TABULATED, "", "Emission tabulated spectrum"},
    {"diffuse", "emission", PEAK, "", "Emission peak spectrum"},
    {"diffuse", "base_emission", RGB, "6007=1 6060=(0.125,1,0.5) 6061=1.5f 6089=4f", ""},
    {"diffuse", "base_emission", DARK_RGB, "6007=1 6060=(0.25,1,0.5) 6061=1.5f 6089=1f", ""},
    {"diffuse", "base_emission", BLACKBODY, "6007=1 6057=6105 6062=4000f 6063=0.5f", ""},
    {"diffuse", "base_emission", UNIFORM, "6007=1 6057=6107 6245=0.25f", ""},
    {"diffuse", "base_emission", PEAK, "6007=1 6057=6106 6254=450f 6255=50f 6256=2f 6257=0.125f", ""},
    {"diffuse", "base_emission", TABULATED,
     "6007=1 6057=6108 6241=380f 6242=720f 6243='0.500000 0.123457 20.000000 '", ""},
    {"diffuse", "bump", "0.5", "", "Bump constant"},
    {"diffuse", "displacement", "0.5", "", "Displacement constant"},
    {"phong", "exponent", "250", "6008=1 6040=250f", ""},
    {"oren_nayar", "sigma", "0.5", "6009=1 6079=0.5f", ""},
    {"blend", "blend", "0.25", "6260=0.25f", ""},
    {"coating", "thickness", "500", "6310=1 11021=500f", ""},
    {"coating", "roughness", "0.5", "6311=1 12021=0.5f", ""},
    {"coating", "fresnel_scale", "0.5", "6315=1 13021=0.5f", ""},
    {"double_sided_thin", "back_fresnel_scale", "0.75", "6316=1 14021=0.75f", ""},
    {"double_sided_thin", "back_roughness", "0.75", "6317=1 15021=0.75f", ""},
    {"double_sided_thin", "r_f", "0.25", "6319=1 17021=0.25f", ""},
    {"coating", "absorption", RGB, "6307=1 10001=6104 10003=(0.125,1,0.5) 10004=4f 10005=1.5f", ""},
    {"coating", "absorption", BLACKBODY, "6307=1 10001=6105 10007=4000f 10008=0.5f", ""},
    {"coating", "absorption", PEAK, "6307=1 10001=6106 10011=50f 10012=2f 10013=0.125f", ""},
    {"coating", "absorption", UNIFORM, "6307=1 10015=0.25f", ""},
    {"coating", "absorption", TABULATED, "", ""},
    {"double_sided_thin", "transmittance", DARK_RGB,
     "6318=1 16001=6104 16003=(0.25,1,0.5) 16004=1f 16005=1.5f", ""},
    {"double_sided_thin", "transmittance", TABULATED, "", ""},
};

TEST_F(ImportMaterial, ConstantsOfEveryChannel) {
    for (const ConstantCase& entry : CONSTANTS) {
        SCOPED_TRACE(std::string(entry.kind) + " " + entry.element + " " + entry.constant);
        const size_t messagesBefore = host().messages().size();
        BaseMaterial* const made =
            importOne(bodyOf(entry.kind, element(entry.element, element("constant", entry.constant))));
        ASSERT_TRUE(made);
        EXPECT_EQ(changes(made), entry.changes);
        if (*entry.warning) {
            EXPECT_EQ(lastMessage(), "Import warnings:\n- " + std::string(entry.warning) +
                                         " in Material \"M\" not supported.");
        } else {
            EXPECT_EQ(host().messages().size(), messagesBefore);
        }
        EXPECT_TRUE(lines().empty());
    }
}

TEST_F(ImportMaterial, FieldsOfEveryKind) {
    const struct {
        std::string body;
        const char* changes;
    } cases[] = {
        {"<diffuse><layer>3</layer></diffuse>", "6090=3"},
        {"<phong><ior>1.25</ior><nk_data>nkdata/AU.NK</nk_data></phong>", "6038=1.25f 6144=1 6299=39"},
        {"<phong><ior>1.5</ior><nk_data>C:\\nk\\Ag.nk</nk_data></phong>", "6038=1.5f 6144=1 6299=0"},
        {"<phong><ior>1.5</ior><nk_data>unobtainium.nk</nk_data></phong>", "6038=1.5f 6144=1"},
        {"<specular><transparent>false</transparent><private_data>&lt;x&gt;</private_data></specular>",
         "6049=0 6329='<x>'"},
        {bodyOf("blend", "<step_blend>true</step_blend>"), "6261=1"},
        {bodyOf("coating", "<ior>1.75</ior><interference>true</interference>"), "6304=1.75f 6305=1"},
        // Neither is taken over.
        {"<diffuse></diffuse><backface_emit>true</backface_emit><shadow_catcher>true</shadow_catcher>", ""},
    };
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.body);
        BaseMaterial* const made = importOne(entry.body);
        ASSERT_TRUE(made) << ::testing::PrintToString(lines());
        EXPECT_EQ(changes(made), entry.changes);
    }
}

TEST_F(ImportMaterial, Media) {
    const auto volume = [](const char* name, const std::string& spectrum) {
        return element(name, element("constant", spectrum));
    };
    const auto scattering = [&](const std::string& content) {
        return "<basic><subsurface_scattering>" + content + "</subsurface_scattering></basic>";
    };
    // Of a basic medium without more.
    const std::string ior = "<ior>1.25</ior><cauchy_b_coeff>0.5</cauchy_b_coeff>";
    const struct {
        std::string medium;
        const char* changes;
    } cases[] = {
        {"<basic>" + ior + "</basic>", "6045=3 6046=1.25f 6047=0.5f"},
        {"<basic>" + ior + volume("absorption_coefficient", RGB) + "</basic>",
         "6045=3 6046=1.25f 6047=0.5f 6129=(0.875,0,0.5) 6130=1.5f 6216=4f"},
        {"<basic>" + ior + volume("absorption_coefficient", BLACKBODY) + "</basic>",
         "6045=3 6046=1.25f 6047=0.5f 6210=6105 6224=4000f 6225=0.5f"},
        {"<basic>" + ior + volume("absorption_coefficient", PEAK) + "</basic>",
         "6045=3 6046=1.25f 6047=0.5f 6210=6106 6246=450f 6247=50f 6248=2f 6249=0.125f"},
        {"<basic>" + ior + volume("absorption_coefficient", UNIFORM) + "</basic>",
         "6045=3 6046=1.25f 6047=0.5f 6210=6107 6228=0.25f"},
        {"<basic>" + ior + volume("absorption_coefficient", TABULATED) + "</basic>",
         "6045=3 6046=1.25f 6047=0.5f 6210=6108 6230=380 6231=720 6232='0.500000 0.123457 20.000000 '"},
        // A flag that is a number, and a colour that is turned round though the export doesn't turn it.
        {scattering(volume("scattering_coefficient", DARK_RGB) +
                    "<phase_function><uniform></uniform></phase_function>"),
         "6045=3 6048=1f 6133=(0.75,0,0.5) 6134=1.5f 6217=6104"},
        {scattering(volume("scattering_coefficient", UNIFORM) + "<phase_function><henyey_greenstein>" +
                    volume("g_spectrum", DARK_RGB) + "</henyey_greenstein></phase_function>"),
         "6045=3 6048=1f 6136=6138 6141=(0.25,1,0.5) 6142=1.5f 6229=0.25f"},
        {scattering(volume("scattering_coefficient", BLACKBODY)),
         "6045=3 6048=1f 6217=6105 6226=4000f 6227=0.5f"},
        {scattering(volume("scattering_coefficient", PEAK)),
         "6045=3 6048=1f 6217=6106 6250=450f 6251=50f 6252=2f 6253=0.125f"},
        {scattering(volume("scattering_coefficient", TABULATED)),
         "6045=3 6048=1f 6217=6108 6234=380 6235=720 6236='0.500000 0.123457 20.000000 '"},
        {"<dermis><hemoglobin_fraction>0.25</hemoglobin_fraction></dermis>", "6041=6043 6045=3 6126=0.25f"},
        {"<epidermis><melanin_fraction>0.5</melanin_fraction>"
         "<melanin_type_blend>0.25</melanin_type_blend></epidermis>",
         "6041=6044 6045=3 6127=0.5f 6128=0.25f"},
        {"<atmosphere><center>1 2 3</center><turbidity>2.5</turbidity></atmosphere>",
         "6041=6283 6045=3 6284=2.5f 6285=(1,3,2)"},
    };
    for (const auto& entry : cases) {
        for (const char* const kind : {"specular", "glossy_transparent", "diffuse_transmitter"}) {
            SCOPED_TRACE(entry.medium + kind);
            clear();
            ASSERT_TRUE(import("<medium><uid>7</uid><name>In</name><precedence>3</precedence>" +
                               entry.medium + "</medium>" +
                               material("M", element(kind, "<internal_medium_uid>7</internal_medium_uid>"))))
                << ::testing::PrintToString(lines());
            std::string changed = changes(document()->GetFirstMaterial());
            // An index of refraction and what isn't told are the scene's own presets.
            if (entry.medium.starts_with("<basic><sub")) {
                const size_t at = changed.find(" 6046=");
                const size_t end = changed.find(" 6048=");
                ASSERT_LT(at, end);
                changed.erase(at, end - at);
            }
            EXPECT_EQ(changed, entry.changes);
        }
    }
}

} // namespace
