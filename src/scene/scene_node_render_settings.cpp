// SPDX-License-Identifier: MIT
#include "scene/scene_node_render_settings.h"

#include "foundation/exceptions.h"
#include "foundation/string_utils.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <cstdio>
#include <variant>

namespace Quenza {

namespace {

template <class Setting>
const Setting& requireSetting(const Map<String, Ref<BaseSetting>>& settings, const String& key,
                              const char* type_words) {
    const Ref<BaseSetting>* setting = settings.find(key);
    if (!setting)
        throw QuenzaException("Tried to read missing setting '" + key + "'");
    if ((*setting)->type != Setting::TYPE)
        throw QuenzaException(String("Tried to read setting as ") + type_words +
                              " that was of different type: '" + key + "'");
    return static_cast<const Setting&>(**setting);
}

/// Unlike all other numbers these take the form of the stream, which in a file has six digits. The line ends
/// with its own indent: readers skip blanks, and files stay comparable with those of earlier versions.
void writeWhitePoint(OStream& stream, u32 depth, const WhitePoint& point) {
    writeOpenTag(stream, depth, "white_point");
    writeIndent(stream, depth + 1);
    stream.writeDouble(point.x);
    stream.writeString(" ");
    stream.writeDouble(point.y);
    writeIndent(stream, depth + 1);
    stream.writeString("\n");
    writeCloseTag(stream, depth, "white_point");
}

void writeRegion(OStream& stream, u32 depth, const RenderRegion& region) {
    writeOpenTag(stream, depth, "render_region");
    writeIntElement(stream, depth + 1, "x1", region.x1);
    writeIntElement(stream, depth + 1, "y1", region.y1);
    writeIntElement(stream, depth + 1, "x2", region.x2);
    writeIntElement(stream, depth + 1, "y2", region.y2);
    writeCloseTag(stream, depth, "render_region");
}

void writeLayer(OStream& stream, u32 depth, const LayerSetting& layer) {
    writeOpenTag(stream, depth, "layer_setting");
    writeStringElement(stream, depth + 1, "name", layer.name);
    writeVec3Element(stream, depth + 1, "xyz", layer.xyz);
    writeDoubleElement(stream, depth + 1, "gain", layer.gain);
    writeCloseTag(stream, depth, "layer_setting");
}

void writeDevice(OStream& stream, u32 depth, const GPUDeviceSettings& device) {
    writeOpenTag(stream, depth, "selected_gpu_device");
    writeStringElement(stream, depth + 1, "device_name", device.device_name);
    writeStringElement(stream, depth + 1, "subsystem",
                       device.subsystem == GPUDeviceSettings::CUDA ? "CUDA" : "OpenCL");
    writeCloseTag(stream, depth, "selected_gpu_device");
}

} // namespace

SceneNodeRenderSettings::SceneNodeRenderSettings()
    : splat_filter(new SplatFilterFastBox), downsize_filter(new DownsizeFilterMNCubic),
      white_point(new WhitePoint) {
    for (const SettingRow& row : DEFAULT_SETTING_ROWS)
        setValue(row.key, row.value);
}

Ref<SceneNode> SceneNodeRenderSettings::clone() const {
    const Ref<SceneNodeRenderSettings> copy = new SceneNodeRenderSettings;
    copyBaseFieldsTo(*copy);
    // A copy of the map first: it keeps the order of the rows.
    copy->settings = settings;
    settings.forEach([&](const String& key, const Ref<BaseSetting>& setting) {
        copy->settings.insert(key, setting->clone());
    });
    copy->splat_filter = splat_filter ? splat_filter->clone() : nullptr;
    copy->downsize_filter = downsize_filter ? downsize_filter->clone() : nullptr;
    copy->white_point = white_point ? new WhitePoint(*white_point) : nullptr;
    copy->render_region = render_region ? new RenderRegion(*render_region) : nullptr;
    for (const Ref<LayerSetting>& layer : layer_settings)
        copy->addLayer(layer ? new LayerSetting(*layer) : nullptr);
    copy->gpu_device = gpu_device ? new GPUDeviceSettings(*gpu_device) : nullptr;
    return copy;
}

void SceneNodeRenderSettings::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) {
    writeOpenTag(stream, depth, "renderer_settings");
    writeUIDAndName(stream, depth + 1);
    settings.forEach([&](const String& key, const Ref<BaseSetting>& setting) {
        // Never written: "gpu" and the selected device tell where to render.
        if (key == "gpu_path_tracing")
            return;
        writeIndent(stream, depth + 1);
        stream.writeString("<" + key + ">" + setting->toString() + "</" + key + ">\n");
    });
    writePartsToXML(stream, depth + 1);
    writeCloseTag(stream, depth, "renderer_settings");
}

