// SPDX-License-Identifier: MIT
#include "scene/spectrum.h"

#include "scene/values_element.h"
#include "scene/xml_elements.h"

namespace Quenza {

void BlackBodySpectrum::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "blackbody");
    writeDoubleElement(stream, depth + 1, "temperature", temperature);
    writeDoubleElement(stream, depth + 1, "gain", gain);
    writeCloseTag(stream, depth, "blackbody");
}

void PeakSpectrum::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "peak");
    writeDoubleElement(stream, depth + 1, "peak_min", peak_min);
    writeDoubleElement(stream, depth + 1, "peak_width", peak_width);
    writeDoubleElement(stream, depth + 1, "peak_value", peak_value);
    writeDoubleElement(stream, depth + 1, "base_value", base_value);
    writeCloseTag(stream, depth, "peak");
}

void RGBSpectrum::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "rgb");
    writeVec3Element(stream, depth + 1, "rgb", rgb);
    writeDoubleElement(stream, depth + 1, "gamma", gamma);
    writeCloseTag(stream, depth, "rgb");
}

void RegularSpectrum::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "regular_tabulated");
    writeDoubleElement(stream, depth + 1, "start_wavelength", start_wavelength);
    writeDoubleElement(stream, depth + 1, "end_wavelength", end_wavelength);
    writeIntElement(stream, depth + 1, "num_values", num_values);
    writeValuesElement(stream, depth + 1, values);
    writeCloseTag(stream, depth, "regular_tabulated");
}

void UniformSpectrum::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "uniform");
    writeDoubleElement(stream, depth + 1, "value", value);
    writeCloseTag(stream, depth, "uniform");
}

} // namespace Quenza
