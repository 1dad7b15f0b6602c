// SPDX-License-Identifier: MIT
#include "reading/parsed_element.h"
#include "reading/scene_fixture.h"

#include <vector>

namespace Quenza {

namespace {

const std::string UNIFORM = "<uniform><value>1</value></uniform>";
const std::string CONSTANT = "<constant>" + UNIFORM + "</constant>";
const std::string AXIS = "<axis>0 0 1</axis><angle>0.5</angle>";
const std::string KEYFRAME = "<keyframe><time>0</time><pos>1 2 3</pos><rotation_quaternion>" + AXIS +
                             "</rotation_quaternion></keyframe>";
const std::string MATRIX = "<rotation><matrix>1 0 0 0 1 0 0 0 1</matrix></rotation>";
const std::string SHADER =
    "<shader><param><real><name>r</name><description></description><min>0</min><max>2</max><value>1</value></"
    "real>"
    "</param><include>a.qsl</include><shader><![CDATA[def eval() real : 1]]></shader></shader>";

std::string emission(const std::string& measure) {
    return "<emission_scale><measure>" + measure +
           "</measure><value>3</value><material_uid>11</material_uid></emission_scale>";
}

std::string material(const std::string& body) {
    return "<material><uid>70</uid><name>x</name>" + body + "<backface_emit>true</backface_emit></material>";
}

std::string medium(const std::string& body) {
    return "<medium><uid>70</uid><name>x</name><precedence>3</precedence>" + body + "</medium>";
}

std::string toneMapping(const std::string& body) {
    return "<tonemapping><uid>70</uid><name>x</name>" + body + "</tonemapping>";
}

/// Elements with their children as the writer gives them.
const std::vector<std::string> WRITTEN = {
    "<camera><uid>70</uid><name>x</name><aperture_radius>0.25</aperture_radius><focus_distance>3"
    "</focus_distance><sensor_width>0.5</sensor_width><lens_sensor_dist>0.0625</lens_sensor_dist>"
    "<exposure_duration>0.125</exposure_duration><lens_shift_up_distance>-1</lens_shift_up_distance>"
    "<lens_shift_right_distance>2</lens_shift_right_distance><autofocus/><obstacle_map>"
    "<path>dust.png</path></obstacle_map><aperture_shape><generated><num_blades>5</num_blades>"
    "<blade_offset>0.5</blade_offset><blade_curvature_radius>0.75</blade_curvature_radius><start_angle>0.25"
    "</start_angle></generated></aperture_shape>" +
        KEYFRAME + "<up>0 0 1</up><forwards>0 1 0</forwards><camera_type>orthographic</camera_type></camera>",
    toneMapping("<linear><scale>2</scale></linear>"),
    toneMapping("<reinhard><pre_scale>2</pre_scale><post_scale>3</post_scale><burn>4</burn></reinhard>"),
    toneMapping("<camera><response_function_path>a.txt</response_function_path><film_iso>200</film_iso>"
                "<ev_adjust>-1</ev_adjust></camera>"),
    medium("<basic><ior>1.5</ior><cauchy_b_coeff>0.5</cauchy_b_coeff><step_size>0.25</step_size>"
           "<absorption_coefficient>" +
           CONSTANT + "</absorption_coefficient><subsurface_scattering><scattering_coefficient>" + CONSTANT +
           "</scattering_coefficient><phase_function><henyey_greenstein><g_spectrum>" + CONSTANT +
           "</g_spectrum></henyey_greenstein></phase_function></subsurface_scattering></basic>"),
    medium("<dermis><hemoglobin_fraction>0.5</hemoglobin_fraction></dermis>"),
    medium("<epidermis><melanin_fraction>0.5</melanin_fraction><melanin_type_blend>0.25</melanin_type_blend>"
           "</epidermis>"),
    medium("<atmosphere><center>1 2 3</center><turbidity>4</turbidity></atmosphere>"),
    material("<glossy_transparent><layer>0</layer></glossy_transparent>"),
    "<sphere><uid>70</uid><name>x</name>" + KEYFRAME +
        "<radius>2.5</radius><material_uid>11</material_uid></sphere>",
    "<parametric_surface><uid>70</uid><name>x</name><shader><shader>def p(u, v) &lt; 1</shader></shader>"
    "<num_u>3</num_u><num_v>4</num_v></parametric_surface>",
    "<scatter><uid>70</uid><name>x</name><shader><shader>s</shader></shader><density>2.5</density><seed>7</"
    "seed>"
    "<geometry_uid>31</geometry_uid><materials><material_uid>12</material_uid><material_uid>11</material_uid>"
    "</materials><target_object_uid>40</target_object_uid></scatter>",
    material("<diffuse><albedo>" + SHADER +
             "</albedo><random_triangle_colours>false</random_triangle_colours><layer>0</layer></diffuse>"),
};

/// Elements that the writer gives in another form or order.
const std::vector<std::string> ONLY_READ = {
    "<model2><uid>70</uid><name>x</name><geometry_uid>20</geometry_uid><scale>2</scale><invisible_to_camera>"
    "true</invisible_to_camera>" +
        MATRIX + KEYFRAME +
        "<materials><material_uid>11</material_uid><material_uid>12</material_uid></materials><ies_profile>"
        "<material_uid>11</material_uid><path>a.ies</path></ies_profile>" +
        emission("luminous_flux") + emission("luminous_intensity") + emission("luminance") +
        emission("luminous_emittance") + "</model2>",
    "<alias_material><current_name>red</current_name><new_name>a</new_name></alias_material>",
    "<layer_name>Sun</layer_name>",
    "<rectanglelight><pos>0 0 1</pos><width>1</width><height>2</height><spectrum>" + UNIFORM +
        "</spectrum><efficacy_scale><measure>luminance</measure><value>3</value></efficacy_scale><layer>1"
        "</layer></rectanglelight>",
    "<meshlight><pos>0 0 1</pos>" + MATRIX + "<spectrum>" + UNIFORM +
        "</spectrum><texture><path>a.png</path></texture><efficacy_scale><value>3</value></efficacy_scale>"
        "<mesh_name>tri</mesh_name><scale>2</scale><ies_profile><path>a.ies</path></ies_profile></meshlight>",
    "<meshlight><pos>0 0 1</pos><spectrum>" + UNIFORM +
        "</spectrum><mesh_name>tri</mesh_name><path>a.ies</path></meshlight>",
    "<exit_portal><pos>0 0 1</pos><rotation><axis_rotation>" + AXIS +
        "</axis_rotation></rotation><mesh_name>tri</mesh_name><scale>2</scale></exit_portal>",
    "<model><pos>0 0 1</pos><end_pos>1 0 1</end_pos>" + MATRIX + "<final_rotation><rotation_quaternion>" +
        AXIS + "</rotation_quaternion></final_rotation><scale>2</scale><mesh_name>tri</mesh_name>" +
        emission("luminance") +
        "<ies_profile><path>a.ies</path><material_name>red</material_name></ies_profile>"
        "<invisible_to_camera>true</invisible_to_camera></model>",
    "<model>" + KEYFRAME + "<mesh_name>tri</mesh_name></model>",
    std::string(
        "<skylight><sundir>0 0 1</sundir><turbidity>3</turbidity><extra_atmospheric>true</extra_atmospheric>"
        "<enable_sky>true</enable_sky><sky_layer>1</sky_layer><sun_layer>2</sun_layer><model>original</model>"
        "</skylight>"),
    "<background><spectrum>" + UNIFORM + "</spectrum></background>",
    "<background_settings><uid>9</uid><name>b</name>" + emission("luminance") + "<background_material>" +
        "<material><name>m</name><null_material></null_material></material>"
        "</background_material></background_settings>",
    "<env_map><path>sky.exr</path><layer>1</layer></env_map>",
    "<env_map><texture><path>sky.exr</path><tex_coord_generation><spherical_environment>" + MATRIX +
        "</spherical_environment></tex_coord_generation></texture></env_map>",
    "<sphere><uid>9</uid><name>b</name>" + KEYFRAME +
        "<radius>1</radius><material_name>red</material_name></sphere>",
    std::string("<metadata><uid>9</uid><name>b</name><exporter>e</exporter><author>a</author><description>d</"
                "description>"
                "<created_date>c</created_date><platform>p</platform><exporter_specific>s</"
                "exporter_specific></metadata>"),
    std::string(
        "<section_plane><uid>9</uid><name>b</name><point>0 0 0</point><normal>0 0 1</normal><enabled>true"
        "</enabled><cull_geometry>true</cull_geometry><object_list><uid>4</uid></"
        "object_list><object_list_type>"
        "include</object_list_type></section_plane>"),
    "<mesh><external><path>a.obj</path></external></mesh>",
    std::string(
        "<renderer_settings><hybrid>true</hybrid><write_aperture_preview>true</"
        "write_aperture_preview><batched>"
        "true</batched><close_gui_on_halt>true</close_gui_on_halt><save_images_on_close>true"
        "</save_images_on_close><merging>false</merging><dithering>false</dithering><frame_upload_period>1.5"
        "</frame_upload_period><width>5</width><splat_filter><mn_cubic><blur>1</blur><ring>0</ring></"
        "mn_cubic>"
        "</splat_filter><downsize_filter><mn_cubic><blur>1</blur><ring>0</ring><radius>2</radius></mn_cubic>"
        "</downsize_filter><render_region><x1>0</x1><y1>0</y1><x2>4</x2><y2>4</y2></"
        "render_region><white_point>"
        "<chromaticity_coordinates>0.3 "
        "0.3</chromaticity_coordinates></white_point><layer_setting><name>l</name>"
        "<xyz>1 1 1</xyz><gain>2</gain></layer_setting><selected_gpu_device><device_name>d</device_name>"
        "<subsystem>CUDA</subsystem></selected_gpu_device></renderer_settings>"),
    std::string(
        "<renderer_settings><splat_filter><box></box></splat_filter><downsize_filter><gaussian></gaussian>"
        "</downsize_filter></renderer_settings>"),
    "<renderer_settings><downsize_filter><sharp></sharp></downsize_filter></renderer_settings>",
    medium("<basic><absorption_coefficient_spectrum>" + UNIFORM +
           "</absorption_coefficient_spectrum></basic>"),
    material("<diffuse><colour>1 1 1</colour><bump_map><path>a.png</path></bump_map><displacement_map>"
             "<path>a.png</path></displacement_map></diffuse>"),
    material("<blend><a_name>red</a_name><b_mat_uid>12</b_mat_uid><blend_factor>0.5</blend_factor>"
             "<step_blend>true</step_blend></blend>"),
};

class Grammar : public SceneFiles {
protected:
    static std::string sceneOf(const std::string& element) {
        return MATERIALS + (TRIANGLE + element) +
               "<parametric_surface><uid>31</uid><shader><shader>s</shader></shader></parametric_surface>";
    }
    static std::string onOneLine(const std::string& text) {
        std::string line;
        for (const char c : text)
            if (c != '\n' && c != '\t')
                line += c;
        return line;
    }
};

TEST_F(Grammar, ElementsAreReadWithAllTheirChildren) {
    for (const std::string& element : WRITTEN) {
        const Ref<SceneNodeRoot> root = readElements(sceneOf(element));
        bind(*root);
        std::string text;
        for (const Ref<SceneNode>& node : root->getChildren())
            if (node->getUID().value() == 70)
                text += onOneLine(xmlOf(*node));
        EXPECT_EQ(text, element);
    }
    for (const std::string& element : ONLY_READ)
        EXPECT_EQ(refusal(sceneOf(element)), "no exception") << element;
}

/// Wherever it stands, an element that nobody knows is told.
TEST_F(Grammar, UnknownChildrenAreRefusedEverywhere) {
    for (const std::vector<std::string>& elements : {WRITTEN, ONLY_READ})
        for (const std::string& element : elements)
            for (const std::string& strange : withStrangers(element))
                EXPECT_TRUE(refusal(sceneOf(strange)).starts_with(STRANGER)) << strange << "\n"
                                                                             << refusal(sceneOf(strange));
}

} // namespace

} // namespace Quenza
