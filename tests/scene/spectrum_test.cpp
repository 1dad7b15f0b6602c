// SPDX-License-Identifier: MIT
#include "scene/spectrum.h"

#include "scene/tabulated_spectral_data.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

Ref<RegularSpectrum> makeRegular(std::initializer_list<double> values) {
    Ref<RegularSpectrum> regular = new RegularSpectrum;
    regular->start_wavelength = 4e-7;
    regular->end_wavelength = 7e-7;
    regular->values = values;
    regular->num_values = i32(regular->values.size());
    return regular;
}

TEST(Spectrum, WritesItsElementAndSoDoesItsClone) {
    struct Case {
        Ref<Spectrum> spectrum;
        u32 type;
        const char* text;
    };
    const Case cases[] = {
        {new BlackBodySpectrum(6500, 0.25), 0,
         "\t<blackbody>\n\t\t<temperature>6500</temperature>\n\t\t<gain>0.25</gain>\n\t</blackbody>\n"},
        {new PeakSpectrum(550, 20, 1, 0.1), 1,
         "\t<peak>\n\t\t<peak_min>550</peak_min>\n\t\t<peak_width>20</peak_width>\n"
         "\t\t<peak_value>1</peak_value>\n\t\t<base_value>0.1</base_value>\n\t</peak>\n"},
        {new RGBSpectrum({0.5, 0, 1e-7}, 2.2), 2,
         "\t<rgb>\n\t\t<rgb>0.5 0 1e-7</rgb>\n\t\t<gamma>2.2</gamma>\n\t</rgb>\n"},
        {makeRegular({0.1, -0.0, 1e21}), 3,
         "\t<regular_tabulated>\n\t\t<start_wavelength>4e-7</start_wavelength>\n"
         "\t\t<end_wavelength>7e-7</end_wavelength>\n\t\t<num_values>3</num_values>\n"
         "\t\t<values>0.1 0 1e21 </values>\n\t</regular_tabulated>\n"},
        {new UniformSpectrum(0.75), 4, "\t<uniform>\n\t\t<value>0.75</value>\n\t</uniform>\n"},
    };
    for (const Case& c : cases) {
        const Ref<Spectrum> copy = c.spectrum->clone();
        EXPECT_EQ(c.spectrum->getType(), c.type);
        EXPECT_EQ(copy->getType(), c.type);
        EXPECT_FALSE(copy == c.spectrum);
        EXPECT_EQ(xmlText(*c.spectrum, 1), c.text);
        EXPECT_EQ(xmlText(*copy, 1), c.text);
    }
}

TEST(Spectrum, ValuesWithoutNumbers) {
    EXPECT_NE(xmlText(*makeRegular({})).find("\t<num_values>0</num_values>\n\t<values></values>\n"),
              std::string::npos);
}

TEST(TabulatedSpectralData, HasNoFrameOfItsOwn) {
    TabulatedSpectralData table;
    table.start_wavelength = 4e-7;
    table.end_wavelength = 7e-7;
    table.num_rows = 1;
    table.num_columns = 2;
    table.values = {0.5, 1};
    EXPECT_EQ(xmlText(table, 1), "\t<start_wavelength>4e-7</start_wavelength>\n"
                                 "\t<end_wavelength>7e-7</end_wavelength>\n"
                                 "\t<num_rows>1</num_rows>\n\t<num_columns>2</num_columns>\n"
                                 "\t<values>0.5 1 </values>\n");
}

} // namespace
} // namespace Quenza
