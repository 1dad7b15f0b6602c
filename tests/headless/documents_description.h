// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <string>

namespace headless {

/// All of a document that its file is to keep, as text; a link is written as its target's place. Two
/// documents of equal content give equal texts.
std::string describe(const Document& document);

} // namespace headless
