// SPDX-License-Identifier: MIT
#include "engine/library/hardware_info_interface.h"

#include "engine/library/failure.h"
#include "engine/library/interface_table.h"

#include <algorithm>
#include <memory>
#include <string>
#include <thread>

namespace engine::library {

namespace {

using Quenza::i32;
using Quenza::SDK::GPUInfo;
using Quenza::SDK::GPUInfoList;
using Quenza::SDK::InterfaceBase;
namespace Interface = Quenza::SDK::HardwareInfoInterface;

struct HardwareInfoObject : InterfaceBase {};

GPUInfo processor() {
    const unsigned threads = std::max(1u, std::thread::hardware_concurrency());
    GPUInfo info;
    info.name = std::to_string(threads) + (threads == 1 ? " CPU thread" : " CPU threads");
    return info;
}

i32 getGPUInfo(InterfaceBase* /*object*/, GPUInfoList*& list) {
    const std::string failure = failureOf([&list] {
        auto made = std::make_unique<GPUInfoList>();
        made->destroy = &destroyObject<GPUInfoList>;
        made->devices.push_back(processor());
        list = made.release();
    });
    return failure.empty() ? 0 : 1;
}

} // namespace

InterfaceBase* makeHardwareInfo() {
    static const auto table =
        InterfaceTable<Quenza::SDK::HARDWARE_INFO_INTERFACE, Interface::TABLE_SIZE>().set(
            Interface::getGPUInfo, &getGPUInfo);
    auto* const info = new HardwareInfoObject;
    info->table = table.entries();
    info->destroy = &destroyObject<HardwareInfoObject>;
    return info;
}

} // namespace engine::library
