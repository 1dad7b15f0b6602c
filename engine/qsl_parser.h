// SPDX-License-Identifier: MIT
#pragma once

#include "engine/qsl_tree.h"

#include <vector>

namespace engine {

/// The definitions of all texts together. Throws QSLFault when a text is too long, when what stands there is
/// no definition, and when expressions are nested too deeply.
QSLTree parseQSL(const std::vector<QSLText>& texts);

} // namespace engine
