// SPDX-License-Identifier: MIT
#include "host/tables.h"
#include "plugin/plugin_lifecycle.h"

#include <exception>

#ifdef _WIN32
#define QUENZA_EXPORTED extern "C" __declspec(dllexport)
#else
#define QUENZA_EXPORTED extern "C" __attribute__((visibility("default")))
#endif

/// The one function that the host calls. Nothing is thrown across it.
QUENZA_EXPORTED int32_t c4d_main(int32_t action, void* p1, void* p2, void* p3) {
    try {
        switch (action) {
        case C4DPL_INIT:
            return initPlugin(static_cast<const HostTable*>(p1), static_cast<const Filename*>(p3));
        case C4DPL_START:
            return PluginStart();
        case C4DPL_END:
            return endPlugin();
        case C4DPL_VERSION:
            return 3;
        case C4DPL_MESSAGE:
            return PluginMessage(static_cast<int32_t>(reinterpret_cast<intptr_t>(p1)), p2) ? 1 : -1;
        default:
            return -1;
        }
    } catch (const std::exception& exception) {
        GePrint(exception.what());
        return -1;
    }
}
