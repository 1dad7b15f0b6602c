// SPDX-License-Identifier: MIT
#include "scene/scene_node_medium.h"

#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <cstdio>

namespace Quenza {

void SceneNodeMedium::setName(const String& new_name) {
    (medium ? medium->name : name) = new_name;
}

const String& SceneNodeMedium::getName() const {
    return medium ? medium->name : name;
}

Ref<SceneNode> SceneNodeMedium::clone() const {
    Ref<SceneNodeMedium> copy = new SceneNodeMedium(medium);
    copyBaseFieldsTo(*copy);
    return copy;
}

void SceneNodeMedium::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    writeOpenTag(stream, depth, "medium");
    if (options.write_uids)
        writeUIntElement(stream, depth + 1, "uid", uid.value());
    writeStringElement(stream, depth + 1, "name", getName());
    if (medium) {
        writeIntElement(stream, depth + 1, "precedence", medium->precedence);
        medium->writeBodyToXML(stream, depth + 1, options);
    }
    writeCloseTag(stream, depth, "medium");
}

void SceneNodeMedium::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::OFFSET_UIDS)
        visitor.offsetUID(uid);
    else if (medium)
        medium->visit(visitor);
}

bool SceneNodeMedium::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::fputs("TODO: IMPLEMENT SceneNodeMedium::doIsEqual()\n", stdout);
    return true;
}

} // namespace Quenza
