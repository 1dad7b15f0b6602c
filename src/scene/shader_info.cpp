// SPDX-License-Identifier: MIT
#include "scene/shader_info.h"

#include "scene/file_dependency.h"
#include "scene/xml_elements.h"

namespace Quenza {

void ShaderInfo::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const {
    for (const Ref<ShaderParam>& param : params)
        param->writeToXML(stream, depth);
    for (const String& include : includes)
        writeStringElement(stream, depth, "include", include);
    for (const Texture& texture : textures)
        texture.writeToXML(stream, depth, options);
    writeIndent(stream, depth);
    stream.writeString("<shader><![CDATA[" + shader + "]]></shader>\n");
}

void ShaderInfo::visit(SceneVisitor& visitor) {
    if (!firstVisit(visitor, *this))
        return;
    for (String& include : includes)
        visitFileDependency(visitor, include);
    for (Texture& texture : textures)
        texture.visit(visitor);
}

} // namespace Quenza
