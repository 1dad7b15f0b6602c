// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/console.h"

#include <exception>
#include <string>

namespace headless {

/// The result of a call of the plug-in's code, or false, with an error line, when it throws. `what` names the
/// call: "Timer of a dialog".
template <typename Call>
bool guardedCall(Console& errors, const std::string& what, Call call) {
    try {
        return call();
    } catch (const std::exception& error) {
        errors.print(what + " ended with an exception: " + error.what());
    } catch (...) {
        errors.print(what + " ended with an exception");
    }
    return false;
}

} // namespace headless
