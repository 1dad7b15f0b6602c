// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/image_filters.h"

class TiXmlElement;

namespace Quenza {

/// Reads a `splat_filter`: one of `fastbox`, `box`, `radial` and `mn_cubic`. Throws SceneParseUtilsExcep.
Ref<SplatFilter> parseSplatFilter(const TiXmlElement& element);

/// Reads a `downsize_filter`: one of `mn_cubic`, `sharp` and `gaussian`. Throws SceneParseUtilsExcep.
Ref<DownsizeFilter> parseDownsizeFilter(const TiXmlElement& element);

} // namespace Quenza
