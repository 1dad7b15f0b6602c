// SPDX-License-Identifier: MIT
#pragma once

#include "headless/geometry/axis_frame.h"
#include "headless/geometry/poly_mesh.h"

/// The host's primitives as meshes around the origin: welded points, faces outward, one UVW per polygon.
///
/// Lengths are document units. Lengths below zero and not finite count as zero, segment counts are brought
/// into their range, and a primitive without any surface (a sphere of radius 0) is an empty mesh. There are
/// no zero-area polygons and no unused points; poles are fans of triangles.
///
/// Surfaces of revolution have their axis along +Y and turn from +X towards +Z, which is to the right for a
/// viewer outside; their texture begins at +X. `orientation` then turns +Y to the named direction; a number
/// that names none leaves it there.
namespace headless::geometry {

/// Limits of segment counts, so that a broken document can't ask for more memory than there is. A mesh of
/// some 25 million polygons remains possible.
inline constexpr int maxSegments = 5000;
inline constexpr int maxCubeSegments = 2000;
/// Along the height of a body of revolution and across its caps.
inline constexpr int maxRowSegments = 1000;

struct CubeParameters {
    Vector size{200.0f, 200.0f, 200.0f};
    int segmentsX = 1;
    int segmentsY = 1;
    int segmentsZ = 1;
};
/// Each side carries the whole texture, upright and readable. A box with one side of zero is two sheets back
/// to back.
PolyMesh makeCube(const CubeParameters& parameters);

enum class SphereType : int {
    Standard = 0,
    Tetrahedron = 1,
    Hexahedron = 2,
    Octahedron = 3,
    Icosahedron = 4,
    Hemisphere = 5
};

struct SphereParameters {
    float radius = 100.0f;
    /// Around the equator, at least 3. The other types divide their edges so that they come near to it.
    int segments = 24;
    SphereType type = SphereType::Standard;
};
/// The hemisphere is the upper half of the standard sphere, open below. UVs are those of a spherical
/// projection, for all types; polygons that cross the seam run on beyond u = 1.
PolyMesh makeSphere(const SphereParameters& parameters);

struct DiscParameters {
    float innerRadius = 0.0f;
    float outerRadius = 100.0f;
    /// From the inner to the outer rim, at least 1.
    int discSegments = 1;
    /// At least 3.
    int rotationSegments = 36;
    Axis orientation = Axis::PlusY;
};
/// Looks along the orientation; the texture's square is the one around the outer rim.
PolyMesh makeDisc(const DiscParameters& parameters);

struct PlaneParameters {
    float width = 400.0f;
    float height = 400.0f;
    int widthSegments = 20;
    int heightSegments = 20;
    Axis orientation = Axis::PlusY;
};
/// Width lies to the right and height upwards as `axisFrames` has them for the orientation.
PolyMesh makePlane(const PlaneParameters& parameters);

struct CylinderParameters {
    float radius = 50.0f;
    float height = 200.0f;
    int heightSegments = 8;
    /// At least 3.
    int rotationSegments = 36;
    bool caps = true;
    int capSegments = 1;
    Axis orientation = Axis::PlusY;
};
PolyMesh makeCylinder(const CylinderParameters& parameters);

struct ConeParameters {
    float topRadius = 0.0f;
    float bottomRadius = 100.0f;
    float height = 200.0f;
    int heightSegments = 8;
    /// At least 3.
    int rotationSegments = 36;
    bool caps = true;
    int capSegments = 1;
    Axis orientation = Axis::PlusY;
};
PolyMesh makeCone(const ConeParameters& parameters);

struct TorusParameters {
    float ringRadius = 100.0f;
    int ringSegments = 36;
    float pipeRadius = 20.0f;
    int pipeSegments = 18;
    Axis orientation = Axis::PlusY;
};
/// u runs around the ring, v around the pipe from the innermost line over the top. A pipe that is wider than
/// the ring passes through itself.
PolyMesh makeTorus(const TorusParameters& parameters);

struct TubeParameters {
    float innerRadius = 50.0f;
    float outerRadius = 100.0f;
    float height = 100.0f;
    int heightSegments = 1;
    /// At least 3.
    int rotationSegments = 36;
    /// Across the rims at the top and the bottom.
    int capSegments = 1;
    Axis orientation = Axis::PlusY;
};
/// With an inner radius of zero it's a cylinder.
PolyMesh makeTube(const TubeParameters& parameters);

} // namespace headless::geometry
