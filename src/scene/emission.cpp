// SPDX-License-Identifier: MIT
#include "scene/emission.h"

#include "scene/ostream.h"
#include "scene/scene_node_material.h"
#include "scene/xml_elements.h"

namespace Quenza {

IESProfile::IESProfile() = default;
IESProfile::IESProfile(const IESProfile&) = default;
IESProfile::~IESProfile() = default;

void IESProfile::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const {
    writeOpenTag(stream, depth, "ies_profile");
    writeUIntElement(stream, depth + 1, "material_uid", getMaterialUID().value());
    writePathElement(stream, depth + 1, "path", path, options);
    writeCloseTag(stream, depth, "ies_profile");
}

SceneNodeUID IESProfile::getMaterialUID() const {
    return material ? material->getUID() : material_uid;
}

EmissionScale::EmissionScale() = default;
EmissionScale::EmissionScale(const EmissionScale&) = default;
EmissionScale::~EmissionScale() = default;

void EmissionScale::writeToXML(OStream& stream, u32 depth) const {
    if (measure >= NO_MEASURE)
        return;
    writeOpenTag(stream, depth, "emission_scale");
    writeStringElement(stream, depth + 1, "measure", MEASURE_WORDS[measure]);
    writeDoubleElement(stream, depth + 1, "value", value);
    writeUIntElement(stream, depth + 1, "material_uid", getMaterialUID().value());
    writeCloseTag(stream, depth, "emission_scale");
}

SceneNodeUID EmissionScale::getMaterialUID() const {
    return material ? material->getUID() : material_uid;
}

} // namespace Quenza
