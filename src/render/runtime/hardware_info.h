// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "render/runtime/library_ref.h"
#include "render/runtime/quenza_context.h"

/// What the library knows of the machine. Main thread.
class HardwareInfo : public Quenza::RefCounted {
public:
    /// Throws QuenzaException "Failed to create Instance of 'HardwareInfoDLLAPI'".
    explicit HardwareInfo(const Quenza::Ref<QuenzaContext>& context);

    /// The devices that can render; null when the library can't tell.
    LibraryRef<Quenza::SDK::GPUInfoList> getGPUInfo() const;

private:
    Quenza::Ref<QuenzaContext> context_;
    LibraryRef<> object_;
};
