// SPDX-License-Identifier: MIT
#include "engine/reflectance.h"

#include "engine/cie1931.h"
#include "engine/sampling.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

struct Wavelength {
    float nanometres;
    RGB weight; ///< Of all wavelengths together 1 in each channel, so that white stays white.
};

constexpr int FILM_STEP = 20;
using FilmWavelengths = std::array<Wavelength, size_t((CIE_END - CIE_START) / FILM_STEP + 1)>;

RGB weightOf(double nanometres) {
    Triple xyz = observerAt(nanometres);
    for (size_t i = 0; i < 3; ++i) {
        xyz[i] *= D65_XYZ[i];
    }
    const Triple rgb = transformed(XYZ_TO_RGB, xyz);
    return {float(rgb[0]), float(rgb[1]), float(rgb[2])};
}

FilmWavelengths filmWavelengths() {
    FilmWavelengths wavelengths;
    RGB sum;
    for (size_t i = 0; i < wavelengths.size(); ++i) {
        const int nanometres = CIE_START + int(i) * FILM_STEP;
        wavelengths[i] = {float(nanometres), weightOf(nanometres)};
        sum += wavelengths[i].weight;
    }
    for (Wavelength& wavelength : wavelengths) {
        RGB& w = wavelength.weight;
        w = {w.r / sum.r, w.g / sum.g, w.b / sum.b};
    }
    return wavelengths;
}

/// Of one polarisation: `single` is the reflectance of one face, `phase` the delay of a trip through the film
/// and back, `contrast` what of the interference is left.
float airy(float single, float phase, float contrast) {
    if (single >= 1.0f) {
        return 1.0f;
    }
    const float sine = std::sin(0.5f * phase);
    const float finesse = 4.0f * single / ((1.0f - single) * (1.0f - single)) * sine * sine;
    const float mean = 2.0f * single / (1.0f + single);
    return mean + contrast * (finesse / (1.0f + finesse) - mean);
}

} // namespace

ReflectanceCurve::ReflectanceCurve(const std::function<double(double, double)>& reflectance) {
    for (size_t i = 0; i <= STEPS; ++i) {
        RGB value, white;
        for (int nm = CIE_START; nm <= CIE_END; nm += CIE_STEP) {
            const RGB weight = weightOf(nm);
            value += weight * float(reflectance(double(nm), double(i) / double(STEPS)));
            white += weight;
        }
        values_[i] = limited({value.r / white.r, value.g / white.g, value.b / white.b});
    }
}

RGB ReflectanceCurve::at(float cosine) const {
    const float place = std::clamp(cosine, 0.0f, 1.0f) * float(STEPS);
    const size_t index = std::min(size_t(place), STEPS - 1);
    const float part = place - float(index);
    return values_[index] * (1.0f - part) + values_[index + 1] * part;
}

RGB filmReflectance(float cosine, float eta, float thickness) {
    static const FilmWavelengths WAVELENGTHS = filmWavelengths();
    const float sine2 = (1.0f - cosine * cosine) / (eta * eta);
    if (sine2 >= 1.0f) {
        return RGB{1.0f};
    }
    const float inside = std::sqrt(1.0f - sine2);
    const float crossed = (cosine - eta * inside) / (cosine + eta * inside);
    const float parallel = (eta * cosine - inside) / (eta * cosine + inside);
    const float way = 4.0f * PI * eta * thickness * inside;
    RGB sum;
    for (const Wavelength& wavelength : WAVELENGTHS) {
        const float phase = way / wavelength.nanometres;
        // The mean of a wave over the band that the wavelength stands for.
        const float spread = 0.5f * phase * float(FILM_STEP) / wavelength.nanometres;
        const float contrast = spread < PI ? (spread > 1e-4f ? std::sin(spread) / spread : 1.0f) : 0.0f;
        sum +=
            wavelength.weight *
            (0.5f * (airy(crossed * crossed, phase, contrast) + airy(parallel * parallel, phase, contrast)));
    }
    return limited(sum);
}

} // namespace engine
