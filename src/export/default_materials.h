// SPDX-License-Identifier: MIT
#pragma once

class SceneExporter;

/// Adds "nullMat", which lets everything through, and "default", for surfaces without a material; the context
/// gets their UIDs.
void exportDefaultMaterials(SceneExporter& exporter);
