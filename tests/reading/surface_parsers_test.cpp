// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_scatter.h"

namespace Quenza {

namespace {

class SurfaceParsers : public SceneFiles {};

TEST_F(SurfaceParsers, ReadTheWritersForm) {
    const std::string sphere =
        "<keyframe><time>0</time><pos>1 2 3</pos><rotation_quaternion><axis>0 0 1</axis><angle>0</angle>"
        "</rotation_quaternion></keyframe><radius>2.5</radius><material_uid>11</material_uid>";
    const std::string surface = "<shader><shader>def p(u, v) &lt; 1</shader></shader><num_u>3</num_u><num_v>4"
                                "</num_v>";
    const std::string scatter =
        "<shader><shader>s</shader></shader><density>2.5</density><seed>7</seed><geometry_uid>31</"
        "geometry_uid>"
        "<materials><material_uid>12</material_uid><material_uid>11</material_uid></materials>"
        "<target_object_uid>40</target_object_uid>";
    const Ref<SceneNodeRoot> root =
        readElements(MATERIALS + ("<sphere><uid>30</uid><name>s</name>" + sphere + "</sphere>") +
                     "<parametric_surface><uid>31</uid><name>p</name>" + surface + "</parametric_surface>" +
                     "<scatter><uid>32</uid><name>c</name>" + scatter + "</scatter>");
    bind(*root);
    EXPECT_EQ(bodyOf(*nodeNamed(*root, "s")), sphere);
    EXPECT_EQ(bodyOf(*nodeNamed(*root, "p")), surface);
    EXPECT_EQ(bodyOf(*nodeNamed(*root, "c")), scatter);
    EXPECT_EQ(nodeNamed(*root, "p")->getUID().value(), 31u);
}

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
