// SPDX-License-Identifier: MIT
#pragma once

class SceneExporter;

/// Adds what surrounds the scene: sun and sky, the light of a material, nothing, or without render settings a
/// white environment. False when the chosen material can't be used: the node is empty then.
bool exportBackground(SceneExporter& exporter);
