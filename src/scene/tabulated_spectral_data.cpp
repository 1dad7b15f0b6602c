// SPDX-License-Identifier: MIT
#include "scene/tabulated_spectral_data.h"

#include "scene/values_element.h"
#include "scene/xml_elements.h"

namespace Quenza {

void TabulatedSpectralData::writeToXML(OStream& stream, u32 depth) const {
    writeDoubleElement(stream, depth, "start_wavelength", start_wavelength);
    writeDoubleElement(stream, depth, "end_wavelength", end_wavelength);
    writeIntElement(stream, depth, "num_rows", num_rows);
    writeIntElement(stream, depth, "num_columns", num_columns);
    writeValuesElement(stream, depth, values);
}

} // namespace Quenza
