// SPDX-License-Identifier: MIT
#include "materials/bake_thread.h"

#include "host/bake.h"
#include "host/ids.h"
#include "host/material.h"
#include "host/tag.h"
#include "materials/bake_memory.h"
#include "shared/plugin_ids.h"

namespace {

/// A plain material in the place of the tag's own, as long as this lives.
class StageMaterial {
public:
    StageMaterial(BaseDocument& document, TextureTag& tag)
        : tag_(tag), own_(tag.GetMaterial()), stage_(BaseMaterial::Alloc(Mmaterial)) {
        if (stage_) {
            document.InsertMaterial(stage_);
            tag_.SetMaterial(stage_);
        }
    }
    StageMaterial(const StageMaterial&) = delete;
    StageMaterial& operator=(const StageMaterial&) = delete;
    ~StageMaterial() {
        if (stage_) {
            tag_.SetMaterial(own_);
            stage_->Remove();
            BaseMaterial::Free(stage_);
        }
    }

    BaseMaterial* get() const { return stage_; }

private:
    TextureTag& tag_;
    BaseMaterial* own_;
    BaseMaterial* stage_;
};

} // namespace

void BakeThread::Main() {
    const StageMaterial stage(*document_, *tag_);
    if (!stage.get()) {
        return;
    }
    for (size_t i = 0; i < BAKE_CHANNELS.size() && !TestBreak(); ++i) {
        if (!settings_.GetBool(BAKE_CHANNELS[i].setting)) {
            continue;
        }
        progress_ = BAKE_CHANNELS[i].progress;
        const Channel& baked = channel(BAKE_CHANNELS[i].id);
        const Filename file = fileOf(baked);
        if (bakeChannel(stage.get(), baked, file)) {
            files_[i] = file;
        }
    }
}

Filename BakeThread::fileOf(const Channel& channel) const {
    Filename file = settings_.GetFilename(BAKE_SETTING_FILE);
    file.ClearSuffix();
    return {file.GetString() + channel.bakeSuffix};
}

bool BakeThread::bakeChannel(BaseMaterial* stage, const Channel& channel, const Filename& file) {
    const BaseList2D* const shader = material_->GetDataInstance()->GetLink(channel.shader, nullptr, Xbase);
    // A program is the renderer's: the host can't run it.
    if (!shader || shader->GetType() == PLUGINID_QSL_SHADER) {
        return false;
    }
    auto* copy = static_cast<BaseShader*>(shader->GetClone());
    if (!copy) {
        return false;
    }
    stage->InsertShader(copy);
    stage->GetDataInstance()->SetLink(MATERIAL_COLOR_SHADER, copy);
    const bool isBaked = render(file, channel.saveFlags());
    copy->Remove();
    BaseShader::Free(copy);
    return isBaked;
}

bool BakeThread::render(const Filename& file, int32_t saveFlags) {
    const OwnedBitmap image(BaseBitmap::Alloc());
    if (!image || image->Init(settings_.GetLong(BAKE_TEX_WIDTH), settings_.GetLong(BAKE_TEX_HEIGHT), 24) !=
                      IMAGERESULT_OK) {
        return false;
    }
    int32_t error = BAKE_TEX_ERR_NONE;
    const OwnedDocument bake(InitBakeTexture(document_, tag_, uvw_, settings_, &error, Get()));
    return bake && error == BAKE_TEX_ERR_NONE &&
           BakeTexture(bake.get(), settings_, image.get(), Get()) == BAKE_TEX_ERR_NONE &&
           saveAsJpeg(*image, file, saveFlags);
}
