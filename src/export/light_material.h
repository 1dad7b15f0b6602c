// SPDX-License-Identifier: MIT
#pragma once

class BaseObject;
class SceneExporter;

/// Adds a material that shines as the light does, by its light tag or without one by the host's colour and
/// brightness. Each light has its own, and all have the same name; the context's `lightMaterialUID` is that
/// of the last.
void exportLightMaterial(SceneExporter& exporter, const BaseObject* light);
