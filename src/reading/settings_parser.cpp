// SPDX-License-Identifier: MIT
#include "reading/settings_parser.h"

#include "reading/filter_parser.h"
#include "reading/settings_parts_parser.h"
#include "reading/white_point_parser.h"
#include "reading/xml_values.h"
#include "scene/setting_rows.h"

#include <string>
#include <tinyxml.h>
#include <variant>
#include <vector>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

template <class Visit>
void forEachRow(const Visit& visit) {
    for (const SettingRow& row : DEFAULT_SETTING_ROWS)
        visit(row);
    for (const SettingRow& row : OPTIONAL_SETTING_ROWS)
        visit(row);
}

const std::vector<const char*>& childNames() {
    static const std::vector<const char*> names = [] {
        std::vector<const char*> all = {
            "uid",         "name",          "render_region",       "splat_filter", "downsize_filter",
            "white_point", "layer_setting", "selected_gpu_device",
        };
        forEachRow([&all](const SettingRow& row) { all.push_back(row.key); });
        return all;
    }();
    return names;
}

Ref<SceneNodeRenderSettings> makeEmptyLayer() {
    const Ref<SceneNodeRenderSettings> node = new SceneNodeRenderSettings;
    node->settings.clear();
    node->splat_filter = nullptr;
    node->downsize_filter = nullptr;
    node->white_point = nullptr;
    return node;
}

void parseRow(const TiXmlElement& child, const SettingRow& row, SceneNodeRenderSettings& node) {
    if (std::holds_alternative<i32>(row.value))
        node.setInt(row.key, xml::parseIntText(child));
    else if (std::holds_alternative<bool>(row.value))
        node.setBool(row.key, xml::parseBoolText(child));
    else
        node.setDouble(row.key, xml::parseDoubleText(child));
}

void checkNotNegative(const TiXmlElement& element, const SceneNodeRenderSettings& node, const char* key) {
    if (node.settings.contains(key) && node.getInt(key) < 0)
        throwParserError(std::string(key) + " must be >= 0.  ", xml::childElement(element, key));
}

void parseParts(const TiXmlElement& element, SceneNodeRenderSettings& node) {
    if (const TiXmlElement* const child = xml::optionalChildElement(element, "render_region"))
        node.render_region = parseRenderRegion(*child);
    if (const TiXmlElement* const child = xml::optionalChildElement(element, "splat_filter"))
        node.splat_filter = parseSplatFilter(*child);
    if (const TiXmlElement* const child = xml::optionalChildElement(element, "downsize_filter"))
        node.downsize_filter = parseDownsizeFilter(*child);
    if (const TiXmlElement* const child = xml::optionalChildElement(element, "white_point"))
        node.white_point = parseWhitePoint(*child);
    for (const TiXmlElement* child = element.FirstChildElement("layer_setting"); child;
         child = child->NextSiblingElement("layer_setting"))
        node.addLayer(parseLayerSetting(*child));
    if (const TiXmlElement* const child = xml::optionalChildElement(element, "selected_gpu_device"))
        node.gpu_device = parseGPUDevice(*child);
}

} // namespace

Ref<SceneNodeRenderSettings> parseRenderSettings(const ParserState&, const TiXmlElement& element) {
    xml::checkChildrenAreIn(element, childNames());
    const Ref<SceneNodeRenderSettings> node = makeEmptyLayer();
    parseUIDAndName(element, *node);
    forEachRow([&](const SettingRow& row) {
        if (const TiXmlElement* const child = xml::optionalChildElement(element, row.key))
            parseRow(*child, row, *node);
    });
    checkNotNegative(element, *node, "width");
    checkNotNegative(element, *node, "height");
    parseParts(element, *node);
    return node;
}

void mergeSettings(SceneNodeRenderSettings& base, const SceneNodeRenderSettings& layer) {
    layer.settings.forEach([&base](const String& key, const Ref<BaseSetting>& setting) {
        base.settings.insert(key, setting->clone());
    });
    if (layer.splat_filter)
        base.splat_filter = layer.splat_filter->clone();
    if (layer.downsize_filter)
        base.downsize_filter = layer.downsize_filter->clone();
    if (layer.white_point)
        base.white_point = new WhitePoint(*layer.white_point);
    if (layer.render_region)
        base.render_region = new RenderRegion(*layer.render_region);
    if (layer.gpu_device)
        base.gpu_device = new GPUDeviceSettings(*layer.gpu_device);
    if (layer.layer_settings.empty())
        return;
    base.layer_settings.clear();
    for (const Ref<LayerSetting>& light_layer : layer.layer_settings)
        base.addLayer(light_layer ? new LayerSetting(*light_layer) : nullptr);
}

} // namespace Quenza
