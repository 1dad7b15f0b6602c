// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "host/filename.h"
#include "materials/channels.h"
#include "scene/param.h"
#include "scene/shader_info.h"
#include "scene/texture.h"

class BaseShader;
struct ExportContext;

/// Turns channels of one material into parameters of a material of the scene: a bitmap becomes a texture, a
/// shader of the plug-in a program, any other shader a baked texture, and a channel without one its constant.
/// A parameter stays null when its channel is off, or has nothing of that.
class ChannelExporter {
public:
    /// Textures are appended to `textures`. Baked files are named after `name`.
    ChannelExporter(const BaseContainer& data, const String& name, Quenza::Vector<Quenza::Texture>& textures,
                    ExportContext& context)
        : data_(data), name_(name), textures_(textures), context_(context) {}

    // The parameter's family is the channel's.
    void fill(Quenza::Ref<Quenza::WavelengthDependentParam>& parameter, ChannelId id);
    void fill(Quenza::Ref<Quenza::WavelengthIndependentParam>& parameter, ChannelId id);
    void fill(Quenza::Ref<Quenza::DisplacementParam>& parameter, ChannelId id);
    void fill(Quenza::Ref<Quenza::Vec3Param>& parameter, ChannelId id);

private:
    template <class Family>
    Quenza::Ref<Family> makeParameter(ChannelFamily family, ChannelId id);
    bool appendTexture(const Channel& channel, BaseShader* shader);
    Filename nextBakedFile(const Channel& channel);

    const BaseContainer& data_;
    const String name_;
    Quenza::Vector<Quenza::Texture>& textures_;
    ExportContext& context_;
};
