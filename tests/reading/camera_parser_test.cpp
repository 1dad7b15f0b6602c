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

} // namespace
} // namespace Quenza
