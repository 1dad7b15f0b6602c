// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "materials/spectrum_export.h"

/// Writes a spectrum of the scene into the container. A colour with a component above 1 is divided by the
/// largest, which goes to the scale. False, and nothing is written, for null and for a form that the numbers
/// have no place for.
bool importSpectrum(BaseContainer& data, const SpectrumNumbers& numbers, const Quenza::Spectrum* spectrum,
                    ColourMeaning meaning = ColourMeaning::AS_SEEN);
