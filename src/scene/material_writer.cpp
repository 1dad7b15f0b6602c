// SPDX-License-Identifier: MIT
#include "scene/material_writer.h"

#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "scene/xml_elements.h"

namespace Quenza {

void MaterialWriter::boolean(const char* element, bool& value) {
    writeBoolElement(stream_, depth_, element, value);
}

void MaterialWriter::integer(const char* element, i32& value) {
    writeIntElement(stream_, depth_, element, value);
}

void MaterialWriter::number(const char* element, double& value) {
    writeDoubleElement(stream_, depth_, element, value);
}

void MaterialWriter::vector(const char* element, Vec3d& value) {
    writeVec3Element(stream_, depth_, element, value);
}

void MaterialWriter::text(const char* element, String& value) {
    writeStringElement(stream_, depth_, element, value);
}

void MaterialWriter::optionalText(const char* element, String& value) {
    if (!value.empty())
        text(element, value);
}

void MaterialWriter::table(const char* element, Ref<TabulatedSpectralData>& data) {
    if (!data)
        return;
    writeOpenTag(stream_, depth_, element);
    data->writeToXML(stream_, depth_ + 1);
    writeCloseTag(stream_, depth_, element);
}

void MaterialWriter::material(const ReferenceElements& elements, Ref<SceneNodeMaterial>& node,
                              SceneNodeUID& uid) {
    writeReference(elements, node.getPointer(), uid);
}

void MaterialWriter::medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) {
    if (node || uid.isValid())
        writeReference(MEDIUM_REFERENCE, node.getPointer(), uid);
}

void MaterialWriter::writeReference(const ReferenceElements& elements, const SceneNode* node,
                                    SceneNodeUID uid) {
    if (options_.write_uids)
        writeUIntElement(stream_, depth_, elements.uid, (node ? node->getUID() : uid).value());
    else
        writeStringElement(stream_, depth_, elements.name, node ? node->getName() : String());
}

void MaterialWriter::beginGroup(const char* element) {
    writeOpenTag(stream_, depth_, element);
    ++depth_;
}

void MaterialWriter::endGroup(const char* element) {
    --depth_;
    writeCloseTag(stream_, depth_, element);
}

void MaterialWriter::presentParameter(const char* element, Param& param) {
    writeOpenTag(stream_, depth_, element);
    param.writeToXML(stream_, depth_ + 1, options_);
    writeCloseTag(stream_, depth_, element);
}

} // namespace Quenza
