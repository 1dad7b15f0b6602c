// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"

namespace Quenza {

namespace {

using SurfaceParsers = SceneFiles;

TEST_F(SurfaceParsers, RefuseBadInput) {
    const BadScene cases[] = {
        {"<sphere><radius>1</radius></sphere>\n", "Failed to find child for element 'sphere' - Child should "
                                                  "be one of 'material_name', 'material_uid'  "
                                                  "(In element 'sphere', around line 2, column 1)"},
        {"<sphere><material_uid>1</material_uid></sphere>\n",
         "could not find element 'radius'  (In element 'sphere', around line 2, column 1)"},
        {"<parametric_surface/>\n", "Failed to find expected element 'shader'  (In element "
                                    "'parametric_surface', around line 2, column 1)"},
    };
    for (const auto& [elements, message] : cases)
        EXPECT_EQ(refusal(elements), message) << elements;
}

} // namespace

} // namespace Quenza
