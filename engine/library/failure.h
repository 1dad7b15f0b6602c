// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <functional>
#include <string>

namespace engine::library {

/// What an exception says; never empty.
std::string textOf(const std::exception_ptr& exception);

/// Runs the action and returns "", or the text of what it threw: nothing may be thrown over the library's
/// boundary.
std::string failureOf(const std::function<void()>& action);

} // namespace engine::library
