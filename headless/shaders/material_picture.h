// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image.h"
#include "headless/model/material.h"
#include "host/shading.h"

class BaseThread;

namespace headless {

/// Whether a channel, a MaterialChannelId, of a standard material is on; false for other materials.
bool channelState(const Material& material, int32_t channel);

/// The colour channel of a standard material, ready for sampling while it lives: its shader, else its colour
/// times its brightness. Black when the channel is off, and for other materials.
class ColourChannel {
public:
    ColourChannel(Material& material, const InitRenderStruct& init);
    ColourChannel(const ColourChannel&) = delete;
    ColourChannel& operator=(const ColourChannel&) = delete;
    ~ColourChannel();

    /// Any thread.
    Vector sample(const ChannelData& channel) const;

private:
    Shader* shader_ = nullptr;
    Vector colour_;
};

/// Fills an image with what the viewport shows of a material: the plug-in's own picture, of a standard
/// material the colour channel. False when there is none. `bitmap` is a BaseBitmap.
bool drawMaterial(Material& material, BaseDocument* document, BaseThread* thread, BaseBitmap* bitmap);

} // namespace headless
