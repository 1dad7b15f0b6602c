// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace headless {

/// Tells the user that something of the document was left out. Any thread.
void warn(const std::string& text);
/// Where warnings go, line by line; standard error until one is set, and again with an empty sink.
void setWarningSink(std::function<void(const std::string&)> sink);

} // namespace headless
