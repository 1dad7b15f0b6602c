// SPDX-License-Identifier: MIT
#include "scene/scene_node_tonemapping.h"

#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

namespace Quenza {

Ref<SceneNode> SceneNodeTonemapping::clone() const {
    const Ref<SceneNodeTonemapping> copy = new SceneNodeTonemapping;
    copyBaseFieldsTo(*copy);
    copy->scale = scale;
    copy->pre_scale = pre_scale;
    copy->post_scale = post_scale;
    copy->burn = burn;
    copy->response_function_path = response_function_path;
    copy->film_iso = film_iso;
    copy->ev_adjust = ev_adjust;
    copy->tonemap_type = tonemap_type;
    return copy;
}

void SceneNodeTonemapping::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) {
    writeOpenTag(stream, depth, "tonemapping");
    writeUIDAndName(stream, depth + 1);
    switch (tonemap_type) {
    case LINEAR:
        writeOpenTag(stream, depth + 1, "linear");
        writeDoubleElement(stream, depth + 2, "scale", scale);
        writeCloseTag(stream, depth + 1, "linear");
        break;
    case REINHARD:
        writeOpenTag(stream, depth + 1, "reinhard");
        writeDoubleElement(stream, depth + 2, "pre_scale", pre_scale);
        writeDoubleElement(stream, depth + 2, "post_scale", post_scale);
        writeDoubleElement(stream, depth + 2, "burn", burn);
        writeCloseTag(stream, depth + 1, "reinhard");
        break;
    case CAMERA:
        writeOpenTag(stream, depth + 1, "camera");
        writeStringElement(stream, depth + 2, "response_function_path", response_function_path);
        writeDoubleElement(stream, depth + 2, "film_iso", film_iso);
        writeDoubleElement(stream, depth + 2, "ev_adjust", ev_adjust);
        writeCloseTag(stream, depth + 1, "camera");
        break;
    default:
        break;
    }
    writeCloseTag(stream, depth, "tonemapping");
}

void SceneNodeTonemapping::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::OFFSET_UIDS)
        visitor.offsetUID(uid);
}

} // namespace Quenza
