// SPDX-License-Identifier: MIT
#include "reading/camera_parser.h"

#include "reading/parsed_element.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

/// The element `camera` with these children.
std::string camera(const std::string& children) {
    return "<camera>\n" + children + "\n</camera>";
}

Ref<SceneNodeCamera> read(const std::string& text, ParserState& state) {
    return parseCamera(state, ParsedElement(text));
}

Ref<SceneNodeCamera> read(const std::string& text) {
    ParserState state;
    return read(text, state);
}

std::string message(const std::string& text) {
    return refusal(text, [](const TiXmlElement& element) {
        ParserState state;
        parseCamera(state, element);
    });
}

Ref<SceneNodeCamera> fullCamera() {
    const Ref<SceneNodeCamera> node = new SceneNodeCamera;
    node->uid = SceneNodeUID(7);
    node->name = "Film  back";
    node->aperture_radius = 0.25;
    node->focus_distance = 3;
    node->sensor_width = 0.5;
    node->lens_sensor_dist = 0.0625;
    node->exposure_duration = 0.125;
    node->lens_shift_up_distance = -1;
    node->lens_shift_right_distance = 2;
    node->autofocus = false;
    node->obstacle_map_path = "textures/<dust>.png";
    node->keyframes.push_back({{1, 2, 3}, 0, {0, 0, 1}, 0.5});
    node->keyframes.push_back({{4, 5, 6}, 1, {0, 1, 0}, 0.75});
    node->up = {0, 1, 0};
    node->forwards = {1, 0, 0};
    return node;
}

TEST(CameraParser, readsWhatIsWritten) {
    const Ref<ApertureGenerated> generated = new ApertureGenerated;
    generated->num_blades = 9;
    generated->blade_offset = 0.5;
    generated->blade_curvature_radius = 0.75;
    generated->start_angle = -0.25;
    const Ref<ApertureImage> image = new ApertureImage;
    image->path = "textures/heart.png";
    const Ref<ApertureShape> shapes[] = {new ApertureCircular, generated, image};
    for (u32 type = 0; type < 3; ++type) {
        const Ref<SceneNodeCamera> node = fullCamera();
        node->aperture_shape = shapes[type];
        node->camera_type = type;
        const std::string text = xmlText(*node);
        const Ref<SceneNodeCamera> again = read(text);
        EXPECT_EQ(xmlText(*again), text);
    }
    SceneNodeCamera fresh;
    EXPECT_EQ(xmlText(*read(xmlText(fresh))), xmlText(fresh));
}

TEST(CameraParser, takesTheDefaultsOfANewNodeForAbsentChildren) {
    SceneNodeCamera expected;
    expected.autofocus = false;
    EXPECT_EQ(xmlText(*read("<camera/>")), xmlText(expected));

    const ApertureGenerated shape;
    const Ref<SceneNodeCamera> node = read(camera("<aperture_shape><generated/></aperture_shape>"));
    EXPECT_EQ(xmlText(*node->aperture_shape), xmlText(shape));
}

TEST(CameraParser, believesTheTextOfAutofocus) {
    EXPECT_TRUE(read(camera("<autofocus></autofocus>"))->autofocus);
    EXPECT_TRUE(read(camera("<autofocus>true</autofocus>"))->autofocus);
    EXPECT_FALSE(read(camera("<autofocus>false</autofocus>"))->autofocus);
}

TEST(CameraParser, hasPathsStartAtTheFolderOfTheScene) {
    ParserState state;
    state.base_from_scene = "shared";
    const Ref<SceneNodeCamera> node =
        read(camera("<obstacle_map><path>dust.png</path></obstacle_map>"
                    "<aperture_shape><image><path>heart.png</path></image></aperture_shape>"),
             state);
    EXPECT_EQ(node->obstacle_map_path, "shared/dust.png");
    EXPECT_EQ(static_cast<const ApertureImage&>(*node->aperture_shape).path, "shared/heart.png");
}

TEST(CameraParser, givesItsWhitePointToTheWholeScene) {
    const struct {
        const char* white_point;
        double x;
        double y;
    } rows[] = {
        {"D65", 0.31273f, 0.32902f},
        {" 9300\n", 0.2848f, 0.2932f},
        {"<chromaticity_coordinates>0.25 0.5</chromaticity_coordinates>", 0.25, 0.5},
        {"<chromaticity_coordinates><y>0.5</y><x>0.25</x></chromaticity_coordinates>", 0.25, 0.5},
        {"\n\t0.125 <!-- y --> 0.75\t\n", 0.125, 0.75},
    };
    for (const auto& row : rows) {
        ParserState state;
        read(camera(std::string("<white_point>") + row.white_point + "</white_point>"), state);
        EXPECT_EQ(state.white_point_x, row.x) << row.white_point;
        EXPECT_EQ(state.white_point_y, row.y) << row.white_point;
    }
    ParserState untouched;
    read("<camera/>", untouched);
    EXPECT_EQ(untouched.white_point_x, 0);
    EXPECT_EQ(untouched.white_point_y, 0);
}

TEST(CameraParser, refusesWhatIsWrongInACamera) {
    const BadElement rows[] = {
        {"<aperture_radius>0</aperture_radius>", "Aperture_radius must be greater than zero (e.g. 0.001)   "
                                                 "(In element 'aperture_radius', around line 2, "
                                                 "column 1)"},
        {"\t<camera_type>fisheye</camera_type>",
         "Unknown camera type 'fisheye', should be either 'thin-lens-perspective', 'orthographic' or "
         "'spherical'.  (In element 'camera_type', around line 2, column 5)"},
        {"<camera_type/>", "Unknown camera type '', should be either 'thin-lens-perspective', 'orthographic' "
                           "or 'spherical'.  (In "
                           "element 'camera_type', around line 2, column 1)"},
        {"<obstacle_map/>",
         "could not find element 'path'  (In element 'obstacle_map', around line 2, column 1)"},
        {"<white_point>D66</white_point>",
         "'D66' is not a valid value for white_balance.  (must be one of D50, D55, F2 etc..)  (In element "
         "'white_point', around line 2, column 1)"},
    };
    for (const BadElement& row : rows)
        EXPECT_EQ(message(camera(row.text)), row.message) << row.text;
}

TEST(CameraParser, refusesWhatIsWrongInAnApertureShape) {
    const BadElement rows[] = {
        {"", "Failed to find child for element 'aperture_shape' - Child should be one of 'circular', "
             "'generated', 'image'  (In element 'aperture_shape', around line 2, column 1)"},
        {"<circular/><image/>", "Found unexpected element 'image',  already parsed mutually exclusive "
                                "element 'circular'  (In element "
                                "'image', around line 3, column 12)"},
        {"<generated><num_blades>2</num_blades></generated>",
         "num_blades must be >= 3  (In element 'generated', around line 3, column 1)"},
        {"<generated><blade_offset>0</blade_offset></generated>",
         "blade_offset must be > 0  (In element 'generated', around line 3, column 1)"},
        {"<generated><blade_offset>2</blade_offset><blade_curvature_radius>1</blade_curvature_radius>"
         "</generated>",
         "blade_curvature_radius must be >= blade_offset  (In element 'generated', around line 3, column 1)"},
    };
    for (const BadElement& row : rows)
        EXPECT_EQ(message(camera(std::string("<aperture_shape>\n") + row.text + "</aperture_shape>")),
                  row.message)
            << row.text;
}

} // namespace
} // namespace Quenza
