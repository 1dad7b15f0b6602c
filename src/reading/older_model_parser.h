// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/vec.h"
#include "scene/scene_node_model.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// Reads a `model`, the older form. It names a mesh, and its materials are those that the mesh itself names;
/// an external mesh is loaded for that. It moves from `pos` to `end_pos`, turning from `rotation` to
/// `final_rotation`, over the frame; where there are `keyframe`s, they take the place of all but `rotation`.
/// Throws QuenzaModelParserExcep, SceneParseUtilsExcep or what the mesh's loader throws.
Ref<SceneNodeModel> parseOlderModel(ParserState& state, const TiXmlElement& element);

/// The mesh that the child `mesh_name` names: "Model tried to use undefined mesh '...'. ".
Ref<SceneNodeMesh> parseMeshReference(const ParserState& state, const TiXmlElement& element);

/// Reads the optional children `rotation` (default none) and `scale` (default 1).
void parsePlacement(const TiXmlElement& element, SceneNodeModel& model);

/// The turn that takes `from` to `to`, as the axis and the angle of a keyframe. False when the matrices
/// differ in size or shape.
bool findTurn(const Matrix3d& from, const Matrix3d& to, Vec3d& axis, double& angle);

} // namespace Quenza
