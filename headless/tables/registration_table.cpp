// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include "headless/model/node_types.h"
#include "headless/runtime/host.h"

namespace headless {

namespace {

NodeKind nodeKind(int32_t pluginKind) {
    switch (pluginKind) {
    case PLUGINKIND_TAG:
        return NodeKind::tag;
    case PLUGINKIND_VIDEOPOST:
        return NodeKind::videoPost;
    case PLUGINKIND_MATERIAL:
        return NodeKind::material;
    case PLUGINKIND_SHADER:
        return NodeKind::shader;
    default:
        return NodeKind::object;
    }
}

bool registerNode(int32_t kind, const PluginInfo& info, NodeDataAllocator allocator) {
    Host& host = Host::current();
    // The number may be that of a type of the host's own.
    if (NodeTypes::instance().find(info.id) ||
        !host.registrations().addNode(static_cast<PluginKind>(kind), info, allocator)) {
        return false;
    }
    NodeTypeInfo type;
    type.id = info.id;
    type.kind = nodeKind(kind);
    type.name = info.name.GetUtf8();
    type.allocator = allocator;
    type.flags = info.info;
    type.descriptionName = info.description.GetUtf8();
    type.description = host.descriptionOf(info.id);
    return NodeTypes::instance().add(std::move(type));
}

bool registerCommand(const PluginInfo& info, CommandData* data) {
    return Host::current().registrations().addCommand(info, data);
}

bool registerMessage(const PluginInfo& info, MessageData* data) {
    return Host::current().registrations().addMessage(info, data);
}

bool registerCustomGui(const PluginInfo& info, CustomGuiData* data) {
    return Host::current().registrations().addCustomGui(info, data);
}

} // namespace

const RegistrationTable* registrationTable() {
    static constexpr RegistrationTable table = {
        .RegisterNode = registerNode,
        .RegisterCommand = registerCommand,
        .RegisterMessage = registerMessage,
        .RegisterCustomGui = registerCustomGui,
    };
    return &table;
}

} // namespace headless
