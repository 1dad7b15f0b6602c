// SPDX-License-Identifier: MIT
#include "scene/tex_coord_generator.h"

#include "scene/xml_elements.h"

namespace Quenza {

namespace {

void writeSpherical(OStream& stream, u32 depth, const char* element, const Ref<Rotation>& rotation) {
    writeOpenTag(stream, depth, element);
    writeOpenTag(stream, depth + 1, "rotation");
    if (rotation)
        rotation->writeToXML(stream, depth + 2);
    writeCloseTag(stream, depth + 1, "rotation");
    writeCloseTag(stream, depth, element);
}

} // namespace

void UVTexCoordGenerator::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "uv");
    writeVec4Element(stream, depth + 1, "matrix", matrix);
    writeVec2Element(stream, depth + 1, "translation", translation);
    writeCloseTag(stream, depth, "uv");
}

void SphericalTexCoordGenerator::writeToXML(OStream& stream, u32 depth) const {
    writeSpherical(stream, depth, "spherical", rotation);
}

void SphericalEnvTexCoordGenerator::writeToXML(OStream& stream, u32 depth) const {
    writeSpherical(stream, depth, "spherical_environment", rotation);
}

} // namespace Quenza
