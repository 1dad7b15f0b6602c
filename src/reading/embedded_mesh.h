// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"

class TiXmlElement;

/// Meshes that stand in the scene file itself. Both readers fill a new mesh, its positions multiplied by
/// `scale`, and end it with endOfModel. Faults of the text are ModelLoaderExceps that name the element's
/// place; the mesh's own, such as an index out of bounds, are QuenzaExceptions.
///
/// Vertices and UVs count from 0 in the order of the file, and may stand behind the faces that use them. The
/// mesh has as many UV sets as the highest one that is named; what an element lacks of them is (0, 0).
/// Numbers stand in texts with white space between.
namespace Quenza {

/// The older form. The UVs of a corner are those of its vertex.
///
///     <embedded>
///         <vertex pos="x y z" normal="x y z" uv0="u v" ... uv3="u v"/>    normal and UVs may be absent
///         <triangle_set>
///             <material_name>...</material_name>
///             <tri>0 1 2</tri>
///         </triangle_set>
///     </embedded>
void readEmbeddedMesh(const TiXmlElement& element, Mesh& mesh, double scale);

/// The newer form. `uv` are indices into the UV entries, which the `uvs` elements make; a mesh whose vertices
/// have UVs has an entry for each vertex and `uvs` element, in the order of the file. Without `uv` a corner
/// takes the entry of its vertex's number. `m` is an index into the used materials. `expose_uv_set` names a
/// UV set and changes nothing about the mesh.
///
///     <embedded_2>
///         <used_material_name>...</used_material_name>
///         <expose_uv_set>...</expose_uv_set>
///         <vertex .../>                                                  as above
///         <uvs uv0="u v" ... uv3="u v"/>
///         <triangle v="0 1 2" uv="0 1 2" m="0"/>
///         <quad v="0 1 2 3" uv="0 1 2 3" m="0"/>
///     </embedded_2>
void readEmbedded2Mesh(const TiXmlElement& element, Mesh& mesh, double scale);

} // namespace Quenza
