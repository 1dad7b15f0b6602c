// SPDX-License-Identifier: MIT
#include "host/registration.h"

#include "host/tables.h"

bool RegisterTagPlugin(const PluginInfo& info, NodeDataAllocator allocator) {
    return HostTables()->registration->RegisterNode(PLUGINKIND_TAG, info, allocator);
}

bool RegisterObjectPlugin(const PluginInfo& info, NodeDataAllocator allocator) {
    return HostTables()->registration->RegisterNode(PLUGINKIND_OBJECT, info, allocator);
}

bool RegisterVideoPostPlugin(const PluginInfo& info, NodeDataAllocator allocator) {
    return HostTables()->registration->RegisterNode(PLUGINKIND_VIDEOPOST, info, allocator);
}

bool RegisterMaterialPlugin(const PluginInfo& info, NodeDataAllocator allocator) {
    return HostTables()->registration->RegisterNode(PLUGINKIND_MATERIAL, info, allocator);
}

bool RegisterShaderPlugin(const PluginInfo& info, NodeDataAllocator allocator) {
    return HostTables()->registration->RegisterNode(PLUGINKIND_SHADER, info, allocator);
}

bool RegisterCommandPlugin(const PluginInfo& info, CommandData* data) {
    return HostTables()->registration->RegisterCommand(info, data);
}

bool RegisterMessagePlugin(const PluginInfo& info, MessageData* data) {
    return HostTables()->registration->RegisterMessage(info, data);
}

bool RegisterCustomGUIPlugin(const PluginInfo& info, CustomGuiData* data) {
    return HostTables()->registration->RegisterCustomGui(info, data);
}
