// SPDX-License-Identifier: MIT
#include "headless/shaders/material_picture.h"

#include "headless/model/handles.h"
#include "headless/shaders/shader_ids.h"
#include "headless/shaders/shader_sampling.h"
#include "host/plugin_data.h"

namespace headless {

bool channelState(const Material& material, int32_t channel) {
    return material.type() == Mmaterial && channel >= CHANNEL_COLOR && channel <= CHANNEL_NORMAL &&
           material.data.GetBool(MATERIAL_USE_COLOR + channel);
}

ColourChannel::ColourChannel(Material& material, const InitRenderStruct& init) {
    if (!channelState(material, CHANNEL_COLOR)) {
        return;
    }
    colour_ = material.data.GetVector(MATERIAL_COLOR_COLOR) *
              material.data.GetReal(MATERIAL_COLOR_BRIGHTNESS, 1.0f);
    BaseList2D* const node = material.data.GetLink(MATERIAL_COLOR_SHADER, nullptr, Xbase);
    auto* const shader = static_cast<Shader*>(fromHost(node));
    if (shader && initRender(*shader, init) == INITRENDERRESULT_OK) {
        shader_ = shader;
    }
}

ColourChannel::~ColourChannel() {
    if (shader_) {
        freeRender(*shader_);
    }
}

Vector ColourChannel::sample(const ChannelData& channel) const {
    return shader_ ? headless::sample(*shader_, channel) : colour_;
}

bool drawMaterial(Material& material, BaseDocument* document, BaseThread* thread, BaseBitmap* bitmap) {
    if (auto* const plugin = static_cast<MaterialData*>(material.pluginData())) {
        return plugin->InitGLImage(toHost(&material), document, thread, bitmap);
    }
    Image& image = *fromHost(bitmap);
    if (material.type() != Mmaterial || image.depth() == 0) {
        return false;
    }
    InitRenderStruct init;
    init.document = document;
    init.time = document ? fromHost(document)->time : BaseTime();
    const ColourChannel colour(material, init);
    ChannelData channel;
    channel.time = init.time;
    channel.d = {1.0f / static_cast<float>(image.width()), 1.0f / static_cast<float>(image.height()), 0.0f};
    for (int32_t y = 0; y < image.height(); ++y) {
        for (int32_t x = 0; x < image.width(); ++x) {
            channel.p.x = (static_cast<float>(x) + 0.5f) * channel.d.x;
            channel.p.y = (static_cast<float>(y) + 0.5f) * channel.d.y;
            image.setPixel(x, y, colour.sample(channel));
        }
    }
    return true;
}

} // namespace headless
