// SPDX-License-Identifier: MIT
#pragma once

#include "host/string.h"
#include "host/vector.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"

// Spectra of the scene from the numbers in the host's containers.

/// `scale` multiplies the colour as the artist sees it. The gamma isn't applied: it travels in the spectrum,
/// so that twice the scale is more than twice the light.
Quenza::Ref<Quenza::Spectrum> makeRGBSpectrum(const Vector& rgb, float gamma, float scale);
Quenza::Ref<Quenza::Spectrum> makeUniformSpectrum(float value);
/// Wavelengths stay the nanometres of the page.
Quenza::Ref<Quenza::Spectrum> makePeakSpectrum(float peakMin, float peakWidth, float peakValue,
                                               float baseValue);
/// Kelvin.
Quenza::Ref<Quenza::Spectrum> makeBlackbodySpectrum(float temperature, float gain);
/// From nanometres to metres. `values` are numbers between blanks: what is none counts as 0, and fewer than
/// two give 0.1 twice.
Quenza::Ref<Quenza::Spectrum> makeTabulatedSpectrum(float startNm, float endNm, const String& values);

/// The same spectrum everywhere on the surface.
Quenza::Ref<Quenza::WavelengthDependentParam> constantParam(const Quenza::Ref<Quenza::Spectrum>& spectrum);
