// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <string>

namespace headless {

/// A sink of the status bar's texts for a stream that is no terminal: one line on standard error each time
/// that a text of another kind comes. Texts that differ in their numbers alone are of one kind.
class PhaseLines {
public:
    void operator()(const std::string& text) {
        std::string kind = text.substr(0, text.find_first_of("0123456789"));
        if (kind != lastKind_) {
            lastKind_ = std::move(kind);
            std::fprintf(stderr, "%s\n", text.c_str());
        }
    }

private:
    std::string lastKind_;
};

} // namespace headless
