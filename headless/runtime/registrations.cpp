// SPDX-License-Identifier: MIT
#include "headless/runtime/registrations.h"

namespace headless {

std::string_view kindName(PluginKind kind) {
    switch (kind) {
    case PLUGINKIND_TAG:
        return "tag";
    case PLUGINKIND_OBJECT:
        return "object";
    case PLUGINKIND_VIDEOPOST:
        return "video post";
    case PLUGINKIND_MATERIAL:
        return "material";
    case PLUGINKIND_SHADER:
        return "shader";
    case PLUGINKIND_COMMAND:
        return "command";
    case PLUGINKIND_MESSAGE:
        return "message";
    case PLUGINKIND_CUSTOMGUI:
        return "custom GUI";
    }
    return "";
}

bool Registrations::addNode(PluginKind kind, const PluginInfo& info, NodeDataAllocator allocator) {
    Registration* const added = allocator ? add(kind, info) : nullptr;
    if (added) {
        added->allocator = allocator;
    }
    return added != nullptr;
}

bool Registrations::addCommand(const PluginInfo& info, CommandData* data) {
    Registration* const added = data ? add(PLUGINKIND_COMMAND, info) : nullptr;
    if (added) {
        added->command.reset(data);
    }
    return added != nullptr;
}

bool Registrations::addMessage(const PluginInfo& info, MessageData* data) {
    Registration* const added = data ? add(PLUGINKIND_MESSAGE, info) : nullptr;
    if (added) {
        added->message.reset(data);
    }
    return added != nullptr;
}

bool Registrations::addCustomGui(const PluginInfo& info, CustomGuiData* data) {
    Registration* const added = data ? add(PLUGINKIND_CUSTOMGUI, info) : nullptr;
    if (added) {
        added->customGui.reset(data);
    }
    return added != nullptr;
}

const Registration* Registrations::find(int32_t id) const {
    for (const std::unique_ptr<Registration>& registration : all_) {
        if (registration->info.id == id) {
            return registration.get();
        }
    }
    return nullptr;
}

Registration* Registrations::add(PluginKind kind, const PluginInfo& info) {
    if (find(info.id)) {
        return nullptr;
    }
    auto registration = std::make_unique<Registration>();
    registration->kind = kind;
    registration->info = info;
    return all_.emplace_back(std::move(registration)).get();
}

} // namespace headless
