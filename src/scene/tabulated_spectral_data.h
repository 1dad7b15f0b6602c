// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "foundation/vector.h"
#include "scene/ostream.h"

namespace Quenza {

/// A table of spectra, for coefficients that depend on a second quantity such as the angle.
class TabulatedSpectralData : public RefCounted {
public:
    /// Writes the elements without a frame of their own; the caller opens and closes the one around them.
    void writeToXML(OStream& stream, u32 depth) const;

    double start_wavelength = 0.0; ///< Metres.
    double end_wavelength = 0.0;   ///< Metres.
    i32 num_rows = 0;
    i32 num_columns = 0;
    Vector<double> values; ///< Row by row.
};

} // namespace Quenza
