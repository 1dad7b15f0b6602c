// SPDX-License-Identifier: MIT
#include "scene/aperture_shape.h"

#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

namespace Quenza {

void ApertureShape::doVisit(SceneVisitor&) {}

void ApertureCircular::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "aperture_shape");
    writeEmptyElement(stream, depth + 1, "circular");
    writeCloseTag(stream, depth, "aperture_shape");
}

void ApertureGenerated::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "aperture_shape");
    writeOpenTag(stream, depth + 1, "generated");
    writeIntElement(stream, depth + 2, "num_blades", num_blades);
    writeDoubleElement(stream, depth + 2, "blade_offset", blade_offset);
    writeDoubleElement(stream, depth + 2, "blade_curvature_radius", blade_curvature_radius);
    writeDoubleElement(stream, depth + 2, "start_angle", start_angle);
    writeCloseTag(stream, depth + 1, "generated");
    writeCloseTag(stream, depth, "aperture_shape");
}

void ApertureImage::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const {
    writeOpenTag(stream, depth, "aperture_shape");
    writeOpenTag(stream, depth + 1, "image");
    writePathElement(stream, depth + 2, "path", path, options);
    writeCloseTag(stream, depth + 1, "image");
    writeCloseTag(stream, depth, "aperture_shape");
}

void ApertureImage::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::COLLECT_DEPENDENCIES)
        visitor.dependencies.push_back(path);
    else if (visitor.mode == SceneVisitor::UPDATE_DEPENDENCIES)
        path = getMappedPath(visitor.path_map, path);
}

} // namespace Quenza
