// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_mesh.h"

class TiXmlElement;

namespace Quenza {

struct ParserState;

/// Reads a `mesh` and enters its name in the state's table. An embedded mesh is read right away; of an
/// external one the node holds the path, and SceneNodeRoot::finalise loads it.
Ref<SceneNodeMesh> parseMesh(ParserState& state, const TiXmlElement& element);

} // namespace Quenza
