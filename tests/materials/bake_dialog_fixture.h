// SPDX-License-Identifier: MIT
#pragma once

#include "host/ids.h"
#include "host/object.h"
#include "host/tag.h"
#include "materials/bake_checks.h"
#include "materials/bake_command.h"
#include "materials/channels.h"

#include <filesystem>

inline constexpr int32_t BAKE_BUTTON = 10001;
inline constexpr int32_t RES_X = 10011;
inline constexpr int32_t RES_Y = 10012;
inline constexpr int32_t FILE_FIELD = 10017;
inline constexpr int32_t FILE_BUTTON = 10018;

using headless::UserAction;

// What a user does.

inline UserAction set(int32_t gadget, const GeData& value) {
    return {.kind = UserAction::Kind::set, .gadget = gadget, .value = value};
}
inline UserAction press(int32_t gadget) {
    return {.kind = UserAction::Kind::press, .gadget = gadget, .value = GeData()};
}
inline UserAction close() {
    return {.kind = UserAction::Kind::close, .value = GeData()};
}
inline UserAction look(std::function<void(GeDialog&)> use) {
    return {.kind = UserAction::Kind::use, .value = GeData(), .use = std::move(use)};
}

/// A quad with a material of the plug-in on it, whose texture tag is selected.
class BakeDialogTest : public BakeChecks {
protected:
    BakeDialogTest() {
        quad_ = PolygonObject::Alloc(4, 1);
        const Vector corners[] = {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}};
        std::copy(corners, corners + 4, quad_->GetPointW());
        quad_->GetPolygonW()[0] = CPolygon(0, 1, 2, 3);
        quad_->SetName("Quad");
        document()->InsertObject(quad_);
        material_ = addMaterial("Painted", MAT_KIND_DIFFUSE);
        tag_ = addTexture(material_, P_UVW);
        tag_->SetBit(BIT_ACTIVE);
    }

    TextureTag* addTexture(BaseMaterial* material, int32_t projection) {
        auto* const tag = static_cast<TextureTag*>(BaseTag::Alloc(Ttexture));
        quad_->InsertTag(tag, quad_->GetLastTag());
        tag->SetMaterial(material);
        data(tag).SetLong(TEXTURETAG_PROJECTION, projection);
        return tag;
    }
    /// Coordinates of the texture from its left edge to `right`.
    UVWTag* addUVW(float right = 1.0f) {
        UVWTag* const uvw = UVWTag::Alloc(1);
        uvw->Set(0, {{0, 1, 0}, {0, 0, 0}, {right, 0, 0}, {right, 1, 0}});
        quad_->InsertTag(uvw, quad_->GetLastTag());
        return uvw;
    }
    BaseShader* addOn(ChannelId id, int32_t type) {
        const Channel& target = channel(id);
        data(material_).SetBool(target.enable, true);
        return type == headless::Xnoise ? addNoise(material_, target.shader)
                                        : addShader(material_, target.shader, type);
    }

    std::string output(const char* name) { return folder() + "/out/" + name; }
    /// Opens the dialog with a file of `name` in a folder that exists, and bakes 32 x 16 pixels.
    bool bake(const char* name = "wall.v1.png", std::vector<UserAction> before = {}) {
        std::filesystem::create_directory(folder() + "/out");
        std::vector<UserAction> actions = std::move(before);
        for (UserAction& action : std::vector<UserAction>{
                 set(FILE_FIELD, GeData(String(output(name)))), set(RES_X, GeData(int32_t{32})),
                 set(RES_Y, GeData(int32_t{16})), press(BAKE_BUTTON), look([this](GeDialog& dialog) {
                     if (host().dialogs().state(&dialog)->find(BAKE_BUTTON)->enabled) {
                         ADD_FAILURE() << "the bake did not begin";
                         host().dialogs().requestClose(&dialog);
                     }
                 })}) {
            actions.push_back(std::move(action));
        }
        return run(std::move(actions));
    }
    /// The dialog closes itself behind a bake that began.
    bool run(std::vector<UserAction> actions) {
        host().user().addDialogActions(std::move(actions));
        return BakeCommand().Execute(document());
    }

    std::vector<std::string> outputFiles() {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder() + "/out")) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    /// The copies of a bake.
    PolygonObject* bakedObject() {
        BaseObject* const next = quad_->GetNext();
        return static_cast<PolygonObject*>(next ? next : quad_->GetPred());
    }
    BaseMaterial* bakedMaterial() {
        for (BaseMaterial* made = document()->GetFirstMaterial(); made; made = made->GetNext()) {
            if (made != material_ && made->GetName() == material_->GetName()) {
                return made;
            }
        }
        return nullptr;
    }
    /// What a channel of a material links: the image's file, else the shader's type.
    std::string linkedBy(BaseMaterial* material, ChannelId id) {
        auto* const shader =
            static_cast<BaseShader*>(data(material).GetLink(channel(id).shader, document(), Xbase));
        EXPECT_TRUE(!shader || shader->GetMaterial() == material);
        return !shader                        ? ""
               : shader->GetType() == Xbitmap ? data(shader).GetFilename(BITMAPSHADER_FILENAME).GetUtf8()
                                              : std::to_string(shader->GetType());
    }

    PolygonObject* quad_;
    BaseMaterial* material_;
    TextureTag* tag_;
};
