// SPDX-License-Identifier: MIT
#include "reading/settings_parser.h"

#include "reading/parsed_element.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

Ref<SceneNodeRenderSettings> readSettings(const std::string& text) {
    return parseRenderSettings(ParserState(), ParsedElement(text));
}

/// The row's value that isn't the default one.
SettingValue changed(const SettingValue& value) {
    if (const i32* number = std::get_if<i32>(&value))
        return *number + 7;
    if (const bool* flag = std::get_if<bool>(&value))
        return !*flag;
    return std::get<double>(value) + 0.125;
}

/// Kept scenes of other tests have regions, white points and layers.
Ref<SceneNodeRenderSettings> fullSettings() {
    const Ref<SceneNodeRenderSettings> node = new SceneNodeRenderSettings;
    for (const SettingRow& row : DEFAULT_SETTING_ROWS)
        node->setValue(row.key, changed(row.value));
    const Ref<GPUDeviceSettings> device = new GPUDeviceSettings;
    device->device_name = "Card 1";
    device->subsystem = GPUDeviceSettings::CUDA;
    node->gpu_device = device;
    return node;
}

/// What a new node writes that takes everything from the written text of `node`.
std::string readAgain(SceneNodeRenderSettings& node) {
    SceneNodeRenderSettings again;
    again.uid = node.uid;
    mergeSettings(again, *readSettings(xmlText(node)));
    return xmlText(again);
}

TEST(SettingsParser, readsWhatIsWritten) {
    SceneNodeRenderSettings fresh;
    EXPECT_EQ(readAgain(fresh), xmlText(fresh));

    const Ref<SceneNodeRenderSettings> node = fullSettings();
    const Ref<SplatFilterMNCubic> splat_cubic = new SplatFilterMNCubic;
    splat_cubic->blur = 0.375;
    splat_cubic->ring = 0.75;
    const Ref<DownsizeFilterMNCubic> downsize_cubic = new DownsizeFilterMNCubic;
    downsize_cubic->blur = 0.5;
    downsize_cubic->ring = 0.25;
    downsize_cubic->radius = 2;
    const Ref<SplatFilter> splats[] = {new SplatFilterFastBox, new SplatFilterRadial, new SplatFilterBox,
                                       splat_cubic};
    for (const Ref<SplatFilter>& splat : splats) {
        node->setSplatFilter(splat);
        EXPECT_EQ(readAgain(*node), xmlText(*node));
    }
    const Ref<DownsizeFilter> downsizes[] = {new DownsizeFilterGaussian, new DownsizeFilterSharp,
                                             downsize_cubic};
    for (const Ref<DownsizeFilter>& downsize : downsizes) {
        node->setDownsizeFilter(downsize);
        EXPECT_EQ(readAgain(*node), xmlText(*node));
    }
}

} // namespace
} // namespace Quenza
