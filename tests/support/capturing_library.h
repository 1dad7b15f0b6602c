// SPDX-License-Identifier: MIT
#pragma once

#include "capturing_library/control.h"

#include <dlfcn.h>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace capture {

/// Opens the capturing library beside the plug-in that uses it: the same library, since it's the same file,
/// also by links. Records and orders are forgotten at both ends. Goes after the plug-in.
class CapturingLibrary {
public:
    explicit CapturingLibrary(const std::filesystem::path& file = folder() / "quenza_sdk.dll")
        : module_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (!module_) {
            throw std::runtime_error(dlerror());
        }
        control_ = reinterpret_cast<GetControl>(dlsym(module_, GET_CONTROL))();
        control_->reset();
    }
    ~CapturingLibrary() {
        control_->reset();
        dlclose(module_);
    }
    CapturingLibrary(const CapturingLibrary&) = delete;
    CapturingLibrary& operator=(const CapturingLibrary&) = delete;

    /// What a test puts in the place of "quenza_x64".
    static std::filesystem::path folder() { return std::filesystem::path(QUENZA_BIN_DIR) / "capturing_x64"; }

    Control* operator->() const { return control_; }
    Control& operator*() const { return *control_; }

private:
    void* module_;
    Control* control_;
};

} // namespace capture
