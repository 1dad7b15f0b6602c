// SPDX-License-Identifier: MIT
#pragma once

#include "headless/import/model_space.h"
#include "headless/model/object.h"

#include <assimp/scene.h>
#include <memory>
#include <string>
#include <vector>

namespace headless {

/// A camera or light that a model fixes to one of its nodes. The object's matrix is its place in the node's
/// space: it looks, or shines, along its Z axis.
struct Fixture {
    /// Name of the node, as the model has it.
    std::string node;
    std::unique_ptr<Object> object;
};

/// The model's cameras, with projection, field of view and, where the file tells it, the distance of the
/// target; then its lights, with kind, colour, brightness, cones and sizes of areas. A light whose power the
/// file gives in candela gets the plug-in's light tag with it, when the plug-in is loaded. `file` is the
/// model's. Lights of a kind that the host doesn't have are left out, with a warning.
std::vector<Fixture> importFixtures(const aiScene& scene, const std::string& file, const ModelSpace& space,
                                    std::vector<std::string>& warnings);

// The parts of it. The axes of the matrix are unit vectors; a broken place becomes the node's own.
struct Aim;
std::unique_ptr<Object> importCamera(const aiCamera& camera, const Aim* aim, const ModelSpace& space);
/// Null for a kind that the host doesn't have.
std::unique_ptr<Object> importLight(const aiLight& light, const Aim* aim, bool isGLTF,
                                    const ModelSpace& space);

/// A frame that looks from `position` along `forward`, given in the model's space.
Matrix aimedMatrix(const aiVector3D& position, const aiVector3D& forward, const aiVector3D& up,
                   const ModelSpace& space);

} // namespace headless
