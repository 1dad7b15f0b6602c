// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "host/basecontainer.h"
#include "materials/spectrum_numbers.h"
#include "scene/spectrum.h"

enum class ColourMeaning : uint8_t {
    AS_SEEN,
    /// The artist picks the colour that is left over.
    INVERTED,
};

/// The spectrum that the container holds. A type that isn't known, or that the spectrum doesn't have, counts
/// as RGB.
Quenza::Ref<Quenza::Spectrum> makeSpectrum(const BaseContainer& data, const SpectrumNumbers& numbers,
                                           ColourMeaning meaning = ColourMeaning::AS_SEEN);
