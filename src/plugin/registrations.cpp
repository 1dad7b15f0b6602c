// SPDX-License-Identifier: MIT
#include "plugin/registrations.h"

#include "export/objects/instance_object.h"
#include "export/objects/section_plane_object.h"
#include "export/render_settings_post.h"
#include "export/tags/camera_tag.h"
#include "export/tags/compositing_tag.h"
#include "export/tags/exit_portal_tag.h"
#include "export/tags/light_tag.h"
#include "export/tags/subdivision_tag.h"
#include "host/general.h"
#include "host/registration.h"
#include "plugin/message_plugin.h"
#include "plugin/separator_command.h"
#include "render/render_command.h"
#include "shared/plugin_ids.h"

#include <memory>

namespace {

enum class Kind { TAG, OBJECT, VIDEO_POST, COMMAND, MESSAGE };

struct Row {
    Kind kind;
    int32_t id;
    /// Number of the display name in the string table; 0 for the literal name.
    int32_t nameId;
    const char* literalName;
    const char* description;
    const char* help;
    const char* icon;
    int32_t info;
    /// Passed over when the string table has no name for it.
    bool needsName;
    NodeDataAllocator makeNode;
    CommandData* (*makeCommand)();
    MessageData* (*makeMessage)();
    /// Of video posts.
    int32_t priority = 0;
};

template <typename Data>
NodeData* makeNode() {
    return new Data;
}

template <typename Data>
CommandData* makeCommand() {
    return new Data;
}

template <typename Data>
MessageData* makeMessage() {
    return new Data;
}

template <typename Data>
constexpr Row tagRow(int32_t id, int32_t nameId, const char* description, const char* icon) {
    return {Kind::TAG, id, nameId, "", description, "", icon, 1, true, makeNode<Data>, nullptr, nullptr};
}

template <typename Data>
constexpr Row objectRow(int32_t id, int32_t nameId, const char* description, const char* icon, int32_t info) {
    return {Kind::OBJECT, id,   nameId,         "",      description, "", icon,
            info,         true, makeNode<Data>, nullptr, nullptr};
}

// The order is the plug-in's; the info values are the host's flags.
constexpr Row ROWS[] = {
    tagRow<LightTag>(PLUGINID_LIGHT_TAG, 10002, "tMyLightTag", "LightTag.tif"),
    tagRow<ExitPortalTag>(PLUGINID_EXIT_PORTAL_TAG, 10006, "TMyExitPortal", "ExitPortal.tif"),
    tagRow<CameraTag>(PLUGINID_CAMERA_TAG, 10009, "TCameraTag", "CameraTag.tif"),
    tagRow<SubdivisionTag>(PLUGINID_SUBDIVISION_TAG, 10016, "tSubdivision", "subdivtag.tif"),
    tagRow<CompositingTag>(PLUGINID_COMPOSITING_TAG, 10028, "TQuenzaCompositing", "animationtag.tif"),
    {Kind::COMMAND, PLUGINID_RENDER_COMMAND, 10020, "", "", "Render with Quenza", "Export.tif", 0, true,
     nullptr, makeCommand<RenderCommand>, nullptr},
    objectRow<InstanceObject>(PLUGINID_INSTANCE, 10011, "Oquenzainstance", "instance.tif", 0x20000004),
    objectRow<SectionPlaneObject>(PLUGINID_SECTION_PLANE, 10026, "Oquenzasectionplane", "instance.tif", 0),
    {Kind::VIDEO_POST, PLUGINID_RENDER_SETTINGS, 10000, "", "oquenzarendersettings", "", "", 8, true,
     makeNode<RenderSettingsPost>, nullptr, nullptr, 100},
    {Kind::COMMAND, PLUGINID_MENU_SEPARATOR, 0, "#$3 --", "", "", "", 0, false, nullptr,
     makeCommand<SeparatorCommand>, nullptr},
    {Kind::MESSAGE, PLUGINID_MESSAGE, 0, "Quenza Message", "", "", "", 0, false, nullptr, nullptr,
     makeMessage<MessagePlugin>},
};

/// Hands an instance over: the host owns it after success alone.
template <typename Data>
bool handOver(bool (*registerPlugin)(const PluginInfo&, Data*), const PluginInfo& info, Data* made) {
    std::unique_ptr<Data> data(made);
    if (!registerPlugin(info, data.get())) {
        return false;
    }
    static_cast<void>(data.release());
    return true;
}

bool registerRow(const Row& row) {
    PluginInfo info;
    info.id = row.id;
    info.name = row.nameId != 0 ? GeLoadString(row.nameId) : String(row.literalName);
    if (row.needsName && !info.name.Content()) {
        return true;
    }
    info.info = row.info;
    info.icon = row.icon;
    info.description = row.description;
    info.help = row.help;
    info.priority = row.priority;
    switch (row.kind) {
    case Kind::TAG:
        return RegisterTagPlugin(info, row.makeNode);
    case Kind::OBJECT:
        return RegisterObjectPlugin(info, row.makeNode);
    case Kind::VIDEO_POST:
        return RegisterVideoPostPlugin(info, row.makeNode);
    case Kind::COMMAND:
        return handOver(RegisterCommandPlugin, info, row.makeCommand());
    case Kind::MESSAGE:
        return handOver(RegisterMessagePlugin, info, row.makeMessage());
    }
    return false;
}

} // namespace

bool registerPlugins() {
    for (const Row& row : ROWS) {
        if (!registerRow(row)) {
            return false;
        }
    }
    return true;
}
