// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"
#include "engine/notices.h"
#include "scene/scene_node_mesh.h"

#include <map>
#include <tuple>
#include <vector>

namespace engine {

/// The shapes of a scene's meshes, each made once. A mesh is cut and rounded as its node says, and moved by
/// the displacement of the materials that it is seen with.
class ShapeStore {
public:
    ShapeStore(Geometry& geometry, Notices& notices) : geometry_(geometry), notices_(notices) {}

    /// For an instance that has its materials and its place, but no shape yet. Instances of one mesh with the
    /// same materials share a shape, which programs then see at the place of the first. Throws as
    /// Geometry::addMesh does.
    const Shape* shapeFor(const Quenza::SceneNodeMesh& node, const Instance& instance);

    /// What cutting may add to a scene.
    static constexpr Quenza::u64 MAX_CUT_TRIANGLES = 2'000'000;

private:
    const Shape* makeFine(const Quenza::SceneNodeMesh& node, const Instance& instance, bool displaced);

    Geometry& geometry_;
    Notices& notices_;
    std::map<std::pair<const Quenza::Mesh*, bool>, const Shape*> plain_;
    using Fine = std::pair<const Quenza::SceneNodeMesh*, std::vector<const SurfaceShader*>>;
    std::map<Fine, const Shape*> fine_;
    Quenza::u64 cut_triangles_ = 0;
};

} // namespace engine
