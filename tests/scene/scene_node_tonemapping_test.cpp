// SPDX-License-Identifier: MIT
#include "scene/scene_node_tonemapping.h"

#include "scene/scene_visitor.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

TEST(TonemappingTest, WritesTheChosenMethodAndKeepsTheOthers) {
    const Ref<SceneNodeTonemapping> node = new SceneNodeTonemapping;
    node->uid = SceneNodeUID(3);
    const std::string start = "<tonemapping>\n\t<uid>3</uid>\n\t<name></name>\n";
    const std::string end = "</tonemapping>\n";
    EXPECT_EQ(xmlText(*node), start + "\t<linear>\n\t\t<scale>1</scale>\n\t</linear>\n" + end);
    node->scale = 2;
    const std::pair<u32, const char*> cases[] = {
        {SceneNodeTonemapping::REINHARD,
         "\t<reinhard>\n\t\t<pre_scale>4</pre_scale>\n\t\t<post_scale>1</post_scale>\n\t\t<burn>6</burn>\n"
         "\t</reinhard>\n"},
        {SceneNodeTonemapping::CAMERA,
         "\t<camera>\n\t\t<response_function_path>data/camera_response_functions/dscs315.txt"
         "</response_function_path>\n\t\t<film_iso>200</film_iso>\n\t\t<ev_adjust>0</ev_adjust>\n"
         "\t</camera>\n"},
        {0, ""},
        {SceneNodeTonemapping::LINEAR, "\t<linear>\n\t\t<scale>2</scale>\n\t</linear>\n"},
    };
    for (const auto& [type, method] : cases) {
        node->tonemap_type = type;
        EXPECT_EQ(xmlText(*node), start + method + end);
    }
}

TEST(TonemappingTest, CloneHasTheValuesOfAllMethods) {
    const Ref<SceneNodeTonemapping> node = new SceneNodeTonemapping;
    node->uid = SceneNodeUID(3);
    node->name = "T";
    node->scale = 2;
    node->pre_scale = 3;
    node->post_scale = 4;
    node->burn = 5;
    node->response_function_path = "film.txt";
    node->film_iso = 100;
    node->ev_adjust = -1;
    for (const u32 type :
         {SceneNodeTonemapping::LINEAR, SceneNodeTonemapping::REINHARD, SceneNodeTonemapping::CAMERA}) {
        node->tonemap_type = type;
        EXPECT_EQ(xmlText(*node->clone()), xmlText(*node));
    }
}

TEST(TonemappingTest, ResponseFunctionIsNoDependency) {
    SceneNodeTonemapping node;
    node.uid = SceneNodeUID(3);
    SceneVisitor visitor;
    visitor.uid_offset = 5;
    for (const u32 mode :
         {SceneVisitor::COLLECT_DEPENDENCIES, SceneVisitor::UPDATE_DEPENDENCIES, SceneVisitor::OFFSET_UIDS}) {
        visitor.mode = mode;
        node.doVisit(visitor);
    }
    EXPECT_TRUE(visitor.dependencies.empty());
    EXPECT_EQ(node.uid.value(), 8u);
}

} // namespace
} // namespace Quenza
