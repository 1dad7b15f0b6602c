// SPDX-License-Identifier: MIT
#pragma once

#include "scene/spectrum.h"

#include <algorithm>

namespace engine {

/// Linear colour in Rec.709 primaries with a D65 white. A radiance is scaled so that its luminance is in
/// cd/m^2; a reflectance is 1 for a perfect white.
struct RGB {
    float r = 0, g = 0, b = 0;

    RGB() = default;
    explicit RGB(float grey) : r(grey), g(grey), b(grey) {}
    RGB(float red, float green, float blue) : r(red), g(green), b(blue) {}

    RGB& operator+=(const RGB& o) { return r += o.r, g += o.g, b += o.b, *this; }
    RGB& operator-=(const RGB& o) { return r -= o.r, g -= o.g, b -= o.b, *this; }
    RGB& operator*=(const RGB& o) { return r *= o.r, g *= o.g, b *= o.b, *this; }
    RGB& operator*=(float s) { return r *= s, g *= s, b *= s, *this; }
    RGB& operator/=(float s) { return *this *= 1.0f / s; }
};

inline RGB operator+(RGB a, const RGB& b) {
    return a += b;
}
inline RGB operator-(RGB a, const RGB& b) {
    return a -= b;
}
inline RGB operator*(RGB a, const RGB& b) {
    return a *= b;
}
inline RGB operator*(RGB a, float s) {
    return a *= s;
}
inline RGB operator*(float s, RGB a) {
    return a *= s;
}
inline RGB operator/(RGB a, float s) {
    return a /= s;
}

/// The CIE 1931 Y of a linear Rec.709 colour.
inline float luminance(const RGB& c) {
    return 0.2126729f * c.r + 0.7151522f * c.g + 0.0721750f * c.b;
}
inline bool isBlack(const RGB& c) {
    return c.r == 0 && c.g == 0 && c.b == 0;
}
/// A factor from 0 to 1 in each component: a surface that reflected more than it gets would never let a path
/// end.
inline RGB limited(const RGB& c) {
    return {std::clamp(c.r, 0.0f, 1.0f), std::clamp(c.g, 0.0f, 1.0f), std::clamp(c.b, 0.0f, 1.0f)};
}
inline float maxComponent(const RGB& c) {
    const float rg = c.r > c.g ? c.r : c.g;
    return rg > c.b ? rg : c.b;
}

/// A reflectance, transmittance or any other factor: a uniform spectrum of value v is (v, v, v). Spectra
/// other than RGB are seen under an equal-energy light. Components are never negative; what isn't finite
/// counts as 0.
RGB reflectanceOf(const Quenza::Spectrum& spectrum);

/// The radiance of a spectral radiance in W/(m^2 sr m), integrated over the wavelengths with the observer of
/// CIE 1931, times 683 lm/W. An RGB spectrum stands for a D65-like spectrum of that colour whose level at
/// white is 1.
RGB radianceOf(const Quenza::Spectrum& spectrum);

/// An absorption or scattering coefficient, in 1/m for each channel.
RGB absorptionOf(const Quenza::Spectrum& spectrum);

} // namespace engine
