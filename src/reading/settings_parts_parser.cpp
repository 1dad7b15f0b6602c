// SPDX-License-Identifier: MIT
#include "reading/settings_parts_parser.h"

#include "reading/xml_values.h"

#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

Ref<RenderRegion> parseRenderRegion(const TiXmlElement& element) {
    constexpr const char* names[] = {"x1", "y1", "x2", "y2"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<RenderRegion> region = new RenderRegion;
    region->x1 = xml::parseInt(element, "x1");
    region->y1 = xml::parseInt(element, "y1");
    region->x2 = xml::parseInt(element, "x2");
    region->y2 = xml::parseInt(element, "y2");
    return region;
}

Ref<LayerSetting> parseLayerSetting(const TiXmlElement& element) {
    constexpr const char* names[] = {"name", "xyz", "gain"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<LayerSetting> layer = new LayerSetting;
    layer->name = xml::parseOptionalString(element, "name", "");
    layer->xyz = xml::parseOptionalVec3(element, "xyz", layer->xyz);
    layer->gain = xml::parseOptionalDouble(element, "gain", layer->gain);
    return layer;
}

Ref<GPUDeviceSettings> parseGPUDevice(const TiXmlElement& element) {
    constexpr const char* names[] = {"device_name", "subsystem"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<GPUDeviceSettings> device = new GPUDeviceSettings;
    device->device_name = xml::parseString(element, "device_name");
    device->subsystem = xml::parseOptionalString(element, "subsystem", "") == "CUDA"
                            ? GPUDeviceSettings::CUDA
                            : GPUDeviceSettings::OPENCL;
    return device;
}

} // namespace Quenza
