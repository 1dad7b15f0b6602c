// SPDX-License-Identifier: MIT
#pragma once

#include "scene/image_filters.h"
#include "scene/render_settings_parts.h"
#include "scene/scene_node.h"
#include "scene/setting.h"
#include "scene/setting_rows.h"

namespace Quenza {

/// The renderer's settings. A scene has at most one such node. Most settings are rows of a table from key to
/// value; a new node has all keys that the renderer knows with their defaults. A node that is a mere layer of
/// settings may lack rows, filters and white point.
class SceneNodeRenderSettings : public SceneNode {
public:
    SceneNodeRenderSettings();

    u32 getType() const override { return NODE_RENDER_SETTINGS; }
    /// The copy shares nothing with this node.
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    bool doIsEqual(const SceneNode& other) const override;

    /// Throw QuenzaException when there is no such row or it is of another type.
    i32 getInt(const String& key) const;
    bool getBool(const String& key) const;
    double getDouble(const String& key) const;
    /// Replace the row, whatever its type, or create it.
    void setInt(const String& key, i32 value);
    void setBool(const String& key, bool value);
    void setDouble(const String& key, double value);
    void setValue(const String& key, const SettingValue& value);

    void setSplatFilter(const Ref<SplatFilter>& filter) { splat_filter = filter; }
    void setDownsizeFilter(const Ref<DownsizeFilter>& filter) { downsize_filter = filter; }
    void setWhitePoint(const Ref<WhitePoint>& point) { white_point = point; }

    u64 getNumLayers() const { return layer_settings.size(); }
    const Ref<LayerSetting>& getLayer(u64 index) const { return layer_settings[index]; }
    void addLayer(const Ref<LayerSetting>& layer) { layer_settings.push_back(layer); }
    /// Makes the list at least `count` long. New layers, and those in the place of nulls, are called
    /// "Layer <n>" counting from 1, and leave the image as it is.
    void ensureLayers(u64 count);

    Map<String, Ref<BaseSetting>> settings;
    Ref<SplatFilter> splat_filter;
    Ref<DownsizeFilter> downsize_filter;
    Ref<WhitePoint> white_point;
    Ref<RenderRegion> render_region; ///< Null renders the whole image.
    Vector<Ref<LayerSetting>> layer_settings;
    Ref<GPUDeviceSettings> gpu_device; ///< Null leaves the choice to the renderer.

private:
    void writePartsToXML(OStream& stream, u32 depth) const;
};

/// The white point of a standard illuminant ("D65") or colour temperature ("9300"); throws QuenzaException
/// for any other name.
Ref<WhitePoint> whitePointFromName(const String& name);

} // namespace Quenza
