// SPDX-License-Identifier: MIT
#include "plugin/registrations.h"

#include "export/objects/instance_object.h"
#include "export/objects/section_plane_object.h"
#include "export/tags/camera_tag.h"
#include "export/tags/compositing_tag.h"
#include "export/tags/exit_portal_tag.h"
#include "export/tags/light_tag.h"
#include "export/tags/subdivision_tag.h"
#include "host/general.h"
#include "host/registration.h"
#include "materials/bake_command.h"
#include "materials/convert_command.h"
#include "materials/import_command.h"
#include "materials/new_material_command.h"
#include "materials/qsl_blend_shader.h"
#include "materials/qsl_gradient_shader.h"
#include "materials/qsl_noise_shader.h"
#include "materials/qsl_normal_shader.h"
#include "materials/qsl_program_shader.h"
#include "materials/quenza_material.h"
#include "materials/string_gui.h"
#include "plugin/about_command.h"
#include "plugin/create_instances_command.h"
#include "plugin/message_plugin.h"
#include "plugin/separator_command.h"
#include "render/render_command.h"
#include "render/render_control_commands.h"
#include "render/tonemapping_command.h"
#include "render/video_post.h"
#include "shared/plugin_ids.h"

#include <memory>

namespace {

enum class Kind { TAG, OBJECT, VIDEO_POST, MATERIAL, SHADER, COMMAND, MESSAGE, CUSTOM_GUI };

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
    CustomGuiData* (*makeGui)() = nullptr;
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
CustomGuiData* makeGui() {
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

/// A command that is left out without a name.
template <typename Data>
constexpr Row commandRow(int32_t id, int32_t nameId, const char* help, const char* icon, int32_t info) {
    return {Kind::COMMAND, id, nameId, "", "", help, icon, info, true, nullptr, makeCommand<Data>, nullptr};
}

/// A command of the Picture Viewer's menu.
template <typename Data>
constexpr Row pictureCommandRow(int32_t id, const char* literalName, const char* help, const char* icon) {
    return {Kind::COMMAND, id,    0,       literalName,       "",     help, icon,
            0x20000000,    false, nullptr, makeCommand<Data>, nullptr};
}

template <typename Data>
constexpr Row shaderRow(int32_t id, int32_t nameId, const char* literalName, const char* description) {
    return {Kind::SHADER, id, nameId, literalName,    description, "",
            "",           0,  false,  makeNode<Data>, nullptr,     nullptr};
}

// The order is the plug-in's; the info values are the host's flags.
constexpr Row ROWS[] = {
    tagRow<LightTag>(PLUGINID_LIGHT_TAG, 10002, "tMyLightTag", "LightTag.tif"),
    tagRow<ExitPortalTag>(PLUGINID_EXIT_PORTAL_TAG, 10006, "TMyExitPortal", "ExitPortal.tif"),
    tagRow<CameraTag>(PLUGINID_CAMERA_TAG, 10009, "TCameraTag", "CameraTag.tif"),
    tagRow<SubdivisionTag>(PLUGINID_SUBDIVISION_TAG, 10016, "tSubdivision", "subdivtag.tif"),
    tagRow<CompositingTag>(PLUGINID_COMPOSITING_TAG, 10028, "TQuenzaCompositing", "animationtag.tif"),
    commandRow<BakeUVWCommand>(PLUGINID_BAKE_UVW_COMMAND, 10023, "Bake UVW Tag of Quenza Material",
                               "About.tif", 0),
    commandRow<BakeCommand>(PLUGINID_BAKE_COMMAND, 10022, "Bake Material on Object", "About.tif", 0),
    commandRow<AboutCommand>(PLUGINID_ABOUT_COMMAND, 10005, "About", "About.tif", 0),
    commandRow<ConvertMaterialsCommand>(PLUGINID_CONVERT_COMMAND, 10010, "Convert Materials",
                                        "ConvertMats.tif", 0),
    commandRow<ImportMaterialsCommand>(PLUGINID_IMPORT_COMMAND, 10014, "Import .qzm", "Export.tif", 0),
    commandRow<RenderCommand>(PLUGINID_RENDER_COMMAND, 10020, "Render with Quenza", "Export.tif", 0),
    commandRow<CreateInstancesCommand>(PLUGINID_CREATE_INSTANCES_COMMAND, 10011, "Creates Instances",
                                       "instance.tif", 0x20000000),
    commandRow<NewMaterialCommand>(PLUGINID_NEW_MATERIAL_COMMAND, 10024, "New Quenza Material",
                                   "materialhelper.tif", 0x10000000),
    pictureCommandRow<ResumeCommand>(PLUGINID_RESUME_COMMAND, "Resume Rendering", "Quenza Resume Rendering",
                                     "resume.tif"),
    pictureCommandRow<PauseCommand>(PLUGINID_PAUSE_COMMAND, "Pause Rendering", "Quenza Pause Rendering",
                                    "pause.tif"),
    pictureCommandRow<UpdateImageCommand>(PLUGINID_UPDATE_IMAGE_COMMAND, "Update Image",
                                          "Quenza Update Image", "convertmats.tif"),
    pictureCommandRow<TonemappingCommand>(PLUGINID_TONEMAPPING_COMMAND, "Quenza Tonemapping",
                                          "Quenza Interactive Tonemapping Dialog", "tonemapping.tif"),
    objectRow<InstanceObject>(PLUGINID_INSTANCE, 10011, "Oquenzainstance", "instance.tif", 0x20000004),
    objectRow<SectionPlaneObject>(PLUGINID_SECTION_PLANE, 10026, "Oquenzasectionplane", "instance.tif", 0),
    {Kind::VIDEO_POST, PLUGINID_RENDER_SETTINGS, 10000, "", "oquenzarendersettings", "", "", 8, true,
     makeNode<RenderSettingsVideoPost>, nullptr, nullptr, 100},
    {Kind::COMMAND, PLUGINID_MENU_SEPARATOR, 0, "#$3 --", "", "", "", 0, false, nullptr,
     makeCommand<SeparatorCommand>, nullptr},
    {Kind::CUSTOM_GUI, PLUGINID_STRING_GUI, 0, "My String GUI", "", "", "", 0, false, nullptr, nullptr,
     nullptr, 0, makeGui<StringGui>},
    shaderRow<QSLProgramShader>(PLUGINID_QSL_SHADER, 10019, "", "xcquenzaqslshader"),
    {Kind::MATERIAL, PLUGINID_MATERIAL, 10025, "", "Mquenzamaterial", "", "", 0x20000001, true,
     makeNode<QuenzaMaterial>, nullptr, nullptr},
    shaderRow<QSLNoiseShader>(PLUGINID_QSL_NOISE, 0, "QSL Noise", "xqslnoise"),
    shaderRow<QSLBlendShader>(PLUGINID_QSL_BLEND, 0, "QSL Blend", "xqslblend"),
    shaderRow<QSLGradientShader>(PLUGINID_QSL_GRADIENT, 0, "QSL Gradient", "xqslgradient"),
    shaderRow<QSLNormalShader>(PLUGINID_QSL_NORMAL, 0, "QSL Normal", "xqslnormal"),
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
    case Kind::MATERIAL:
        return RegisterMaterialPlugin(info, row.makeNode);
    case Kind::SHADER:
        return RegisterShaderPlugin(info, row.makeNode);
    case Kind::COMMAND:
        return handOver(RegisterCommandPlugin, info, row.makeCommand());
    case Kind::MESSAGE:
        return handOver(RegisterMessagePlugin, info, row.makeMessage());
    case Kind::CUSTOM_GUI:
        return handOver(RegisterCustomGUIPlugin, info, row.makeGui());
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
