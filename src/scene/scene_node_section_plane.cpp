// SPDX-License-Identifier: MIT
#include "scene/scene_node_section_plane.h"

#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

namespace Quenza {

Ref<SceneNode> SceneNodeSectionPlane::clone() const {
    const Ref<SceneNodeSectionPlane> copy = new SceneNodeSectionPlane;
    copyBaseFieldsTo(*copy);
    copy->point = point;
    copy->normal = normal;
    copy->enabled = enabled;
    copy->cull_geometry = cull_geometry;
    copy->object_list_type = object_list_type;
    copy->object_list = object_list;
    return copy;
}

void SceneNodeSectionPlane::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) {
    writeOpenTag(stream, depth, "section_plane");
    writeUIDAndName(stream, depth + 1);
    writeVec3Element(stream, depth + 1, "point", point);
    writeVec3Element(stream, depth + 1, "normal", normal);
    writeBoolElement(stream, depth + 1, "enabled", enabled);
    writeBoolElement(stream, depth + 1, "cull_geometry", cull_geometry);
    if (object_list_type != EXCLUDE)
        writeStringElement(stream, depth + 1, "object_list_type", "include");
    if (!object_list.empty()) {
        writeOpenTag(stream, depth + 1, "object_list");
        for (const SceneNodeUID object : object_list)
            writeUIntElement(stream, depth + 2, "uid", object.value());
        writeCloseTag(stream, depth + 1, "object_list");
    }
    writeCloseTag(stream, depth, "section_plane");
}

void SceneNodeSectionPlane::doVisit(SceneVisitor& visitor) {
    if (visitor.mode != SceneVisitor::OFFSET_UIDS)
        return;
    visitor.offsetUID(uid);
    for (SceneNodeUID& object : object_list)
        visitor.offsetUID(object);
}

} // namespace Quenza
