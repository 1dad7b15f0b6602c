// SPDX-License-Identifier: MIT
#pragma once

#include "scene/param.h"
#include "scene/param_forms.h"

namespace Quenza {

class ShaderVec3Param : public ShaderForm<Vec3Param> {
public:
    using ShaderForm::ShaderForm;
};

class TextureVec3Param : public TextureForm<Vec3Param> {
public:
    using TextureForm::TextureForm;
};

} // namespace Quenza
