// SPDX-License-Identifier: MIT
#pragma once

class SceneExporter;

/// Names the light layers that the export came by, with the user's names of the render settings, and hands
/// all layers to the scene's settings.
void exportLayers(SceneExporter& exporter);
