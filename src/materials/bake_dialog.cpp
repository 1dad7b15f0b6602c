// SPDX-License-Identifier: MIT
#include "materials/bake_dialog.h"

#include "host/bake.h"
#include "host/document.h"
#include "host/general.h"
#include "host/ids.h"
#include "host/material.h"
#include "host/tag.h"

#include <algorithm>

namespace {

enum Gadget : int32_t {
    BAKE_BUTTON = 10001,
    RES_X = 10011,
    RES_Y = 10012,
    PIXEL_BORDER = 10013,
    FILE_FIELD = 10017,
    FILE_BUTTON = 10018,
    SUPER_SAMPLING = 10020,

    GROUP_CHANNELS = 10101,
    GROUP_SETTINGS = 10102,
    GROUP_FILE = 10103,
};

constexpr const char* TITLE = "Bake Dialog";
constexpr int32_t TIMER_MILLISECONDS = 250;
constexpr int32_t FIELD_WIDTH = 80;
constexpr int32_t FILE_WIDTH = 300;

/// The check boxes as they stand in the dialog.
constexpr ChannelId BOXES[] = {ChannelId::ALBEDO, ChannelId::SIGMA,        ChannelId::EXPONENT,
                               ChannelId::BUMP,   ChannelId::DISPLACEMENT, ChannelId::EMISSION,
                               ChannelId::BLEND};

struct NumberField {
    int32_t id;
    const char* label;
    int32_t preset;
};
constexpr NumberField NUMBERS[] = {{RES_X, "Res X", 1024},
                                   {RES_Y, "Res Y", 1024},
                                   {PIXEL_BORDER, "Pixel Border", 5},
                                   {SUPER_SAMPLING, "Super Sampling", 0}};

/// Passes and looks of the baker that a channel has no use for. Those above the settings that the host names
/// here are its further passes.
constexpr int32_t UNUSED_SETTINGS[] = {1006, 1032, 1009, 1011, 1013, 1014, 1015, 1016, 1017, 1018,
                                       1040, 1041, 2100, 2101, 2102, 2103, 2110, 2120, 2140};

const BakeChannel& bakeChannel(ChannelId id) {
    return *std::find_if(BAKE_CHANNELS.begin(), BAKE_CHANNELS.end(),
                         [id](const BakeChannel& entry) { return entry.id == id; });
}

/// True when the channel is on and has a shader.
bool isBakeable(const BaseContainer& material, const Channel& channel) {
    return material.GetBool(channel.enable) && material.GetLink(channel.shader, nullptr, Xbase);
}

} // namespace

bool BakeDialog::CreateLayout() {
    SetTitle(TITLE);
    bool isComplete = GroupBegin(GROUP_CHANNELS, "Channels");
    for (const ChannelId id : BOXES) {
        isComplete &= AddCheckbox(bakeChannel(id).checkBox, 0, 0, channel(id).name);
    }
    isComplete &= GroupEnd() && GroupBegin(GROUP_FILE, "Save to...") &&
                  AddEditText(FILE_FIELD, FILE_WIDTH, 0) && AddButton(FILE_BUTTON, 0, 0, "...") &&
                  GroupEnd() && GroupBegin(GROUP_SETTINGS, "Bake Settings");
    for (const NumberField& field : NUMBERS) {
        isComplete &= AddStaticText(0, 0, 0, field.label) && AddEditNumber(field.id, FIELD_WIDTH, 0);
    }
    return isComplete && GroupEnd() && AddButton(BAKE_BUTTON, 0, 0, "Bake Shaders");
}

bool BakeDialog::InitValues() {
    const BaseMaterial* const material = tag_ ? tag_->GetMaterial() : nullptr;
    if (!document_ || !material) {
        return false;
    }
    for (const BakeChannel& entry : BAKE_CHANNELS) {
        const bool isOn = isBakeable(*material->GetDataInstance(), channel(entry.id));
        SetValue(entry.checkBox, GeData(isOn));
        Enable(entry.checkBox, isOn);
    }
    for (const NumberField& field : NUMBERS) {
        SetValue(field.id, GeData(field.preset));
    }
    return true;
}

bool BakeDialog::Command(int32_t id, const BaseContainer& /*message*/) {
    if (id == FILE_BUTTON) {
        return chooseFile();
    }
    return id != BAKE_BUTTON || bakeShaders();
}

