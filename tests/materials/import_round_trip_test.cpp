// SPDX-License-Identifier: MIT
#include "host/ids.h"
#include "materials/file_names.h"
#include "materials/import_fixture.h"
#include "reading/scene_parser.h"
#include "scene/ostream.h"
#include "scene/scene_node_material.h"
#include "scene/xml_write_options.h"

// Materials of a file against what the export writes of the imported ones: what is the same, and what isn't.

namespace {

class ImportRoundTrip : public ImportTest {
protected:
    /// Materials and media by their names, each in the exporter's own form, references by name.
    using Nodes = std::map<std::string, std::string>;

    Nodes nodesOf(const Quenza::SceneNodeRoot& root) const {
        Nodes nodes;
        Quenza::XMLWriteOptions options;
        options.write_uids = false;
        for (const Quenza::Ref<Quenza::SceneNode>& node : root.getChildren()) {
            Quenza::BufferOStream stream;
            node->writeToXML(stream, 0, options);
            nodes[node->getName().toStdString()] = replaceAll(String(stream.getBuffer().toStdString()),
                                                              String(Quenza::nativeText(folder() + "/")), "")
                                                       .GetUtf8();
        }
        return nodes;
    }

    Nodes read(const std::string& elements) const {
        const std::string file = folder() + "/read.qzm";
        Quenza::writeBytes(file, "<scenedata>" + elements + "</scenedata>");
        Quenza::Ref<Quenza::SceneNodeRoot> root;
        Quenza::QuenzaModelParser().parseMaterialFile(root, file);
        return nodesOf(*root);
    }

