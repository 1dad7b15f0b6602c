// SPDX-License-Identifier: MIT
#include "headless/build/primitive_mesh.h"

#include "headless/geometry/primitives.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"

namespace headless {

namespace {

using namespace geometry;

Axis axisOf(const BaseContainer& data) {
    const int32_t axis = data.GetLong(PRIM_AXIS, static_cast<int32_t>(Axis::PlusY));
    return axis >= 0 && axis <= 5 ? static_cast<Axis>(axis) : Axis::PlusY;
}

PolyMesh cube(const BaseContainer& data) {
    return makeCube({.size = data.GetVector(PRIM_CUBE_SIZE),
                     .segmentsX = data.GetLong(PRIM_CUBE_SUBX, 1),
                     .segmentsY = data.GetLong(PRIM_CUBE_SUBY, 1),
                     .segmentsZ = data.GetLong(PRIM_CUBE_SUBZ, 1)});
}

PolyMesh sphere(const BaseContainer& data) {
    const int32_t type = data.GetLong(PRIM_SPHERE_TYPE);
    const bool known = type >= 0 && type <= PRIM_SPHERE_TYPE_HEMISPHERE;
    return makeSphere({.radius = data.GetReal(PRIM_SPHERE_RAD),
                       .segments = data.GetLong(PRIM_SPHERE_SUB, 24),
                       .type = known ? static_cast<SphereType>(type) : SphereType::Standard});
}

PolyMesh disc(const BaseContainer& data) {
    return makeDisc({.innerRadius = data.GetReal(PRIM_DISC_INNER_RAD),
                     .outerRadius = data.GetReal(PRIM_DISC_RAD),
                     .discSegments = data.GetLong(PRIM_DISC_SUB, 1),
                     .rotationSegments = data.GetLong(PRIM_DISC_SEG, 36),
                     .orientation = axisOf(data)});
}

PolyMesh plane(const BaseContainer& data) {
    return makePlane({.width = data.GetReal(PRIM_PLANE_WIDTH),
                      .height = data.GetReal(PRIM_PLANE_HEIGHT),
                      .widthSegments = data.GetLong(PRIM_PLANE_SUBW, 1),
                      .heightSegments = data.GetLong(PRIM_PLANE_SUBH, 1),
                      .orientation = axisOf(data)});
}

PolyMesh cylinder(const BaseContainer& data) {
    return makeCylinder({.radius = data.GetReal(PRIM_CYLINDER_RADIUS),
                         .height = data.GetReal(PRIM_CYLINDER_HEIGHT),
                         .heightSegments = data.GetLong(PRIM_CYLINDER_SUBH, 1),
                         .rotationSegments = data.GetLong(PRIM_CYLINDER_SEG, 36),
                         .caps = data.GetBool(PRIM_CYLINDER_CAPS, true),
                         .capSegments = data.GetLong(PRIM_CYLINDER_SUBCAP, 1),
                         .orientation = axisOf(data)});
}

PolyMesh cone(const BaseContainer& data) {
    return makeCone({.topRadius = data.GetReal(PRIM_CONE_TOP_RAD),
                     .bottomRadius = data.GetReal(PRIM_CONE_BOTTOM_RAD),
                     .height = data.GetReal(PRIM_CONE_HEIGHT),
                     .heightSegments = data.GetLong(PRIM_CONE_SUBH, 1),
                     .rotationSegments = data.GetLong(PRIM_CONE_SEG, 36),
                     .caps = data.GetBool(PRIM_CONE_CAPS, true),
                     .capSegments = data.GetLong(PRIM_CONE_SUBCAP, 1),
                     .orientation = axisOf(data)});
}

PolyMesh torus(const BaseContainer& data) {
    return makeTorus({.ringRadius = data.GetReal(PRIM_TORUS_RING_RAD),
                      .ringSegments = data.GetLong(PRIM_TORUS_RING_SEG, 36),
                      .pipeRadius = data.GetReal(PRIM_TORUS_PIPE_RAD),
                      .pipeSegments = data.GetLong(PRIM_TORUS_PIPE_SEG, 18),
                      .orientation = axisOf(data)});
}

PolyMesh tube(const BaseContainer& data) {
    return makeTube({.innerRadius = data.GetReal(PRIM_TUBE_INNER_RAD),
                     .outerRadius = data.GetReal(PRIM_TUBE_OUTER_RAD),
                     .height = data.GetReal(PRIM_TUBE_HEIGHT),
                     .heightSegments = data.GetLong(PRIM_TUBE_SUBH, 1),
                     .rotationSegments = data.GetLong(PRIM_TUBE_SEG, 36),
                     .capSegments = data.GetLong(PRIM_TUBE_SUBCAP, 1),
                     .orientation = axisOf(data)});
}

using Maker = PolyMesh (*)(const BaseContainer&);

Maker makerOf(int32_t type) {
    switch (type) {
    case Ocube:
        return cube;
    case Osphere:
        return sphere;
    case Odisc:
        return disc;
    case Oplane:
        return plane;
    case Ocylinder:
        return cylinder;
    case Ocone:
        return cone;
    case Otorus:
        return torus;
    case Otube:
        return tube;
    default:
        return nullptr;
    }
}

} // namespace

bool isPrimitive(int32_t type) {
    return makerOf(type) != nullptr;
}

std::optional<PolyMesh> makePrimitive(const Object& object) {
    const Maker maker = makerOf(object.type());
    return maker ? std::optional(maker(object.data)) : std::nullopt;
}

std::unique_ptr<PolygonNode> toPolygons(PolyMesh&& mesh) {
    auto polygons = createPolygons(0, 0);
    polygons->points = std::move(mesh.points);
    polygons->polygons = std::move(mesh.polygons);
    if (!mesh.uvw.empty()) {
        auto uvw = std::make_unique<UVWTagNode>();
        uvw->records = std::move(mesh.uvw);
        polygons->appendTag(std::move(uvw));
    }
    return polygons;
}

} // namespace headless
