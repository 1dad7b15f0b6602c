// SPDX-License-Identifier: MIT
#pragma once

#include "export/merge_corners.h"
#include "export/mesh_arrays.h"
#include "export/mesh_corners.h"
#include "scene/mesh.h"

/// Converts host arrays into scene meshes. One converter serves for many meshes, one after the other: the
/// memory that merging takes is kept.
class ArrayConverter {
public:
    /// Fills positions, normals, UV pairs and faces of an empty `mesh`, which gets one UV mapping. Positions
    /// are multiplied by `scale` and, as normals, come in the scene's axes; faces are reversed to match. Each
    /// run's slot becomes the material index of its faces.
    ///
    /// Without `merge` every corner has a vertex and a UV pair of its own. With it, vertices that are equal
    /// in position and normal are one, and so are equal UV pairs, in the order of their first appearance.
    ///
    /// The arrays must be without fault (findMeshFault). Large meshes are converted by several
    /// threads; the result doesn't depend on it. Throws std::bad_alloc.
    void convert(const MeshArrays& arrays, const PolygonRuns& runs, float scale, bool merge,
                 Quenza::Mesh& mesh);

    void releaseMemory();

private:
    struct Task;
    void mergeVertices(const Task& task);
    void mergeUvs(const Task& task);
    void mergeMesh(const Task& task);
    static void appendMesh(const Task& task);

    MergeScratch<PositionCorners> positionScratch_;
    MergeScratch<VertexCorners> vertexScratch_;
    MergeScratch<UvCorners> uvScratch_;
};
