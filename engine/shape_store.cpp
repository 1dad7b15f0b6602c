// SPDX-License-Identifier: MIT
#include "engine/shape_store.h"

#include "engine/displacement.h"
#include "engine/subdivision.h"
#include "engine/surface_shader.h"

#include <algorithm>
#include <string>

namespace engine {

using Quenza::Mesh;
using Quenza::Ref;
using Quenza::u64;

const Shape* ShapeStore::shapeFor(const Quenza::SceneNodeMesh& node, const Instance& instance) {
    const bool displaced = std::any_of(instance.materials.begin(), instance.materials.end(),
                                       [](const SurfaceShader* shader) { return shader->isDisplaced(); });
    const bool rounded = node.max_num_subdivisions > 0 && node.subdivision_smoothing;
    const Mesh* const mesh = node.mesh.getPointer();
    if (!displaced && !rounded) {
        const Shape*& shape = plain_[{mesh, node.normal_smoothing}];
        return shape ? shape : shape = geometry_.addMesh(node.mesh, node.normal_smoothing);
    }
    const Shape*& shape = fine_[{&node, displaced ? instance.materials : decltype(instance.materials)()}];
    return shape ? shape : shape = makeFine(node, instance, displaced);
}

const Shape* ShapeStore::makeFine(const Quenza::SceneNodeMesh& node, const Instance& instance,
                                  bool displaced) {
    const Mesh& mesh = *node.mesh;
    mesh.checkAllIndices();
    const int wanted = std::max(0, node.max_num_subdivisions);
    const int levels = affordableLevels(mesh, wanted, MAX_CUT_TRIANGLES - cut_triangles_);
    if (levels < wanted) {
        notices_.tell("Meshes are subdivided up to " + std::to_string(MAX_CUT_TRIANGLES) +
                      " triangles in all; some are coarser than they should be.");
    }
    const bool rounded = node.subdivision_smoothing && levels > 0;
    const Ref<Mesh> fine = subdivided(mesh, levels, rounded);
    cut_triangles_ += levels > 0 ? std::min(fine->triangles.size(), MAX_CUT_TRIANGLES - cut_triangles_) : 0;
    if (displaced) {
        Shape shape;
        shape.mesh = fine;
        Instance seen = instance;
        seen.shape = &shape;
        displace(*fine, seen);
    }
    // Normals of the mesh as it was would hide what has moved.
    const bool smooth = node.normal_smoothing || rounded || !mesh.vert_normals.empty();
    fine->vert_normals.clear();
    fine->endOfModel();
    return geometry_.addMesh(fine, smooth);
}

} // namespace engine
