// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/vec.h"
#include "render/white_points.h"

#include <cstdint>
#include <vector>

/// How the artist wants the running render shown, as the tone mapping dialog holds it.
struct TonemappingChoice {
    /// A SceneNodeTonemapping::TonemapType. The numbers of all methods are kept, whichever is chosen.
    uint32_t method;
    float scale;
    float preScale;
    float postScale;
    float burn;
    float filmIso;
    float evAdjust;
    /// Index into the list of response functions; any other number leaves the scene's function alone.
    int32_t responseFunction;
    Chromaticity whitePoint;
};

/// What the artist has changed.
struct TonemappingChange {
    TonemappingChoice choice;
    /// Of the light layers, in their order; empty leaves them alone.
    std::vector<Quenza::Vec3d> weights;
};

/// A light layer of the running render, with its weight in the image.
struct LayerWeight {
    Quenza::String name;
    Quenza::Vec3d weight{1, 1, 1};
};

/// What the running render shows, or is about to; without one, what a scene shows whose camera has no tag of
/// the plug-in.
TonemappingChoice readTonemappingChoice();

/// The light layers of the running render; none without a render. The dialog's list is no longer stale then.
std::vector<LayerWeight> takeLayerWeights();
/// True when a render has started since takeLayerWeights.
bool isLayerListStale();

/// Changes the nodes of the running render, if there is one, and marks them as changed: its loop takes them
/// over for the next image. Never waits: while the library holds the scene, which may take minutes, the
/// change stays with the state of the render, and its loop writes it. Weights that belong to an earlier
/// render are left out.
void applyTonemapping(TonemappingChange change);
/// Writes the change that is waiting. True when none waits any more. Call it with the lock of the render's
/// state.
bool writePendingTonemapping();
