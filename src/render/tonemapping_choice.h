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

/// A light layer of the running render, with its weight in the image.
struct LayerWeight {
    Quenza::String name;
    Quenza::Vec3d weight{1, 1, 1};
};

/// What the running render shows; without one, what a scene shows whose camera has no tag of the plug-in.
TonemappingChoice readTonemappingChoice();

/// The light layers of the running render; none without a render. The dialog's list is no longer stale then.
std::vector<LayerWeight> takeLayerWeights();
/// True when a render has started since takeLayerWeights.
bool isLayerListStale();

/// Changes the nodes of the running render, if there is one, and marks them as changed: its loop takes them
/// over for the next image. `weights` are those of the layers in their order; they are left out when they
/// belong to an earlier render.
void applyTonemapping(const TonemappingChoice& choice, const std::vector<Quenza::Vec3d>& weights);
