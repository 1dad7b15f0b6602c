// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Quenza {

/// The message of the Exception that `action` throws; "no exception" when it doesn't.
template <class Exception, class Action>
std::string thrownMessage(Action&& action) {
    try {
        action();
    } catch (const Exception& e) {
        return e.what();
    }
    return "no exception";
}

} // namespace Quenza
