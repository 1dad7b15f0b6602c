// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"

class BaseMaterial;
struct ExportContext;

/// The light of a material of the plug-in, for what surrounds the scene: it has no surface, so nothing but
/// emission counts. Null for another type of material.
Quenza::Ref<Quenza::Material> exportBackgroundMaterial(ExportContext& context, const BaseMaterial* material);
