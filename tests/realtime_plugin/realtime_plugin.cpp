// SPDX-License-Identifier: MIT
// The plug-in's entry, with the realtime preview registered behind everything else.

#include "host/registration.h"
#include "host/tables.h"
#include "plugin/plugin_lifecycle.h"
#include "render/realtime_command.h"
#include "shared/plugin_ids.h"

#include <memory>

#ifdef _WIN32
#define EXPORTED extern "C" __declspec(dllexport)
#else
#define EXPORTED extern "C" __attribute__((visibility("default")))
#endif

namespace {

bool registerRealtimePreview() {
    PluginInfo info;
    info.id = PLUGINID_REALTIME_COMMAND;
    info.name = "Realtime Preview";
    info.help = "Quenza Realtime Preview Dialog";
    info.icon = "tonemapping.tif";
    auto command = std::make_unique<RealtimePreviewCommand>();
    const bool isRegistered = RegisterCommandPlugin(info, command.get());
    if (isRegistered) {
        static_cast<void>(command.release());
    }
    return isRegistered;
}

} // namespace

EXPORTED int32_t c4d_main(int32_t action, void* p1, void* p2, void* p3) {
    switch (action) {
    case C4DPL_INIT:
        return initPlugin(static_cast<const HostTable*>(p1), static_cast<const Filename*>(p3));
    case C4DPL_START:
        return PluginStart() && registerRealtimePreview();
    case C4DPL_END:
        return endPlugin();
    case C4DPL_VERSION:
        return 3;
    case C4DPL_MESSAGE:
        return PluginMessage(static_cast<int32_t>(reinterpret_cast<intptr_t>(p1)), p2) ? 1 : -1;
    default:
        return -1;
    }
}
