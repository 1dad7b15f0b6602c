// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"
#include "scene/scene_node_background_settings.h"

namespace Quenza {

namespace {

class BackgroundParser : public SceneFiles {
protected:
    /// What the background of a scene with this element is written as.
    std::string background(const std::string& element) {
        const Ref<SceneNodeRoot> root = readElements(element);
        bind(*root);
        auto& node = only<SceneNodeBackgroundSettings>(*root, NODE_BACKGROUND_SETTINGS);
        name = node.getName().toStdString();
        return bodyOf(node);
    }
    static std::string material(const std::string& body) {
        return "<background_material><material><name></name>" + body + "</material></background_material>";
    }

    std::string name;
};

TEST_F(BackgroundParser, ReadsAllForms) {
    const std::string whole =
        "<emission_scale><measure>luminance</measure><value>2</value><material_uid>4294967295</material_uid>"
        "</emission_scale><background_material><material><name>sky</name><null_material></null_material>"
        "</material></background_material>";
    const std::string shining =
        "<diffuse><base_emission><constant><uniform><value>2</value></uniform></constant>"
        "</base_emission>";
    const std::string end = "<random_triangle_colours>false</random_triangle_colours>";
    const std::string map_end =
        "<base_emission><constant><uniform><value>1</value></uniform></constant>"
        "</base_emission><emission><texture><texture_index>0</texture_index></texture>"
        "</emission>" +
        end;
    const std::string texture_start = "<diffuse><texture><path>sky.exr</path><a>0</a><b>1</b><c>0</c>"
                                      "<uv_set_index>0</uv_set_index><exponent>";
    const std::string around =
        "<tex_coord_generation><spherical_environment><rotation><matrix>1 0 0 0 1 0 0 0 1"
        "</matrix></rotation></spherical_environment></tex_coord_generation>";
    const std::string by_uv = "<tex_coord_generation><uv><matrix>1 0 0 1</matrix><translation>0 0"
                              "</translation></uv></tex_coord_generation>";
    const struct {
        std::string element;
        std::string body;
        const char* name;
    } cases[] = {
        {"<background_settings/>", "", ""},
        {"<background_settings><uid>9</uid><name>b</name>" + whole + "</background_settings>", whole, "b"},
        {"<background><spectrum><uniform><value>2</value></uniform></spectrum></background>",
         material(shining + end + "<layer>0</layer></diffuse>"), "Background Settings"},
        {"<env_map><path>sky.exr</path><layer>3</layer></env_map>",
         material(texture_start + "2.2</exponent>" + around + "<smooth>false</smooth></texture>" + map_end +
                  "<layer>3</layer></diffuse>"),
         "Background Settings"},
        {"<env_map><texture><path>sky.exr</path><exponent>1</exponent>" + by_uv + "</texture></env_map>",
         material(texture_start + "1</exponent>" + by_uv + "<smooth>false</smooth></texture>" + map_end +
                  "<layer>0</layer></diffuse>"),
         "Background Settings"},
        {"<skylight/>",
         material("<sunsky><sundir>0 0 1</sundir><turbidity>2</turbidity><extra_atmospheric>false"
                  "</extra_atmospheric><enable_sky>true</enable_sky><sun_layer>0</sun_layer><sky_layer>0"
                  "</sky_layer><model>original</model></sunsky>"),
         "Background Settings"},
        {"<skylight><model>captured-simulation</model><sun_layer>1</sun_layer><sky_layer>2</sky_layer>"
         "<enable_sky>false</enable_sky><extra_atmospheric>true</extra_atmospheric><turbidity>3.5</turbidity>"
         "<sundir>1 2 3</sundir></skylight>",
         material("<sunsky><sundir>1 2 3</sundir><turbidity>3.5</turbidity><extra_atmospheric>true"
                  "</extra_atmospheric><enable_sky>false</enable_sky><sun_layer>1</sun_layer><sky_layer>2"
                  "</sky_layer><model>captured-simulation</model></sunsky>"),
         "Background Settings"},
    };
    for (const auto& [element, body, expected_name] : cases) {
        EXPECT_EQ(background(element), body) << element;
        EXPECT_EQ(name, expected_name);
    }
}

} // namespace

} // namespace Quenza
