// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/vector.h"
#include "materials/channels.h"
#include "scene/shader_info.h"
#include "scene/texture.h"

class BaseShader;

/// The program of one of the plug-in's shaders, for a channel whose first line is `header`; null for null.
/// The images of a program text shader are appended to `textures`. The text isn't checked: the renderer does
/// that, and names what it can't compile.
Quenza::Ref<Quenza::ShaderInfo> makeShaderInfo(BaseShader* shader, Quenza::Vector<Quenza::Texture>& textures,
                                               const char* header, QSLValueType valueType);
