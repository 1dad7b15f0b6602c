// SPDX-License-Identifier: MIT
#include "scene/scene_node_background_settings.h"

#include "scene/material.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <cstdio>

namespace Quenza {

SceneNodeBackgroundSettings::SceneNodeBackgroundSettings() = default;

SceneNodeBackgroundSettings::~SceneNodeBackgroundSettings() = default;

Ref<SceneNode> SceneNodeBackgroundSettings::clone() const {
    std::printf("SceneNodeBackgroundSettings::clone() not yet implemented");
    return nullptr;
}

void SceneNodeBackgroundSettings::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    writeOpenTag(stream, depth, "background_settings");
    writeUIDAndName(stream, depth + 1);
    if (emission_scale)
        emission_scale->writeToXML(stream, depth + 1);
    if (background_material) {
        writeOpenTag(stream, depth + 1, "background_material");
        writeOpenTag(stream, depth + 2, "material");
        writeStringElement(stream, depth + 3, "name", background_material->name);
        background_material->writeFrameToXML(stream, depth + 3, options);
        writeCloseTag(stream, depth + 2, "material");
        writeCloseTag(stream, depth + 1, "background_material");
    }
    writeCloseTag(stream, depth, "background_settings");
}

void SceneNodeBackgroundSettings::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::OFFSET_UIDS)
        visitor.offsetUID(uid);
    if (background_material)
        background_material->bind(visitor, nullptr);
}

u32 SceneNodeBackgroundSettings::getHighestLayerIndex() const {
    return background_material ? background_material->getLayer() : 0;
}

bool SceneNodeBackgroundSettings::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::printf("TODO: IMPLEMENT SceneNodeBackgroundSettings::doIsEqual()");
    return true;
}

} // namespace Quenza
