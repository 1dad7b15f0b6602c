// SPDX-License-Identifier: MIT
#include "scene/texture.h"

#include "scene/file_dependency.h"
#include "scene/xml_elements.h"

namespace Quenza {

void Texture::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const {
    writeOpenTag(stream, depth, "texture");
    writePathElement(stream, depth + 1, "path", path, options);
    writeDoubleElement(stream, depth + 1, "a", a);
    writeDoubleElement(stream, depth + 1, "b", b);
    writeDoubleElement(stream, depth + 1, "c", c);
    writeIntElement(stream, depth + 1, "uv_set_index", uv_set_index);
    writeDoubleElement(stream, depth + 1, "exponent", exponent);
    if (tex_coord_generation) {
        writeOpenTag(stream, depth + 1, "tex_coord_generation");
        tex_coord_generation->writeToXML(stream, depth + 2);
        writeCloseTag(stream, depth + 1, "tex_coord_generation");
    }
    writeBoolElement(stream, depth + 1, "smooth", smooth);
    writeCloseTag(stream, depth, "texture");
}

void Texture::visit(SceneVisitor& visitor) {
    visitFileDependency(visitor, path);
}

} // namespace Quenza
