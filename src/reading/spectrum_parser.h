// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/spectrum.h"
#include "scene/tabulated_spectral_data.h"

class TiXmlElement;

namespace Quenza {

/// The one spectrum within `holder`: `rgb`, `blackbody`, `peak`, `regular_tabulated` or `uniform`. A
/// tabulated one spans at least 400 to 700 nm. Throws QuenzaModelParserExcep or SceneParseUtilsExcep.
Ref<Spectrum> parseSpectrum(const TiXmlElement& holder);

/// The table whose elements are the children of `element`. Throws likewise.
Ref<TabulatedSpectralData> parseTabulatedSpectralData(const TiXmlElement& element);

} // namespace Quenza
