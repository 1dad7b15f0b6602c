// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace headless {

// The files of the page, put into the program when it is built.
extern const std::string_view WATCH_PAGE_HTML;
extern const std::string_view WATCH_PAGE_STYLE;
extern const std::string_view WATCH_PAGE_SCRIPT;

} // namespace headless
