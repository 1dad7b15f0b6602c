// SPDX-License-Identifier: MIT
#include "scene/wavelength_independent_param.h"

#include "scene/wavelength_dependent_param.h"
#include "scene/xml_elements.h"

namespace Quenza {

void ConstantWavelengthIndependentParam::writeToXML(OStream& stream, u32 depth,
                                                    const XMLWriteOptions&) const {
    writeDoubleElement(stream, depth, "constant", value);
}

Ref<WavelengthIndependentParam> ConstantWavelengthIndependentParam::cloneWavelengthIndependent() const {
    return new ConstantWavelengthIndependentParam(value);
}

Ref<WavelengthDependentParam> ConstantWavelengthIndependentParam::cloneWavelengthDependent() const {
    return new ConstantWavelengthDependentParam(new UniformSpectrum(value));
}

} // namespace Quenza
