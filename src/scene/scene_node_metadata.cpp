// SPDX-License-Identifier: MIT
#include "scene/scene_node_metadata.h"

#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

namespace Quenza {

Ref<SceneNode> SceneNodeMetaData::clone() const {
    const Ref<SceneNodeMetaData> copy = new SceneNodeMetaData;
    copyBaseFieldsTo(*copy);
    copy->exporter = exporter;
    copy->author = author;
    copy->description = description;
    copy->created_date = created_date;
    copy->platform = platform;
    copy->exporter_specific = exporter_specific;
    return copy;
}

void SceneNodeMetaData::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) {
    writeOpenTag(stream, depth, "metadata");
    writeUIDAndName(stream, depth + 1);
    writeStringElement(stream, depth + 1, "exporter", exporter);
    writeStringElement(stream, depth + 1, "author", author);
    writeStringElement(stream, depth + 1, "description", description);
    writeStringElement(stream, depth + 1, "created_date", created_date);
    writeStringElement(stream, depth + 1, "platform", platform);
    writeStringElement(stream, depth + 1, "exporter_specific", exporter_specific);
    writeCloseTag(stream, depth, "metadata");
}

void SceneNodeMetaData::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::OFFSET_UIDS)
        visitor.offsetUID(uid);
}

} // namespace Quenza
