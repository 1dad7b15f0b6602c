// SPDX-License-Identifier: MIT
#pragma once

#include "host/tables.h"

#include <memory>
#include <string_view>
#include <vector>

namespace headless {

/// One thing that the plug-in registered. The data pointers are owned; a node type has an allocator instead.
struct Registration {
    PluginKind kind = PLUGINKIND_COMMAND;
    PluginInfo info;
    NodeDataAllocator allocator = nullptr;
    std::unique_ptr<CommandData> command;
    std::unique_ptr<MessageData> message;
    std::unique_ptr<CustomGuiData> customGui;
};

/// "tag", "video post", ...
std::string_view kindName(PluginKind kind);

/// The registrations in their order. Numbers are unique over all kinds.
class Registrations {
public:
    // False when the number is taken or the data is null; then `data` stays the caller's.
    bool addNode(PluginKind kind, const PluginInfo& info, NodeDataAllocator allocator);
    bool addCommand(const PluginInfo& info, CommandData* data);
    bool addMessage(const PluginInfo& info, MessageData* data);
    bool addCustomGui(const PluginInfo& info, CustomGuiData* data);

    /// Null when the number isn't taken. Valid until `clear`.
    const Registration* find(int32_t id) const;
    const std::vector<std::unique_ptr<Registration>>& all() const { return all_; }
    void clear() { all_.clear(); }

private:
    Registration* add(PluginKind kind, const PluginInfo& info);

    std::vector<std::unique_ptr<Registration>> all_;
};

} // namespace headless
