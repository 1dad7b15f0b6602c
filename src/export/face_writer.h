// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"

/// Hands out the faces of a mesh in order and writes the indices that `Corners` (mesh_corners.h) has in them.
/// Faces leave reversed, as (c, b, a) and (d, c, b, a): the scene's space mirrors the host's.
template <class Corners>
class FaceWriter {
public:
    /// The face arrays of `mesh` have their final size already; writing begins at the given places.
    explicit FaceWriter(Quenza::Mesh& mesh, size_t firstTriangle = 0, size_t firstQuad = 0)
        : triangle_(mesh.triangles.data() + firstTriangle), quad_(mesh.quads.data() + firstQuad) {}

    /// `indices` in the host's order of corners; a triangle has three.
    void write(const uint32_t* indices, bool isTriangle, uint32_t slot) {
        if (isTriangle) {
            uint32_t* const out = Corners::indices(*triangle_);
            out[0] = indices[2];
            out[1] = indices[1];
            out[2] = indices[0];
            if constexpr (Corners::writesSlot) {
                triangle_->tri_mat_index = slot;
            }
            ++triangle_;
        } else {
            uint32_t* const out = Corners::indices(*quad_);
            out[0] = indices[3];
            out[1] = indices[2];
            out[2] = indices[1];
            out[3] = indices[0];
            if constexpr (Corners::writesSlot) {
                quad_->mat_index = slot;
            }
            ++quad_;
        }
    }

private:
    Quenza::MeshTriangle* triangle_;
    Quenza::MeshQuad* quad_;
};
