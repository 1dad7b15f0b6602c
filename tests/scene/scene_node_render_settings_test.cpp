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
    const std::string text = unixLines(fileBytes(dir / "white.qzs"));
    EXPECT_NE(text.find("\t\t<white_point>\n\t\t\t0.333333 0.333333\t\t\t\n\t\t</white_point>\n"),
              std::string::npos)
        << text;
}

} // namespace
} // namespace Quenza
