// SPDX-License-Identifier: MIT
#include "engine/cie1931.h"

#include <algorithm>
#include <cstddef>

namespace engine {

namespace {

constexpr size_t SAMPLES = size_t(CIE_END - CIE_START) / CIE_STEP + 1;

// CIE 015, Colorimetry: the table of the 1931 observer in steps of 10 nm.
constexpr double TABLE[SAMPLES][3] = {
    {0.0014, 0.0000, 0.0065}, {0.0042, 0.0001, 0.0201}, {0.0143, 0.0004, 0.0679}, {0.0435, 0.0012, 0.2074},
    {0.1344, 0.0040, 0.6456}, {0.2839, 0.0116, 1.3856}, {0.3483, 0.0230, 1.7471}, {0.3362, 0.0380, 1.7721},
    {0.2908, 0.0600, 1.6692}, {0.1954, 0.0910, 1.2876}, {0.0956, 0.1390, 0.8130}, {0.0320, 0.2080, 0.4652},
    {0.0049, 0.3230, 0.2720}, {0.0093, 0.5030, 0.1582}, {0.0633, 0.7100, 0.0782}, {0.1655, 0.8620, 0.0422},
    {0.2904, 0.9540, 0.0203}, {0.4334, 0.9950, 0.0087}, {0.5945, 0.9950, 0.0039}, {0.7621, 0.9520, 0.0021},
    {0.9163, 0.8700, 0.0017}, {1.0263, 0.7570, 0.0011}, {1.0622, 0.6310, 0.0008}, {1.0026, 0.5030, 0.0003},
    {0.8544, 0.3810, 0.0002}, {0.6424, 0.2650, 0.0000}, {0.4479, 0.1750, 0.0000}, {0.2835, 0.1070, 0.0000},
    {0.1649, 0.0610, 0.0000}, {0.0874, 0.0320, 0.0000}, {0.0468, 0.0170, 0.0000}, {0.0227, 0.0082, 0.0000},
    {0.0114, 0.0041, 0.0000}, {0.0058, 0.0021, 0.0000}, {0.0029, 0.0010, 0.0000}, {0.0014, 0.0005, 0.0000},
    {0.0007, 0.0003, 0.0000}, {0.0003, 0.0001, 0.0000}, {0.0002, 0.0001, 0.0000}, {0.0001, 0.0000, 0.0000},
    {0.0000, 0.0000, 0.0000},
};

constexpr ColourMatrix BRADFORD = {0.8951, 0.2664, -0.1614, -0.7502, 1.7135, 0.0367, 0.0389, -0.0685, 1.0296};
constexpr ColourMatrix BRADFORD_INVERSE = {0.9869929, -0.1470543, 0.1599627, 0.4323053, 0.5183603,
                                           0.0492912, -0.0085287, 0.0400428, 0.9684867};

Triple interpolated(double nanometres) {
    if (!(nanometres >= CIE_START && nanometres <= CIE_END))
        return {};
    const double position = (nanometres - CIE_START) / CIE_STEP;
    const size_t index = std::min(size_t(position), SAMPLES - 2);
    const double t = position - double(index);
    Triple result;
    for (size_t i = 0; i < 3; ++i)
        result[i] = TABLE[index][i] * (1 - t) + TABLE[index + 1][i] * t;
    return result;
}

/// The three columns of the table sum to slightly different values; scaled, equal energy is exactly neutral.
Triple columnScales() {
    Triple sums{};
    for (int nm = CIE_START; nm <= CIE_END; ++nm)
        for (size_t i = 0; i < 3; ++i)
            sums[i] += interpolated(nm)[i] * 1e-9;
    return {EQUAL_ENERGY_Y / sums[0], EQUAL_ENERGY_Y / sums[1], EQUAL_ENERGY_Y / sums[2]};
}

} // namespace

Triple observerAt(double nanometres) {
    static const Triple scales = columnScales();
    const Triple observer = interpolated(nanometres);
    return {observer[0] * scales[0], observer[1] * scales[1], observer[2] * scales[2]};
}

ColourMatrix bradfordAdaption(const Triple& from_white, const Triple& to_white) {
    const Triple from = transformed(BRADFORD, from_white);
    const Triple to = transformed(BRADFORD, to_white);
    const ColourMatrix scale = {to[0] / from[0], 0, 0, 0, to[1] / from[1], 0, 0, 0, to[2] / from[2]};
    return product(BRADFORD_INVERSE, product(scale, BRADFORD));
}

Triple xyzOfChromaticity(double x, double y) {
    return {x / y, 1.0, (1.0 - x - y) / y};
}

} // namespace engine
