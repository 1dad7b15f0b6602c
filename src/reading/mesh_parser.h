// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_mesh.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// Reads a `mesh` and enters its name in the state's table. An embedded mesh is read right away; of an
/// external one the node holds the path, and SceneNodeRoot::finalise loads it. Throws QuenzaModelParserExcep,
/// SceneParseUtilsExcep or, for embedded ones, what reading/embedded_mesh.h throws.
Ref<SceneNodeMesh> parseMesh(ParserState& state, const TiXmlElement& element);

/// The mesh of the node, loaded now if it wasn't before: for the older elements that give a mesh no materials
/// by number, so that the mesh itself must say what it needs. Throws what the loader throws.
const Mesh& requireLoadedMesh(const ParserState& state, SceneNodeMesh& node);

} // namespace Quenza
