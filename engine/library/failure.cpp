// SPDX-License-Identifier: MIT
#include "engine/library/failure.h"

#include <new>

namespace engine::library {

std::string textOf(const std::exception_ptr& exception) {
    constexpr const char* NAMELESS = "an error without a name";
    try {
        std::rethrow_exception(exception);
    } catch (const std::bad_alloc&) {
        return "there isn't enough memory";
    } catch (const std::exception& e) {
        const std::string text = e.what();
        return text.empty() ? NAMELESS : text;
    } catch (...) {
        return NAMELESS;
    }
}

std::string failureOf(const std::function<void()>& action) {
    try {
        action();
        return "";
    } catch (...) {
        return textOf(std::current_exception());
    }
}

} // namespace engine::library
