// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "foundation/vector.h"
#include "scene/ostream.h"

namespace Quenza {

/// Writes the element "values": one line, with a blank behind every number, the last one too.
void writeValuesElement(OStream& stream, u32 depth, const Vector<double>& values);

} // namespace Quenza
