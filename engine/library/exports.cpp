// SPDX-License-Identifier: MIT

// The procedures that the renderer's run-time library exports, and nothing beside them.

#include "engine/library/failure.h"
#include "engine/library/hardware_info_interface.h"
#include "engine/library/renderer_interface.h"
#include "engine/library/tone_mapper_interface.h"
#include "foundation/platform.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "sdk/binding.h"

#include <atomic>
#include <type_traits>

#ifdef _WIN32
#define QUENZA_EXPORTED extern "C" __declspec(dllexport)
#else
#define QUENZA_EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

using Quenza::SDK::InterfaceBase;

constexpr Quenza::i32 UNKNOWN_INTERFACE = 1;
constexpr Quenza::i32 NOT_INITIALISED = 2;
constexpr Quenza::i32 FAILED = 3;

std::atomic<bool> initialised{false};

struct Maker {
    const char* interface_name;
    InterfaceBase* (*make)();
};
constexpr Maker MAKERS[] = {
    {Quenza::SDK::RENDERER_INTERFACE, &engine::library::makeRenderer},
    {Quenza::SDK::TONE_MAPPER_INTERFACE, &engine::library::makeToneMapper},
    {Quenza::SDK::HARDWARE_INFO_INTERFACE, &engine::library::makeHardwareInfo},
};

} // namespace

QUENZA_EXPORTED void quenzaGlobalLibraryInit(const Quenza::String* /*dll_directory*/) {
    // For the threads that its helpers leave.
    Quenza::PlatformUtils::keepThisLibrary();
    initialised = true;
}

QUENZA_EXPORTED void quenzaGlobalLibraryShutdown() {
    initialised = false;
}

QUENZA_EXPORTED Quenza::i32 quenzaCreateInstance(const Quenza::String& interface_name,
                                                 InterfaceBase*& object) {
    if (!initialised) {
        return NOT_INITIALISED;
    }
    for (const Maker& maker : MAKERS) {
        if (interface_name == maker.interface_name) {
            return engine::library::failureOf([&] { object = maker.make(); }).empty() ? 0 : FAILED;
        }
    }
    return UNKNOWN_INTERFACE;
}

static_assert(std::is_same_v<decltype(&quenzaCreateInstance), Quenza::SDK::CreateInstance>);
static_assert(std::is_same_v<decltype(&quenzaGlobalLibraryInit), Quenza::SDK::GlobalLibraryInit>);
static_assert(std::is_same_v<decltype(&quenzaGlobalLibraryShutdown), Quenza::SDK::GlobalLibraryShutdown>);
