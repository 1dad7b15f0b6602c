// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "headless/resources/description.h"
#include "host/baselist.h"

namespace headless {

/// Reads a value in the words of a command line for one entry of a description: true and false, a number, a
/// choice by number, name or label, x,y,z, text, a path (relative ones start at the current folder), the name
/// of an object or material of `document`. Throws UsageError, with what is close to a wrong word.
GeData readSettingValue(const resources::Entry& entry, std::string_view text, const BaseDocument* document);

/// Sets a parameter of `node` by "NAME=VALUE"; NAME is a symbol or number of `description`. Throws
/// UsageError.
void applySetting(BaseList2D& node, const resources::Description& description, const std::string& setting);

} // namespace headless