bool BakeDialog::chooseFile() {
    Filename file;
    if (!file.FileSelect(FILESELECT_SAVE, "Save image to...")) {
        return false;
    }
    return SetValue(FILE_FIELD, GeData(file.GetString()));
}

int32_t BakeDialog::readNumber(int32_t id, int32_t least) const {
    GeData value;
    return GetValue(id, value) ? std::max(least, value.GetLong()) : least;
}

BaseContainer BakeDialog::readSettings() const {
    BaseContainer settings;
    settings.SetBool(BAKE_TEX_COLOR, true);
    settings.SetLong(BAKE_TEX_WIDTH, readNumber(RES_X, 1));
    settings.SetLong(BAKE_TEX_HEIGHT, readNumber(RES_Y, 1));
    settings.SetLong(BAKE_TEX_PIXELBORDER, readNumber(PIXEL_BORDER, 0));
    settings.SetLong(BAKE_TEX_SUPERSAMPLING, readNumber(SUPER_SAMPLING, 0));
    settings.SetReal(BAKE_TEX_UV_LEFT, 0.0f);
    settings.SetReal(BAKE_TEX_UV_RIGHT, 1.0f);
    settings.SetReal(BAKE_TEX_UV_TOP, 0.0f);
    settings.SetReal(BAKE_TEX_UV_BOTTOM, 1.0f);
    for (const int32_t unused : UNUSED_SETTINGS) {
        settings.SetLong(unused, 0);
    }
    GeData value;
    if (GetValue(FILE_FIELD, value)) {
        settings.SetFilename(BAKE_SETTING_FILE, Filename(value.GetString()));
    }
    for (const BakeChannel& entry : BAKE_CHANNELS) {
        settings.SetBool(entry.setting, GetValue(entry.checkBox, value) && value.GetBool());
    }
    return settings;
}

bool BakeDialog::bakeShaders() {
    if (!document_ || !tag_ || !tag_->GetObject() || !tag_->GetMaterial() || thread_) {
        return false;
    }
    const BaseContainer settings = readSettings();
    if (!settings.GetFilename(BAKE_SETTING_FILE).Content()) {
        MessageDialog("You have to specify a file to save to.");
        return false;
    }
    document_->StartUndo();
    target_ = makeBakeTarget(document_, tag_);
    document_->EndUndo();
    if (!target_.uvw) {
        document_->DoUndo();
        MessageDialog(NO_BAKE_UVW);
        return false;
    }
    thread_ = std::make_unique<BakeThread>(document_, target_.tag, target_.uvw, target_.material, settings);
    Enable(BAKE_BUTTON, false);
    SetTimer(TIMER_MILLISECONDS);
    return thread_->Start();
}

void BakeDialog::Timer(const BaseContainer& /*message*/) {
    if (!thread_) {
        return;
    }
    if (thread_->IsRunning()) {
        SetTitle(thread_->GetThreadName());
        return;
    }
    takeResults();
    thread_.reset();
    Enable(BAKE_BUTTON, true);
    SetTimer(0);
    SetTitle(TITLE);
    Close();
}

void BakeDialog::takeResults() {
    BaseMaterial& material = *target_.material;
    BaseContainer& data = *material.GetDataInstance();
    for (size_t i = 0; i < BAKE_CHANNELS.size(); ++i) {
        if (!thread_->getFile(i).Content()) {
            continue;
        }
        BaseShader* const bitmap = BaseShader::Alloc(Xbitmap);
        if (!bitmap) {
            continue;
        }
        const int32_t link = channel(BAKE_CHANNELS[i].id).shader;
        if (auto* old = static_cast<BaseShader*>(data.GetLink(link, nullptr, Xbase))) {
            old->Remove();
            BaseShader::Free(old);
        }
        bitmap->GetDataInstance()->SetFilename(BITMAPSHADER_FILENAME, thread_->getFile(i));
        material.InsertShader(bitmap);
        data.SetLink(link, bitmap);
    }
    material.Message(MSG_UPDATE);
    document_->SetChanged();
    EventAdd();
}

bool BakeDialog::AskClose() {
    if (!thread_) {
        return false;
    }
    if (thread_->IsRunning()) {
        thread_->End(true);
        document_->DoUndo();
    } else {
        takeResults();
    }
    thread_.reset();
    SetTimer(0);
    return false;
}
