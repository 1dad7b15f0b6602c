// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

class BaseContainer;
class BaseShader;
struct ExportContext;

/// Renders a shader alone into a JPEG file of the size that the material's container tells. `saveFlags` are
/// ImageSaveBits. False when that fails.
bool bakeShaderToFile(BaseShader* shader, const Filename& file, const BaseContainer* material,
                      int32_t saveFlags, ExportContext& context);
