// SPDX-License-Identifier: MIT
#include "scene/displacement_param.h"

#include "foundation/string_utils.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"
#include "scene/xml_elements.h"

namespace Quenza {

void ConstantDisplacementParam::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) const {
    writeOpenTag(stream, depth, "constant");
    writeIndent(stream, depth + 1);
    stream.writeString(doubleToString(value) + "\n");
    writeCloseTag(stream, depth, "constant");
}

Ref<WavelengthIndependentParam> ConstantDisplacementParam::cloneWavelengthIndependent() const {
    return new ConstantWavelengthIndependentParam(value);
}

Ref<WavelengthDependentParam> ConstantDisplacementParam::cloneWavelengthDependent() const {
    return new ConstantWavelengthDependentParam(new UniformSpectrum(value));
}

} // namespace Quenza
