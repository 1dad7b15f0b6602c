// SPDX-License-Identifier: MIT
#include "reading/spectrum_parser.h"

#include "reading/parsed_element.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

std::string heldSpectrum(const std::string& children) {
    return "<spectrum>\n" + children + "</spectrum>";
}

Ref<RegularSpectrum> makeRegular(double start, double end, const Vector<double>& values) {
    Ref<RegularSpectrum> spectrum = new RegularSpectrum;
    spectrum->start_wavelength = start;
    spectrum->end_wavelength = end;
    spectrum->num_values = static_cast<i32>(values.size());
    spectrum->values = values;
    return spectrum;
}

TEST(SpectrumParser, ReadsWhatIsWritten) {
    const Ref<Spectrum> spectra[] = {
        new RGBSpectrum({0.25, 0.1, 1e-7}, 1.5),
        new BlackBodySpectrum(3200, 0.5),
        new PeakSpectrum(5e-7, 1e-8, 2, 0.25),
        new UniformSpectrum(-0.125),
        makeRegular(0.38e-6, 0.75e-6, {0.1, 0.2, 1e30}),
        // As the exporter turns nanometres into metres: one digit above the limit.
        makeRegular(400 * 1e-9, 700 * 1e-9, {1, 2}),
    };
    for (const Ref<Spectrum>& spectrum : spectra) {
        const std::string text = xmlText(*spectrum);
        EXPECT_EQ(xmlText(*parseSpectrum(ParsedElement(heldSpectrum(text)))), text);
    }
}

TEST(TabulatedSpectralDataParser, ReadsWhatIsWrittenAndNoOtherCount) {
    TabulatedSpectralData data;
    data.start_wavelength = 1e-7;
    data.end_wavelength = 2e-7;
    data.num_rows = 2;
    data.num_columns = 3;
    data.values = {1, 2, 3, 4, 5, 6.5};
    const std::string children = xmlText(data);
    EXPECT_EQ(xmlText(*parseTabulatedSpectralData(ParsedElement("<t>" + children + "</t>"))), children);

    for (const i32 rows : {1, 3, -1, 0x7FFFFFFF}) {
        data.num_rows = rows;
        const std::string expected =
            rows < 0 ? "Failed to parse unsigned integer from '-1'  (In element 'num_rows', around line 4, "
                       "column 1)"
                     : "Syntax error while parsing data.  (In element 't', around line 1, column 1)";
        EXPECT_EQ(refusal("<t>\n" + xmlText(data) + "</t>", parseTabulatedSpectralData), expected);
    }
}

} // namespace
} // namespace Quenza
