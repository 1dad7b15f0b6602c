// SPDX-License-Identifier: MIT
#include "reading/camera_parser.h"

#include "reading/parsed_element.h"

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

std::string message(const std::string& text) {
    return refusal(text, [](const TiXmlElement& element) {
        ParserState state;
        parseCamera(state, element);
    });
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
