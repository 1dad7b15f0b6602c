// SPDX-License-Identifier: MIT
#include "scene/scene_node_render_settings.h"

#include "scene/scene_node_root.h"
#include "scene/xml_text.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <unistd.h>

namespace Quenza {
namespace {

const char* const NEW_NODE_XML =
    "<renderer_settings>\n\t<uid>1</uid>\n\t<name></name>\n"
    "\t<bidirectional>true</bidirectional>\n\t<verbose>false</verbose>\n"
    "\t<write_aperture_preview>false</write_aperture_preview>\n"
    "\t<save_tonemapped_exr>false</save_tonemapped_exr>\n"
    "\t<save_untonemapped_exr>false</save_untonemapped_exr>\n"
    "\t<save_qzi>false</save_qzi>\n\t<save_png>true</save_png>\n"
    "\t<auto_choose_num_threads>true</auto_choose_num_threads>\n\t<cache_trees>true</cache_trees>\n"
    "\t<metropolis>true</metropolis>\n\t<logging>true</logging>\n\t<watermark>false</watermark>\n"
    "\t<aperture_diffraction>false</aperture_diffraction>\n"
    "\t<post_process_diffraction>true</post_process_diffraction>\n"
    "\t<material_id_tracer>false</material_id_tracer>\n"
    "\t<render_foreground_alpha>false</render_foreground_alpha>\n"
    "\t<depth_pass>false</depth_pass>\n\t<shadow_pass>false</shadow_pass>\n"
    "\t<info_overlay>false</info_overlay>\n"
    "\t<wait_for_slave_frames_on_stop>false</wait_for_slave_frames_on_stop>\n"
    "\t<close_gui_on_halt>false</close_gui_on_halt>\n"
    "\t<save_images_on_close>false</save_images_on_close>\n"
    "\t<glass_acceleration>false</glass_acceleration>\n\t<vignetting>true</vignetting>\n"
    "\t<merging>true</merging>\n\t<dithering>true</dithering>\n\t<max_depth>10000</max_depth>\n"
    "\t<max_num_consec_rejections>10000</max_num_consec_rejections>\n"
    "\t<num_threads>1</num_threads>\n\t<width>800</width>\n\t<height>600</height>\n"
    "\t<super_sample_factor>2</super_sample_factor>\n"
    "\t<bih_tri_threshold>1100000</bih_tri_threshold>\n\t<batched>false</batched>\n\t<gpu>false</gpu>\n"
    "\t<halt_time>-1</halt_time>\n\t<halt_samples_per_pixel>-1</halt_samples_per_pixel>\n"
    "\t<frame_upload_period>40</frame_upload_period>\n"
    "\t<large_mutation_prob>0.4</large_mutation_prob>\n\t<max_change>0.01</max_change>\n"
    "\t<image_save_period>1800</image_save_period>\n"
    // "hybrid" alone falls into another bucket of the table.
    "\t<hybrid>false</hybrid>\n"
    "\t<splat_filter>\n\t\t<fastbox/>\n\t</splat_filter>\n"
    "\t<downsize_filter>\n\t\t<mn_cubic>\n\t\t\t<blur>1</blur>\n\t\t\t<ring>0</ring>\n"
    "\t\t\t<radius>1.600000023841858</radius>\n\t\t</mn_cubic>\n\t</downsize_filter>\n"
    "\t<white_point>\n\t\t0.3333333333333333 0.3333333333333333\t\t\n\t</white_point>\n"
    "</renderer_settings>\n";

Ref<SceneNodeRenderSettings> newSettings() {
    const Ref<SceneNodeRenderSettings> node = new SceneNodeRenderSettings;
    node->uid = SceneNodeUID(1);
    return node;
}

/// What a node writes behind its table.
std::string partsText(SceneNodeRenderSettings& node) {
    const std::string text = xmlText(node);
    const std::string last_row = "</hybrid>\n";
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
    EXPECT_EQ(xmlText(*newSettings()), NEW_NODE_XML);
}

TEST(RenderSettingsTest, PartsFollowTheTable) {
    const Ref<SceneNodeRenderSettings> node = settingsWithParts();
    EXPECT_EQ(partsText(*node),
              "\t<render_region>\n\t\t<x1>1</x1>\n\t\t<y1>3</y1>\n\t\t<x2>2</x2>\n\t\t<y2>4</y2>\n"
              "\t</render_region>\n"
              "\t<splat_filter>\n\t\t<mn_cubic>\n\t\t\t<blur>0.25</blur>\n\t\t\t<ring>0.5</ring>\n"
              "\t\t</mn_cubic>\n\t</splat_filter>\n"
              "\t<downsize_filter>\n\t\t<sharp/>\n\t</downsize_filter>\n"
              "\t<white_point>\n\t\t0.25 0.125\t\t\n\t</white_point>\n"
              "\t<layer_setting>\n\t\t<name>Key light</name>\n\t\t<xyz>1 2 0.5</xyz>\n\t\t<gain>3</gain>\n"
              "\t</layer_setting>\n"
              "\t<selected_gpu_device>\n\t\t<device_name>Card</device_name>\n"
              "\t\t<subsystem>OpenCL</subsystem>\n\t</selected_gpu_device>\n"
              "</renderer_settings>\n");
    node->gpu_device->subsystem = GPUDeviceSettings::CUDA;
    EXPECT_NE(xmlText(*node).find("<subsystem>CUDA</subsystem>"), std::string::npos);
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
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("quenza_white_" + std::to_string(getpid()) + ".qzs");
    root->writeToXMLFile(file.string(), false, nullptr);
    std::ifstream stream(file);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    std::filesystem::remove(file);
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

TEST(RenderSettingsTest, EqualityPrintsItsLine) {
    const Ref<SceneNodeRenderSettings> node = newSettings();
    const Ref<SceneNodeRenderSettings> other = newSettings();
    other->setInt("width", 1);
    ::testing::internal::CaptureStdout();
    EXPECT_TRUE(node->isEqual(*other));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(),
              "TODO: IMPLEMENT SceneNodeRenderSettings::doIsEqual()");
    other->name = "N";
    ::testing::internal::CaptureStdout();
    EXPECT_FALSE(node->isEqual(*other));
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

} // namespace
} // namespace Quenza
