// SPDX-License-Identifier: MIT
#include "scene/phase_function.h"

#include "scene/xml_elements.h"

namespace Quenza {

void UniformPhaseFunction::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "uniform");
    writeCloseTag(stream, depth, "uniform");
}

void HenyeyGreensteinPhaseFunction::writeToXML(OStream& stream, u32 depth,
                                               const XMLWriteOptions& options) const {
    writeOpenTag(stream, depth, "henyey_greenstein");
    writeOpenTag(stream, depth + 1, "g_spectrum");
    if (g_spectrum)
        g_spectrum->writeToXML(stream, depth + 2, options);
    writeCloseTag(stream, depth + 1, "g_spectrum");
    writeCloseTag(stream, depth, "henyey_greenstein");
}

void HenyeyGreensteinPhaseFunction::visit(SceneVisitor& visitor) {
    if (g_spectrum)
        g_spectrum->visit(visitor);
}

} // namespace Quenza
