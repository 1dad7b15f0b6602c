// SPDX-License-Identifier: MIT
#include "reading/spectrum_parser.h"

#include "reading/parsed_element.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

std::string held(const std::string& children) {
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
        EXPECT_EQ(xmlText(*parseSpectrum(ParsedElement(held(text)))), text);
    }
}

std::string regular(const std::string& num_values, const std::string& start, const std::string& end,
                    const std::string& values) {
    return "<regular_tabulated><num_values>" + num_values + "</num_values><start_wavelength>" + start +
           "</start_wavelength><end_wavelength>" + end + "</end_wavelength><values>" + values +
           "</values></regular_tabulated>";
}

TEST(SpectrumParser, RefusesTablesInTheOrderOfTheChecks) {
    const struct {
        std::string text;
        const char* message;
    } rows[] = {
        // Everything is wrong in the first; each row repairs what was found.
        {regular("1", "4.1e-7", "6.9e-7", "x"), "num_values must be >= 2."},
        {regular("1000001", "4.1e-7", "6.9e-7", "x"), "num_values must be <= 1e6."},
        {regular("2", "4.1e-7", "6.9e-7", "x"), "start_wavelength must be <= 0.4e-6 m (400 nm)."},
        {regular("2", "4.000000001e-7", "6.9e-7", "x"), "start_wavelength must be <= 0.4e-6 m (400 nm)."},
        {regular("2", "4e-7", "6.9e-7", "x"), "start_wavelength must be <= 0.7e-6 m (700 nm)."},
        {regular("2", "4e-7", "6.999999999e-7", "x"), "start_wavelength must be <= 0.7e-6 m (700 nm)."},
        {regular("2", "4e-7", "7e-7", "x"), "Syntax error while parsing data."},
        {regular("2", "4e-7", "7e-7", ""), "Syntax error while parsing data."},
        {regular("2", "4e-7", "7e-7", "1"), "Syntax error while parsing data."},
        {regular("2", "4e-7", "7e-7", "1 2 3"), "Syntax error while parsing data."},
        {regular("2", "4e-7", "7e-7", "1 2x"), "Syntax error while parsing data."},
        {regular("2", "4e-7", "7e-7", "1-2"), "Syntax error while parsing data."},
        {regular("2", "4e-7", "7e-7", "1, 2"), "Syntax error while parsing data."},
        {regular("-5", "4e-7", "7e-7", "1 2"), "num_values must be >= 2."},
        // No more memory than the text can fill.
        {regular("1000000", "4e-7", "7e-7", "1 2"), "Syntax error while parsing data."},
    };
    for (const auto& row : rows)
        EXPECT_EQ(refusal(held(row.text), parseSpectrum),
                  std::string(row.message) + "  (In element 'regular_tabulated', around line 2, column 1)")
            << row.text;
}

TEST(SpectrumParser, RefusesWhatIsWrong) {
    const BadElement rows[] = {
        {"",
         "Failed to find child for element 'spectrum' - Child should be one of 'rgb', 'blackbody', 'peak', "
         "'regular_tabulated', 'uniform'  (In element 'spectrum', around line 1, column 1)"},
        {"<uniform><value>1</value></uniform>\n<rgb/>",
         "Found unexpected element 'rgb',  already parsed mutually exclusive element 'uniform'  (In element "
         "'rgb', "
         "around line 3, column 1)"},
        {"<uniform/>", "could not find element 'value'  (In element 'uniform', around line 2, column 1)"},
    };
    for (const BadElement& row : rows)
        EXPECT_EQ(refusal(held(row.text), parseSpectrum), row.message) << row.text;
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
