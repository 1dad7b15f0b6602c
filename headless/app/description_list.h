// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "headless/runtime/host.h"

namespace headless {

/// Prints the pages of the plug-in's types as an artist would see them: each parameter with default, value,
/// and whether it is shown and enabled.
///
/// `className` is the number, name or description name of one type; else all are printed. With `document` the
/// nodes of that type in it are described, else a new one; of all types only those are printed then that the
/// document holds. Throws UsageError for an unknown class, HostError when a description is faulty.
void listDescriptions(Host& host, const std::optional<std::string>& className, Document* document);

} // namespace headless
