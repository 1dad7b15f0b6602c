// SPDX-License-Identifier: MIT
#include "reading/settings_parser.h"

#include "reading/parsed_element.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

std::string settings(const std::string& children) {
    return "<renderer_settings>\n" + children + "\n</renderer_settings>";
}

Ref<SceneNodeRenderSettings> read(const std::string& text) {
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
    mergeSettings(again, *read(xmlText(node)));
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

TEST(SettingsParser, refusesWhatIsWrong) {
    const BadElement rows[] = {
        {"<width>-1</width>", "width must be >= 0.    (In element 'width', around line 2, column 1)"},
        {"<height>-1</height>", "height must be >= 0.    (In element 'height', around line 2, column 1)"},
        {"<width>1.5</width>",
         "Parse error while parsing integer from '1.5'  (In element 'width', around line 2, column 1)"},
        {"<render_region><x1>0</x1><y1>0</y1><x2>4</x2></render_region>",
         "could not find element 'y2'  (In element 'render_region', around line 2, column 1)"},
        {"<splat_filter/>", "Failed to find child for element 'splat_filter' - Child should be one of "
                            "'fastbox', 'box', 'radial', "
                            "'mn_cubic'  (In element 'splat_filter', around line 2, column 1)"},
        {"<downsize_filter/>",
         "Failed to find child for element 'downsize_filter' - Child should be one of 'mn_cubic', 'sharp', "
         "'gaussian'  (In element 'downsize_filter', around line 2, column 1)"},
        {"<downsize_filter><sharp/><sharp/></downsize_filter>",
         "Found unexpected element 'sharp',  already parsed mutually exclusive element 'sharp'  (In element "
         "'sharp', around line 2, column 26)"},
    };
    const auto reader = [](const TiXmlElement& element) { parseRenderSettings(ParserState(), element); };
    for (const BadElement& row : rows)
        EXPECT_EQ(refusal(settings(row.text), reader), row.message) << row.text;
}

} // namespace
} // namespace Quenza
