// SPDX-License-Identifier: MIT
#pragma once

#include "capturing_library/control.h"
#include "support/built_files.h"

#include <filesystem>

namespace capture {

/// Opens the capturing library beside the plug-in that uses it: the same library, since it's the same file,
/// also by links. Records and orders are forgotten at both ends. Goes after the plug-in.
class CapturingLibrary {
public:
    explicit CapturingLibrary(const std::filesystem::path& file = folder() / "quenza_sdk.dll")
        : library_(file), control_(library_.find<GetControl>(GET_CONTROL)()) {
        control_->reset();
    }
    ~CapturingLibrary() { control_->reset(); }
    CapturingLibrary(const CapturingLibrary&) = delete;
    CapturingLibrary& operator=(const CapturingLibrary&) = delete;

    /// What a test puts in the place of "quenza_x64".
    static std::filesystem::path folder() { return std::filesystem::path(QUENZA_BIN_DIR) / "capturing_x64"; }

    Control* operator->() const { return control_; }
    Control& operator*() const { return *control_; }

private:
    const Quenza::LoadedLibrary library_;
    Control* control_;
};

} // namespace capture
