// SPDX-License-Identifier: MIT
#pragma once

#include "engine/notices.h"
#include "engine/texture_map.h"
#include "foundation/ref_counted.h"
#include "scene/material.h"
#include "scene/param.h"

#include <memory>
#include <vector>

namespace engine {

/// Makes the parameters of one material ready for rendering. A form that can't be evaluated is told and drawn
/// as a middle value.
class ParamReader {
public:
    ParamReader(const Quenza::Material& material, ImageCache& images, Notices& notices);

    /// A reflectance or other factor; `absent` stands for a null parameter.
    ColourParam factor(const Quenza::Ref<Quenza::WavelengthDependentParam>& param, float absent) const;
    /// A radiance.
    ColourParam radiance(const Quenza::Ref<Quenza::WavelengthDependentParam>& param) const;
    NumberParam number(const Quenza::Ref<Quenza::WavelengthIndependentParam>& param, float absent) const;
    NumberParam number(const Quenza::Ref<Quenza::DisplacementParam>& param, float absent) const;
    /// Null when it isn't a texture.
    std::shared_ptr<const TextureMap> texture(const Quenza::Ref<Quenza::DisplacementParam>& param) const;
    std::shared_ptr<const TextureMap> texture(const Quenza::Ref<Quenza::Vec3Param>& param) const;

    Notices& notices() const { return notices_; }

private:
    std::shared_ptr<const TextureMap> textureAt(Quenza::i32 index) const;
    void tellShader() const;

    Notices& notices_;
    std::vector<std::shared_ptr<const TextureMap>> textures_;
};

} // namespace engine
