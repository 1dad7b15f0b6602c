// SPDX-License-Identifier: MIT
#include "render/runtime/hardware_info.h"

#include "foundation/exceptions.h"

HardwareInfo::HardwareInfo(const Quenza::Ref<QuenzaContext>& context)
    : context_(context), object_(context->makeInstance(Quenza::SDK::HARDWARE_INFO_INTERFACE)) {
    if (!object_) {
        throw Quenza::QuenzaException("Failed to create Instance of 'HardwareInfoDLLAPI'");
    }
}

LibraryRef<Quenza::SDK::GPUInfoList> HardwareInfo::getGPUInfo() const {
    Quenza::SDK::GPUInfoList* list = nullptr;
    if (Quenza::SDK::HardwareInfoInterface::getGPUInfo(object_.get(), list) != 0) {
        return {};
    }
    return LibraryRef<Quenza::SDK::GPUInfoList>::adopt(list);
}