void SceneNodeRenderSettings::writePartsToXML(OStream& stream, u32 depth) const {
    if (render_region)
        writeRegion(stream, depth, *render_region);
    if (splat_filter)
        splat_filter->writeToXML(stream, depth);
    if (downsize_filter)
        downsize_filter->writeToXML(stream, depth);
    if (white_point)
        writeWhitePoint(stream, depth, *white_point);
    for (const Ref<LayerSetting>& layer : layer_settings)
        if (layer)
            writeLayer(stream, depth, *layer);
    if (gpu_device)
        writeDevice(stream, depth, *gpu_device);
}

void SceneNodeRenderSettings::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::OFFSET_UIDS)
        visitor.offsetUID(uid);
}

bool SceneNodeRenderSettings::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::printf("TODO: IMPLEMENT SceneNodeRenderSettings::doIsEqual()");
    return true;
}

i32 SceneNodeRenderSettings::getInt(const String& key) const {
    return requireSetting<IntSetting>(settings, key, "an int").value;
}

bool SceneNodeRenderSettings::getBool(const String& key) const {
    return requireSetting<BoolSetting>(settings, key, "a bool").value;
}

double SceneNodeRenderSettings::getDouble(const String& key) const {
    return requireSetting<DoubleSetting>(settings, key, "a double").value;
}

void SceneNodeRenderSettings::setInt(const String& key, i32 value) {
    settings.insert(key, new IntSetting(value));
}

void SceneNodeRenderSettings::setBool(const String& key, bool value) {
    settings.insert(key, new BoolSetting(value));
}

void SceneNodeRenderSettings::setDouble(const String& key, double value) {
    settings.insert(key, new DoubleSetting(value));
}

void SceneNodeRenderSettings::setValue(const String& key, const SettingValue& value) {
    if (const i32* number = std::get_if<i32>(&value))
        setInt(key, *number);
    else if (const bool* flag = std::get_if<bool>(&value))
        setBool(key, *flag);
    else
        setDouble(key, std::get<double>(value));
}

void SceneNodeRenderSettings::ensureLayers(u64 count) {
    if (layer_settings.size() < count)
        layer_settings.resize(count);
    for (u64 i = 0; i < layer_settings.size(); ++i)
        if (!layer_settings[i])
            layer_settings[i] = new LayerSetting(String("Layer ") + toString(i + 1));
}

Ref<WhitePoint> whitePointFromName(const String& name) {
    constexpr struct {
        const char* name;
        float x;
        float y;
    } illuminants[] = {
        {"E", 0.333333f, 0.333333f}, {"D50", 0.34567f, 0.3585f},  {"D55", 0.33242f, 0.34743f},
        {"D65", 0.31273f, 0.32902f}, {"D75", 0.29902f, 0.31485f}, {"A", 0.44757f, 0.40745f},
        {"B", 0.34842f, 0.35161f},   {"C", 0.31006f, 0.31616f},   {"9300", 0.2848f, 0.2932f},
        {"F2", 0.37207f, 0.37512f},  {"F7", 0.31285f, 0.32918f},  {"F11", 0.38054f, 0.37691f},
    };
    for (const auto& illuminant : illuminants)
        if (name == illuminant.name)
            return new WhitePoint(double(illuminant.x), double(illuminant.y));
    throw QuenzaException("'" + name +
                          "' is not a valid value for white_balance.  (must be one of D50, D55, F2 etc..)");
}

} // namespace Quenza
