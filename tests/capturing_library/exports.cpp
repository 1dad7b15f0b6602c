// SPDX-License-Identifier: MIT
#include "capturing_library/capture_state.h"
#include "capturing_library/library_object.h"
#include "sdk/binding.h"

using Quenza::i32;
using Quenza::String;

#ifdef _WIN32
#define CAPTURE_EXPORTED extern "C" __declspec(dllexport)
#else
#define CAPTURE_EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

struct Interface {
    const char* name;
    Quenza::SDK::InterfaceBase* (*make)();
};

constexpr Interface INTERFACES[] = {
    {Quenza::SDK::RENDERER_INTERFACE, capture::makeRenderer},
    {Quenza::SDK::TONE_MAPPER_INTERFACE, capture::makeToneMapper},
    {Quenza::SDK::HARDWARE_INFO_INTERFACE, capture::makeHardwareInfo},
};

constexpr i32 NO_SUCH_INTERFACE = 2;

} // namespace

CAPTURE_EXPORTED i32 quenzaCreateInstance(const String& interface_name, Quenza::SDK::InterfaceBase*& object) {
    const std::string name = std::string(Quenza::SDK::CREATE_INSTANCE) + ":" + interface_name.toStdString();
    capture::captureState().record(name);
    if (const i32 code = capture::captureState().outcome(name); code != 0) {
        return code;
    }
    for (const Interface& known : INTERFACES) {
        if (interface_name == known.name) {
            object = known.make();
            return 0;
        }
    }
    return NO_SUCH_INTERFACE;
}

#ifndef CAPTURE_WITHOUT_INIT
CAPTURE_EXPORTED void quenzaGlobalLibraryInit(const String* /*dll_directory*/) {
    capture::captureState().setUpDone(true);
    capture::captureState().record(Quenza::SDK::GLOBAL_LIBRARY_INIT);
}
#endif

CAPTURE_EXPORTED void quenzaGlobalLibraryShutdown() {
    capture::captureState().record(Quenza::SDK::GLOBAL_LIBRARY_SHUTDOWN);
    capture::captureState().setUpDone(false);
}

CAPTURE_EXPORTED capture::Control* quenzaCaptureControl() {
    return &capture::captureState();
}
