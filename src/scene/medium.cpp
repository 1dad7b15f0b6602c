// SPDX-License-Identifier: MIT
#include "scene/medium.h"

#include "scene/xml_elements.h"

namespace Quenza {

void SubsurfaceScattering::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const {
    if (scattering_coefficient) {
        writeOpenTag(stream, depth, "scattering_coefficient");
        scattering_coefficient->writeToXML(stream, depth + 1, options);
        writeCloseTag(stream, depth, "scattering_coefficient");
    }
    if (phase_function) {
        writeOpenTag(stream, depth, "phase_function");
        phase_function->writeToXML(stream, depth + 1, options);
        writeCloseTag(stream, depth, "phase_function");
    }
}

void SubsurfaceScattering::visit(SceneVisitor& visitor) {
    if (scattering_coefficient)
        scattering_coefficient->visit(visitor);
    if (phase_function)
        phase_function->visit(visitor);
}

void BasicMedium::writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const {
    writeOpenTag(stream, depth, "basic");
    writeDoubleElement(stream, depth + 1, "ior", ior);
    writeDoubleElement(stream, depth + 1, "cauchy_b_coeff", cauchy_b_coeff);
    writeDoubleElement(stream, depth + 1, "step_size", step_size);
    if (absorption_coefficient) {
        writeOpenTag(stream, depth + 1, "absorption_coefficient");
        absorption_coefficient->writeToXML(stream, depth + 2, options);
        writeCloseTag(stream, depth + 1, "absorption_coefficient");
    }
    if (subsurface_scattering) {
        writeOpenTag(stream, depth + 1, "subsurface_scattering");
        subsurface_scattering->writeToXML(stream, depth + 2, options);
        writeCloseTag(stream, depth + 1, "subsurface_scattering");
    }
    writeCloseTag(stream, depth, "basic");
}

void BasicMedium::visit(SceneVisitor& visitor) {
    if (absorption_coefficient)
        absorption_coefficient->visit(visitor);
    if (subsurface_scattering)
        subsurface_scattering->visit(visitor);
}

void Dermis::writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "dermis");
    writeDoubleElement(stream, depth + 1, "hemoglobin_fraction", hemoglobin_fraction);
    writeCloseTag(stream, depth, "dermis");
}

void Epidermis::writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "epidermis");
    writeDoubleElement(stream, depth + 1, "melanin_fraction", melanin_fraction);
    writeDoubleElement(stream, depth + 1, "melanin_type_blend", melanin_type_blend);
    writeCloseTag(stream, depth, "epidermis");
}

void Atmosphere::writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "atmosphere");
    writeVec3Element(stream, depth + 1, "center", center);
    writeDoubleElement(stream, depth + 1, "turbidity", turbidity);
    writeCloseTag(stream, depth, "atmosphere");
}

} // namespace Quenza