    Nodes exportAfterImport(const std::string& elements) {
        clear();
        endExport();
        EXPECT_TRUE(import(elements)) << ::testing::PrintToString(lines());
        for (BaseMaterial* made = document()->GetFirstMaterial(); made; made = made->GetNext()) {
            exportMaterial(made);
        }
        // Binds the references, so that they can be written by name.
        scene().finalise(folder());
        Nodes nodes = nodesOf(scene());
        nodes.erase("nullMat");
        return nodes;
    }
};

std::string constant(const std::string& content) {
    return "<constant>" + content + "</constant>";
}
std::string rgb(const std::string& colour, const std::string& gamma = "1.5") {
    return constant("<rgb><rgb>" + colour + "</rgb><gamma>" + gamma + "</gamma></rgb>");
}
std::string uniform(const std::string& value) {
    return constant("<uniform><value>" + value + "</value></uniform>");
}
std::string useTexture(int index) {
    return "<texture><texture_index>" + std::to_string(index) + "</texture_index></texture>";
}
std::string texture(const std::string& file, bool smooth = false, const std::string& more = "",
                    const std::string& generation = "<uv><matrix>1 0 0 1</matrix>"
                                                    "<translation>0 0</translation></uv>") {
    return "<texture><path>" + file + "</path><a>0.25</a><b>0.5</b><c>-1</c><exponent>1.5</exponent>" + more +
           "<tex_coord_generation>" + generation + "</tex_coord_generation><smooth>" +
           (smooth ? "true" : "false") + "</smooth></texture>";
}
std::string program(const std::string& code, const std::string& more = "") {
    return "<shader>" + more + "<shader>" + code + "</shader></shader>";
}
std::string whole(const std::string& name, const std::string& kind, const std::string& content,
                  const std::string& behind = "") {
    return "<material><name>" + name + "</name><" + kind + ">" + content + "</" + kind + ">" + behind +
           "</material>";
}
std::string medium(const std::string& name, const std::string& content) {
    return "<medium><name>" + name + "</name><precedence>3</precedence>" + content + "</medium>";
}
std::string basic(const std::string& absorption, const std::string& more = "") {
    return "<basic><ior>1.25</ior><cauchy_b_coeff>0.5</cauchy_b_coeff><absorption_coefficient>" + absorption +
           "</absorption_coefficient>" + more + "</basic>";
}
std::string inside(const std::string& name) {
    return "<internal_medium_name>" + name + "</internal_medium_name>";
}
/// The albedo that a new material has.
const std::string GREY = "<albedo>" +
                         rgb("0.800000011920929 0.800000011920929 0.800000011920929", "2.200000047683716") +
                         "</albedo>";
const std::string ALBEDO = "<albedo>" + rgb("0.5 0.25 1") + "</albedo>";
const std::string BLACKBODY =
    constant("<blackbody><temperature>4000</temperature><gain>0.5</gain></blackbody>");
const std::string PEAK = constant("<peak><peak_min>450</peak_min><peak_width>50</peak_width>"
                                  "<peak_value>2</peak_value><base_value>0.125</base_value></peak>");

/// From 400 to 700 nanometres as the export makes metres of them.
std::string table(const std::string& values) {
    return constant(
        "<regular_tabulated><start_wavelength>4.0000000000000003e-7</start_wavelength>"
        "<end_wavelength>7.000000000000001e-7</end_wavelength><num_values>3</num_values><values>" +
        values + "</values></regular_tabulated>");
}

TEST_F(ImportRoundTrip, KeepsWhatTheMaterialHasAPlaceFor) {
    addImageFile("a.png");
    addImageFile("b.png");
    const std::string cases[] = {
        whole("Wall", "diffuse",
              texture("a.png") + texture("b.png", true) + "<albedo>" + useTexture(0) + "</albedo><bump>" +
                  useTexture(1) + "</bump>"),
        whole("Glow", "diffuse",
              ALBEDO + "<base_emission>" + rgb("0.5 4 2") + "</base_emission><emission>" +
                  program("def eval(vec3 pos) vec3: pos") + "</emission>"),
        whole("Table", "diffuse", ALBEDO + "<base_emission>" + table("0.5 0.125 20 ") + "</base_emission>"),
        whole("Black", "diffuse", ALBEDO + "<base_emission>" + BLACKBODY + "</base_emission>"),
        whole("Clay", "oren_nayar",
              ALBEDO + "<sigma>" + constant("0.25") + "</sigma><base_emission>" + PEAK + "</base_emission>"),
        whole("Metal", "phong",
              "<specular_reflectivity>" + rgb("4 0.25 1") + "</specular_reflectivity><exponent>" +
                  constant("250") + "</exponent><ior>1.25</ior><nk_data>nkdata/Au.nk</nk_data>"),
        medium("MedLeaf", basic(uniform("0.25"))) +
            whole("Leaf", "diffuse_transmitter", ALBEDO + inside("MedLeaf")),
        medium("MedGlass", basic(rgb("0.5 4 2"), "<subsurface_scattering><scattering_coefficient>" + PEAK +
                                                     "</scattering_coefficient><phase_function>"
                                                     "<henyey_greenstein><g_spectrum>" +
                                                     rgb("0.25 0.5 0.75") +
                                                     "</g_spectrum></henyey_greenstein></phase_function>"
                                                     "</subsurface_scattering>")) +
            whole("Glass", "specular",
                  inside("MedGlass") +
                      "<transparent>false</transparent>"
                      "<absorption_layer_transmittance>" +
                      rgb("0.5 2 1") + "</absorption_layer_transmittance><private_data>x</private_data>"),
        medium("MedFrost", "<dermis><hemoglobin_fraction>0.25</hemoglobin_fraction></dermis>") +
            whole("Frost", "glossy_transparent",
                  inside("MedFrost") + "<exponent>" + program("def eval(vec3 pos) real: 5.0") +
                      "</exponent>"),
        medium("MedAir", "<atmosphere><center>1 2 3</center><turbidity>2.5</turbidity></atmosphere>") +
            whole("Air", "specular", inside("MedAir")),
        whole("A", "diffuse", ALBEDO) + whole("B", "oren_nayar", ALBEDO) +
            whole("Mix", "blend",
                  "<a_name>A</a_name><b_name>B</b_name><blend>" + constant("0.25") +
                      "</blend><step_blend>true</step_blend>") +
            whole("Lacquer", "coating",
                  "<absorption>" + rgb("0.5 4 2") + "</absorption><thickness>" + constant("500") +
                      "</thickness><roughness>" + constant("0.5") + "</roughness><fresnel_scale>" +
                      constant("0.75") +
                      "</fresnel_scale><ior>1.75</ior><interference>true</interference>"
                      "<substrate_material_name>Mix</substrate_material_name>") +
            whole("Sheet", "double_sided_thin",
                  "<front_material_name>A</front_material_name><back_material_name>B</back_material_name>"
                  "<r_f>" +
                      constant("0.25") + "</r_f><transmittance>" + uniform("0.75") +
                      "</transmittance><front_roughness>" + constant("0.5") +
                      "</front_roughness><back_roughness>" + constant("0.25") +
                      "</back_roughness><front_fresnel_scale>" + constant("0.5") +
                      "</front_fresnel_scale><back_fresnel_scale>" + constant("0.125") +
                      "</back_fresnel_scale>"),
    };
    for (const std::string& file : cases) {
        EXPECT_EQ(exportAfterImport(file), read(file));
        EXPECT_TRUE(host().messages().empty());
    }
}

struct Loss {
    const char* what;
    std::string imported;
    std::string exported;
};

TEST_F(ImportRoundTrip, LosesWhatTheMaterialHasNoPlaceFor) {
    addImageFile("a.png");
    addImageFile("b.png");
    const std::string phase = "<phase_function><uniform></uniform></phase_function>";
    const auto scattering = [](const std::string& content) {
        return "<subsurface_scattering>" + content + "</subsurface_scattering>";
    };
    const auto scattered = [](const std::string& spectrum) {
        return "<scattering_coefficient>" + spectrum + "</scattering_coefficient>";
    };
    const auto glass = [](const std::string& content) {
        return medium("MedM", content) + whole("M", "specular", inside("MedM"));
    };
    const std::string presetMedium =
        "<medium><name>MedM</name><precedence>10</precedence><basic><ior>1.600000023841858</ior>"
        "<cauchy_b_coeff>0</cauchy_b_coeff><absorption_coefficient>" +
        rgb("0 0 0", "1") + "</absorption_coefficient></basic></medium>";
    const std::string wall = whole("M", "diffuse", ALBEDO);
    const Loss losses[] = {
        {"flags behind the body",
         whole("M", "diffuse", ALBEDO,
               "<backface_emit>true</backface_emit><shadow_catcher>true</shadow_catcher>"),
         wall},
        {"light layers that the document hasn't", whole("M", "diffuse", ALBEDO + "<layer>3</layer>"), wall},
        {"the lack of an albedo", whole("M", "diffuse", ""), whole("M", "diffuse", GREY)},
        {"an albedo's other spectra", whole("M", "diffuse", "<albedo>" + BLACKBODY + "</albedo>"),
         whole("M", "diffuse", GREY)},
        {"a uniform albedo's form", whole("M", "diffuse", "<albedo>" + uniform("0.5") + "</albedo>"),
         whole("M", "diffuse", "<albedo>" + rgb("0.5 0.5 0.5", "1") + "</albedo>")},
        {"constants of emission and relief",
         whole("M", "diffuse",
               ALBEDO + "<emission>" + uniform("1") + "</emission><bump>" + constant("1") +
                   "</bump><displacement>" + constant("1") + "</displacement>"),
         wall},
        {"textures of the base emission",
         whole("M", "diffuse",
               texture("a.png") + ALBEDO + "<base_emission>" + useTexture(0) + "</base_emission>"),
         wall},
        {"decimals",
         whole("M", "diffuse", ALBEDO + "<base_emission>" + table("0.12345678 1 1") + "</base_emission>"),
         whole("M", "diffuse", ALBEDO + "<base_emission>" + table("0.123457 1 1") + "</base_emission>")},
        {"double precision", whole("M", "oren_nayar", ALBEDO + "<sigma>" + constant("0.1") + "</sigma>"),
         whole("M", "oren_nayar", ALBEDO + "<sigma>" + constant("0.10000000149011612") + "</sigma>")},
        {"a Phong's fresnel scale and measured data of other names",
         whole("M", "phong",
               "<diffuse_albedo>" + rgb("1 1 1") + "</diffuse_albedo><fresnel_scale>" + constant("0.5") +
                   "</fresnel_scale><ior>1.5</ior><nk_data>mine.nk</nk_data>"),
         whole("M", "phong",
               "<diffuse_albedo>" + rgb("1 1 1") +
                   "</diffuse_albedo><ior>1.5</ior><nk_data>nkdata/Al.nk</nk_data>")},
        {"an exponent's smooth flag, which the bump gets",
         whole("M", "phong",
               texture("a.png", true) + texture("b.png", false) + "<diffuse_albedo>" + rgb("1 1 1") +
                   "</diffuse_albedo><exponent>" + useTexture(0) + "</exponent><ior>1.5</ior>"),
         whole("M", "phong",
               texture("a.png", false) + "<diffuse_albedo>" + rgb("1 1 1") + "</diffuse_albedo><exponent>" +
                   useTexture(0) + "</exponent><ior>1.5</ior>")},
        {"mappings of textures, smooth colours and the sharing of textures",
         whole("M", "diffuse",
               texture("a.png", true, "<uv_set_index>2</uv_set_index>",
                       "<uv><matrix>2 0 0 2</matrix><translation>1 0</translation></uv>") +
                   "<albedo>" + useTexture(0) + "</albedo><bump>" + useTexture(0) + "</bump>"),
         whole("M", "diffuse",
               texture("a.png", false) + texture("a.png", true) + "<albedo>" + useTexture(0) +
                   "</albedo><bump>" + useTexture(1) + "</bump>")},
        {"missing textures",
         whole("M", "diffuse", texture("gone.png") + "<albedo>" + useTexture(0) + "</albedo>"),
         whole("M", "diffuse", GREY)},
        {"what programs share, and their textures",
         whole("M", "diffuse",
               "<albedo>" + program("def eval(vec3 pos) vec3: pos", texture("a.png")) + "</albedo>",
               "<shared_shader_info><shader>def half() real: 0.5</shader></shared_shader_info>"),
         whole("M", "diffuse", "<albedo>" + program("def eval(vec3 pos) vec3: pos") + "</albedo>")},
        {"tables of numbered channels",
         whole("A", "diffuse", ALBEDO) +
             whole("M", "coating",
                   "<substrate_material_name>A</substrate_material_name><absorption>" + table("1 1 1") +
                       "</absorption>"),
         whole("A", "diffuse", ALBEDO) +
             whole("M", "coating", "<substrate_material_name>A</substrate_material_name>")},
        {"the lack of a medium", whole("M", "specular", ""),
         presetMedium + whole("M", "specular", inside("MedM"))},
        {"the colour of scattering, which comes back inverted",
         glass(basic(uniform("0.25"), scattering(scattered(rgb("0.25 1 0")) + phase))),
         glass(basic(uniform("0.25"), scattering(scattered(rgb("0.75 0 1")) + phase)))},
        {"the lack of a phase function", glass(basic(uniform("0.25"), scattering(scattered(uniform("1"))))),
         glass(basic(uniform("0.25"), scattering(scattered(uniform("1")) + phase)))},
        {"names of media and their sharing",
         medium("Water", basic(uniform("0.25"))) + whole("M", "specular", inside("Water")) +
             whole("N", "specular", inside("Water")),
         glass(basic(uniform("0.25"))) + medium("MedN", basic(uniform("0.25"))) +
             whole("N", "specular", inside("MedN"))},
        {"the null material, and what is second of its name",
         wall + whole("Nothing", "null_material", "") + whole("M", "oren_nayar", ALBEDO), wall},
    };
    for (const Loss& loss : losses) {
        SCOPED_TRACE(loss.what);
        EXPECT_EQ(exportAfterImport(loss.imported), read(loss.exported));
    }

    // The centre of an atmosphere is taken for document units.
    constexpr int32_t CENTIMETRES = 3;
    host().worldPreferences().SetLong(WPREF_UNITS_BASIC, CENTIMETRES);
    EXPECT_EQ(
        exportAfterImport(glass("<atmosphere><center>64 128 0</center></atmosphere>")),
        read(glass("<atmosphere><center>0.6399999856948853 1.2799999713897705 0</center></atmosphere>")));
}

} // namespace
