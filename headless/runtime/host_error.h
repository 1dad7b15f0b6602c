// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace headless {

/// What this host can't do, in a text for whoever started it: which thing, and why.
class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace headless
