// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "foundation/vec.h"
#include "scene/mesh.h"

#include <string>

class TiXmlElement;

/// What the attributes of the elements of embedded meshes say. All throw ModelLoaderExcep with the place of
/// the fault.
namespace Quenza::EmbeddedMesh {

/// `message` with the place of the element.
[[noreturn]] void fail(const std::string& message, const TiXmlElement& element);

/// The number of UV sets that the attributes "uv0" to "uv3" of a vertex or a `uvs` element need; 0 without.
u32 numUVSets(const TiXmlElement& element);

/// Adds the position, multiplied by `scale`, and the normal of a `vertex`.
void addVertex(const TiXmlElement& vertex, Mesh& mesh, double scale);

/// Adds the UV entry of a vertex or a `uvs` element; other attributes are not looked at.
void addUVEntry(const TiXmlElement& element, Mesh& mesh);

/// A `triangle` or `quad`. Where it has no UV indices they are those of its vertices, or 0 in a mesh without
/// UVs.
struct Face {
    u32 vertex_indices[4];
    u32 uv_indices[4];
    u32 material_index;
};
Face readFace(const TiXmlElement& element, u32 num_corners, const Mesh& mesh);

/// Exactly `count` indices with white space between and around them.
bool parseIndices(const char* text, u32* indices, u32 count);

} // namespace Quenza::EmbeddedMesh
