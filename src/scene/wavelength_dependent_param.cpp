// SPDX-License-Identifier: MIT
#include "scene/wavelength_dependent_param.h"

#include "scene/xml_elements.h"

namespace Quenza {

void writeConstantSpectrum(OStream& stream, u32 depth, const Ref<Spectrum>& spectrum) {
    writeOpenTag(stream, depth, "constant");
    if (spectrum)
        spectrum->writeToXML(stream, depth + 1);
    writeCloseTag(stream, depth, "constant");
}

void ConstantWavelengthDependentParam::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeConstantSpectrum(stream, depth, spectrum);
}

Ref<WavelengthDependentParam> ConstantWavelengthDependentParam::cloneWavelengthDependent() const {
    return new ConstantWavelengthDependentParam(spectrum ? spectrum->clone() : Ref<Spectrum>());
}

} // namespace Quenza
