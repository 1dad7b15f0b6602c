// SPDX-License-Identifier: MIT
#include "scene/scene_node_render_settings.h"

#include "scene/scene_node_root.h"
#include "scene/xml_text.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

Ref<SceneNodeRenderSettings> newSettings() {
    const Ref<SceneNodeRenderSettings> node = new SceneNodeRenderSettings;
    node->uid = SceneNodeUID(1);
    return node;
}

TEST(RenderSettingsTest, NewNodeWritesAllDefaults) {
    EXPECT_EQ(xmlText(*newSettings()),
              fileBytes(QUENZA_SOURCE_DIR "/tests/scene/golden/render_settings.xml"));
}

TEST(RenderSettingsTest, WhitePointHasSixDigitsInAFile) {
    const Ref<SceneNodeRoot> root = new SceneNodeRoot;
    root->addChild(newSettings().getPointer());
    const TempDir dir;
    root->writeToXMLFile(dir / "white.qzs", false, nullptr);
    const std::string text = fileBytes(dir / "white.qzs");
    EXPECT_NE(text.find("\t\t<white_point>\n\t\t\t0.333333 0.333333\t\t\t\n\t\t</white_point>\n"),
              std::string::npos)
        << text;
}

TEST(RenderSettingsTest, RowsAreReadByTheirType) {
    const Ref<SceneNodeRenderSettings> node = newSettings();
    EXPECT_EQ(node->getInt("width"), 800);
    EXPECT_EQ(thrownText([&] { node->getInt("x"); }), "Tried to read missing setting 'x'");
    EXPECT_EQ(thrownText([&] { node->getInt("gpu"); }),
              "Tried to read setting as an int that was of different type: 'gpu'");
    EXPECT_EQ(thrownText([&] { node->getBool("width"); }),
              "Tried to read setting as a bool that was of different type: 'width'");
    EXPECT_EQ(thrownText([&] { node->getDouble("width"); }),
              "Tried to read setting as a double that was of different type: 'width'");

    node->setDouble("width", 0.5); // another type replaces the row
    node->setBool("polarisation", true);
    node->setInt("gpu_path_tracing", 1);
    EXPECT_EQ(node->getDouble("width"), 0.5);
    EXPECT_EQ(node->getInt("gpu_path_tracing"), 1);
    const std::string text = xmlText(*node);
    EXPECT_NE(text.find("\t<width>0.5</width>\n"), std::string::npos);
    EXPECT_NE(text.find("\t<polarisation>true</polarisation>\n"), std::string::npos);
    EXPECT_EQ(text.find("gpu_path_tracing"), std::string::npos);
}

} // namespace
} // namespace Quenza
