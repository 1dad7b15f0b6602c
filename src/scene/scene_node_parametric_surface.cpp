// SPDX-License-Identifier: MIT
#include "scene/scene_node_parametric_surface.h"

#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <cstdio>

namespace Quenza {

Ref<SceneNode> SceneNodeParametricSurface::clone() const {
    std::printf("SceneNodeParametricSurface::clone() not yet implemented");
    return nullptr;
}

void SceneNodeParametricSurface::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) {
    writeOpenTag(stream, depth, "parametric_surface");
    writeUIDAndName(stream, depth + 1);
    writeOpenTag(stream, depth + 1, "shader");
    writeStringElement(stream, depth + 2, "shader", shader);
    writeCloseTag(stream, depth + 1, "shader");
    writeIntElement(stream, depth + 1, "num_u", num_u);
    writeIntElement(stream, depth + 1, "num_v", num_v);
    writeCloseTag(stream, depth, "parametric_surface");
}

void SceneNodeParametricSurface::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::OFFSET_UIDS)
        visitor.offsetUID(uid);
}

bool SceneNodeParametricSurface::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::printf("TODO: IMPLEMENT SceneNodeParametricSurface::doIsEqual()\n");
    return true;
}

} // namespace Quenza
