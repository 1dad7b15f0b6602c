// SPDX-License-Identifier: MIT
#include "capturing_library/library_object.h"

namespace capture {

namespace {

namespace Binding = Quenza::SDK::HardwareInfoInterface;
using Quenza::i32;
using Quenza::SDK::InterfaceBase;

/// Made as LibraryObject does it, but with the fields of the binding.
struct DeviceList : Quenza::SDK::GPUInfoList {
    DeviceList() {
        destroy = [](InterfaceBase* object) { delete static_cast<DeviceList*>(object); };
        captureState().objectMade();
        for (const auto& [name, kind] : captureState().devices()) {
            devices.push_back({name, kind});
        }
    }
    ~DeviceList() { captureState().objectGone(); }
    DeviceList(const DeviceList&) = delete;
    DeviceList& operator=(const DeviceList&) = delete;
};

class HardwareInfo : public LibraryObject<HardwareInfo> {
public:
    static constexpr const char* INTERFACE = Quenza::SDK::HARDWARE_INFO_INTERFACE;
    static const Quenza::SDK::Procedure* operations();
};

i32 getGPUInfo(InterfaceBase* object, Quenza::SDK::GPUInfoList*& list) {
    const Entry<HardwareInfo> info(object, "getGPUInfo");
    if (const i32 code = captureState().outcome(info.name); code != 0) {
        return code;
    }
    list = new DeviceList;
    return 0;
}

const Quenza::SDK::Procedure* HardwareInfo::operations() {
    static const auto table = [] {
        std::array<Quenza::SDK::Procedure, Binding::TABLE_SIZE> made{};
        put(made.data(), Binding::getGPUInfo, getGPUInfo);
        return made;
    }();
    return table.data();
}

} // namespace

InterfaceBase* makeHardwareInfo() {
    return new HardwareInfo;
}

} // namespace capture
