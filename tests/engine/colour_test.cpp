// SPDX-License-Identifier: MIT
#include "engine/colour.h"

#include "engine/cie1931.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace engine;

namespace {

struct Chromaticity {
    double x, y;
};

Chromaticity chromaticityOf(const RGB& c) {
    const Triple xyz = transformed(RGB_TO_XYZ, {double(c.r), double(c.g), double(c.b)});
    const double sum = xyz[0] + xyz[1] + xyz[2];
    return {xyz[0] / sum, xyz[1] / sum};
}

void expectColour(const RGB& c, float r, float g, float b, float relative = 1e-4f) {
    const float tolerance = relative * std::max({std::abs(r), std::abs(g), std::abs(b), 1e-30f});
    EXPECT_NEAR(c.r, r, tolerance);
    EXPECT_NEAR(c.g, g, tolerance);
    EXPECT_NEAR(c.b, b, tolerance);
}

Quenza::RegularSpectrum tabulated(double start, double end, std::initializer_list<double> values) {
    Quenza::RegularSpectrum spectrum;
    spectrum.start_wavelength = start;
    spectrum.end_wavelength = end;
    for (const double value : values)
        spectrum.values.push_back(value);
    spectrum.num_values = Quenza::i32(values.size());
    return spectrum;
}

constexpr float UNIT_LUMINANCE = 683.0f * 106.856e-9f;

} // namespace

TEST(Colour, BlackBodiesHaveTheirPublishedChromaticityAndLuminance) {
    const struct {
        double kelvin, x, y;
    } cases[] = {{2856, 0.4476, 0.4074}, {6500, 0.3135, 0.3237}, {10000, 0.2807, 0.2884}};
    for (const auto& c : cases) {
        const Chromaticity found = chromaticityOf(radianceOf(Quenza::BlackBodySpectrum(c.kelvin, 1)));
        EXPECT_NEAR(found.x, c.x, 0.0008) << c.kelvin;
        EXPECT_NEAR(found.y, c.y, 0.0008) << c.kelvin;
    }
    // The candela's old definition: a square centimetre of freezing platinum (2041.4 K) gives 60 candela.
    EXPECT_NEAR(luminance(radianceOf(Quenza::BlackBodySpectrum(2041.4, 1))), 600000.0f, 4000.0f);
    EXPECT_NEAR(luminance(radianceOf(Quenza::BlackBodySpectrum(2041.4, 0.5))), 300000.0f, 2000.0f);
}

TEST(Colour, RadianceOfFlatAndRGBSpectra) {
    const RGB equal = radianceOf(Quenza::UniformSpectrum(2));
    EXPECT_NEAR(luminance(equal), 2 * UNIT_LUMINANCE, 1e-4f * UNIT_LUMINANCE);
    EXPECT_NEAR(chromaticityOf(equal).x, 1.0 / 3, 1e-4);
    EXPECT_NEAR(chromaticityOf(equal).y, 1.0 / 3, 1e-4);
    expectColour(radianceOf(Quenza::RGBSpectrum({1, 0.5, 0}, 2)), UNIT_LUMINANCE, UNIT_LUMINANCE / 4, 0);
    // The whole visible band, in nanometres and in metres, and a table, are the flat spectrum again.
    for (const RGB& same :
         {radianceOf(Quenza::PeakSpectrum(300, 550, 2, 0)),
          radianceOf(Quenza::PeakSpectrum(3e-7, 5.5e-7, 2, 0)),
          radianceOf(Quenza::PeakSpectrum(500, 10, 2, 2)), radianceOf(tabulated(4e-7, 7e-7, {2, 2})),
          radianceOf(tabulated(4e-7, 7e-7, {2}))})
        expectColour(same, equal.r, equal.g, equal.b);
}

TEST(Colour, Reflectances) {
    expectColour(reflectanceOf(Quenza::UniformSpectrum(0.25)), 0.25f, 0.25f, 0.25f);
    expectColour(reflectanceOf(Quenza::RGBSpectrum({0.5, 1, 0}, 2.2)), std::pow(0.5f, 2.2f), 1, 0);
    expectColour(reflectanceOf(tabulated(4e-7, 7e-7, {0.5, 0.5, 0.5})), 0.5f, 0.5f, 0.5f, 1e-3f);
    EXPECT_NEAR(luminance(reflectanceOf(Quenza::BlackBodySpectrum(3000, 0.7))), 0.7f, 1e-3f);
    const RGB rising = reflectanceOf(tabulated(4e-7, 7e-7, {0, 1}));
    EXPECT_GT(rising.r, rising.g);
    EXPECT_GT(rising.g, rising.b);
    expectColour(absorptionOf(Quenza::UniformSpectrum(300)), 300, 300, 300);
}

TEST(Colour, WhatIsNoColourIsBlack) {
    const double nan = std::nan("");
    for (const RGB& c :
         {reflectanceOf(Quenza::UniformSpectrum(-1)), reflectanceOf(Quenza::UniformSpectrum(nan)),
          reflectanceOf(Quenza::RGBSpectrum({-1, nan, -0.0}, 2.2)),
          radianceOf(Quenza::BlackBodySpectrum(0, 1)), radianceOf(Quenza::BlackBodySpectrum(-5, 1)),
          radianceOf(tabulated(4e-7, 7e-7, {})), radianceOf(tabulated(7e-7, 4e-7, {1, 1})),
          radianceOf(Quenza::PeakSpectrum(nan, nan, 1, 0))})
        EXPECT_TRUE(isBlack(c)) << c.r << " " << c.g << " " << c.b;
    EXPECT_TRUE(std::isfinite(luminance(radianceOf(Quenza::BlackBodySpectrum(1e300, 1e300)))));
}
