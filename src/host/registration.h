// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Makes a NodeData instance for a new node.
using NodeDataAllocator = NodeData* (*)();

/// What a plug-in registers about a type or command. `icon` is a file of the plug-in's resource folder.
struct PluginInfo {
    int32_t id = 0;
    String name;
    int32_t info = 0;
    String icon;
    /// Name of the description resource; node types only.
    String description;
    /// Help text; commands only.
    String help;
    /// Video posts only.
    int32_t priority = 0;
};

// Each returns false when the number is taken or the data is null. The host owns `data` after success alone.
bool RegisterTagPlugin(const PluginInfo& info, NodeDataAllocator allocator);
bool RegisterObjectPlugin(const PluginInfo& info, NodeDataAllocator allocator);
bool RegisterVideoPostPlugin(const PluginInfo& info, NodeDataAllocator allocator);
bool RegisterMaterialPlugin(const PluginInfo& info, NodeDataAllocator allocator);
bool RegisterShaderPlugin(const PluginInfo& info, NodeDataAllocator allocator);
bool RegisterCommandPlugin(const PluginInfo& info, CommandData* data);
bool RegisterMessagePlugin(const PluginInfo& info, MessageData* data);
bool RegisterCustomGUIPlugin(const PluginInfo& info, CustomGuiData* data);
