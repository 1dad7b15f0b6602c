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

/// What a node writes behind its table, on one line.
std::string partsLine(SceneNodeRenderSettings& node) {
    const std::string text = xmlLine(node);
    const std::string last_row = "</hybrid>";
    return text.substr(text.find(last_row) + last_row.size());
}

Ref<SceneNodeRenderSettings> settingsWithParts() {
    const Ref<SceneNodeRenderSettings> node = newSettings();
    const Ref<RenderRegion> region = new RenderRegion;
    region->x1 = 1;
    region->x2 = 2;
    region->y1 = 3;
    region->y2 = 4;
    node->render_region = region;
    const Ref<SplatFilterMNCubic> splat = new SplatFilterMNCubic;
    splat->ring = 0.5;
    splat->blur = 0.25;
    node->setSplatFilter(splat);
    node->setDownsizeFilter(new DownsizeFilterSharp);
    node->setWhitePoint(new WhitePoint(0.25, 0.125));
    node->addLayer(new LayerSetting("Key light"));
    node->getLayer(0)->xyz = {1, 2, 0.5};
    node->getLayer(0)->gain = 3;
    node->gpu_device = new GPUDeviceSettings;
    node->gpu_device->device_name = "Card";
    return node;
}

TEST(RenderSettingsTest, NewNodeWritesAllDefaults) {
    EXPECT_EQ(xmlText(*newSettings()),
              fileBytes(QUENZA_SOURCE_DIR "/tests/scene/golden/render_settings.xml"));
}

TEST(RenderSettingsTest, PartsFollowTheTable) {
    const Ref<SceneNodeRenderSettings> node = settingsWithParts();
    EXPECT_EQ(partsLine(*node),
              "<render_region><x1>1</x1><y1>3</y1><x2>2</x2><y2>4</y2></render_region><splat_filter>"
              "<mn_cubic><blur>0.25</blur><ring>0.5</ring></mn_cubic></splat_filter><downsize_filter>"
              "<sharp/></downsize_filter><white_point>0.25 0.125</white_point><layer_setting>"
              "<name>Key light</name><xyz>1 2 0.5</xyz><gain>3</gain></layer_setting><selected_gpu_device>"
              "<device_name>Card</device_name><subsystem>OpenCL</subsystem></selected_gpu_device>"
              "</renderer_settings>");
    node->gpu_device->subsystem = GPUDeviceSettings::CUDA;
    EXPECT_NE(xmlLine(*node).find("<subsystem>CUDA</subsystem>"), std::string::npos);
}

TEST(RenderSettingsTest, PlainFiltersHaveTheirWords) {
    const std::pair<Ref<SplatFilter>, const char*> splats[] = {
        {new SplatFilterBox, "<splat_filter>\n\t<box/>\n</splat_filter>\n"},
        {new SplatFilterRadial, "<splat_filter>\n\t<radial/>\n</splat_filter>\n"},
    };
    for (const auto& [filter, xml] : splats) {
        EXPECT_EQ(xmlText(*filter), xml);
        EXPECT_EQ(xmlText(*filter->clone()), xml);
    }
    EXPECT_EQ(xmlText(*Ref<DownsizeFilter>(new DownsizeFilterGaussian)->clone()),
              "<downsize_filter>\n\t<gaussian/>\n</downsize_filter>\n");
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

TEST(RenderSettingsTest, CloneSharesNothing) {
    const Ref<SceneNodeRenderSettings> node = settingsWithParts();
    node->setInt("display_period", 4);
    const std::string text = xmlText(*node);
    const Ref<SceneNode> cloned = node->clone();
    auto& copy = static_cast<SceneNodeRenderSettings&>(*cloned);
    EXPECT_EQ(xmlText(copy), text);
    static_cast<IntSetting&>(**copy.settings.find("width")).value = 5;
    static_cast<SplatFilterMNCubic&>(*copy.splat_filter).blur = 9;
    copy.white_point->x = 9;
    copy.render_region->x1 = 9;
    copy.getLayer(0)->gain = 9;
    copy.gpu_device->device_name = "Other";
    EXPECT_EQ(xmlText(*node), text);
}

TEST(RenderSettingsTest, LayersAreAddedWithTheirNumbers) {
    const Ref<SceneNodeRenderSettings> node = newSettings();
    node->addLayer(new LayerSetting("Sun"));
    node->addLayer(nullptr);
    node->ensureLayers(3);
    node->ensureLayers(1);
    ASSERT_EQ(node->getNumLayers(), 3u);
    EXPECT_EQ(node->getLayer(0)->name, "Sun");
    EXPECT_EQ(node->getLayer(1)->name, "Layer 2");
    EXPECT_EQ(node->getLayer(2)->name, "Layer 3");
    EXPECT_EQ(node->getLayer(2)->xyz, (Vec3d{1, 1, 1}));
    EXPECT_EQ(node->getLayer(2)->gain, 1);
}

TEST(RenderSettingsTest, WhitePointsHaveNames) {
    EXPECT_EQ(whitePointFromName("D65")->x, double(0.31273f));
    EXPECT_EQ(whitePointFromName("D65")->y, double(0.32902f));
    EXPECT_EQ(whitePointFromName("E")->y, double(0.333333f));
    EXPECT_EQ(whitePointFromName("9300")->y, double(0.2932f));
    EXPECT_EQ(thrownText([] { whitePointFromName("d65"); }),
              "'d65' is not a valid value for white_balance.  (must be one of D50, D55, F2 etc..)");
}

} // namespace
} // namespace Quenza
