// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"
#include "scene/scene_node.h"

namespace Quenza {

/// A mesh with its subdivision options. Writing it stores the mesh as a file named after its checksum in a
/// folder beside the scene, so that equal meshes share one file; the scene holds the path alone.
class SceneNodeMesh : public SceneNode {
public:
    /// Named "Mesh 0", "Mesh 1" and so on in the order of creation in this process.
    SceneNodeMesh();
    ~SceneNodeMesh() override;

    u32 getType() const override { return NODE_MESH; }
    Ref<SceneNode> clone() const override;
    /// Writes the mesh file too, whatever file of that name there is. Without a mesh the stored path is
    /// written.
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;
    bool doIsEqual(const SceneNode& other) const override;
    /// Lets go of the mesh, which stands in that file now.
    void releaseMesh(const String& file);

    String path; ///< Where the mesh is loaded from, relative to the scene's folder.
    Ref<Mesh> mesh;
    i32 max_num_subdivisions = 0;
    double subdivide_pixel_threshold = 4.0;
    double subdivide_curvature_threshold = 0;
    double displacement_error_threshold = 0;
    bool view_dependent_subdivision = true;
    bool subdivision_smoothing = true;
    bool normal_smoothing = false;
    bool merge_vertices_with_same_pos_and_normal = true;
    bool wrap_u = false;
    bool wrap_v = false;
    double scale = 1.0; ///< Positions are multiplied by it when the mesh is loaded.
    /// Of `scale`, what the positions of `mesh` have in them already: a file of such a mesh is written with
    /// the rest of it.
    double scale_in_mesh = 1.0;

private:
    void writeOptions(OStream& stream, u32 depth) const;
    /// The scale with which a file of `mesh` is to be loaded.
    double scaleOfFile() const;
    /// Returns the path of the file relative to the scene's folder.
    String writeMeshFile(const XMLWriteOptions& options) const;
    void load(const SceneVisitor& visitor);
};

} // namespace Quenza
