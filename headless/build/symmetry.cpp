// SPDX-License-Identifier: MIT
#include "headless/build/built_state.h"
#include "headless/build/generators.h"
#include "headless/build/object_roles.h"
#include "headless/geometry/mesh_operations.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"

#include <cmath>

namespace headless {

namespace {

using geometry::SymmetryParameters;

SymmetryParameters parametersOf(const Object& symmetry) {
    const int32_t plane = symmetry.data.GetLong(SYMMETRY_PLANE);
    SymmetryParameters parameters;
    parameters.plane = plane >= 0 && plane <= 2 ? static_cast<SymmetryParameters::Plane>(plane)
                                                : SymmetryParameters::Plane::YZ;
    parameters.weld = symmetry.data.GetBool(SYMMETRY_WELD, true);
    parameters.tolerance = symmetry.data.GetReal(SYMMETRY_TOLERANCE, 0.01f);
    return parameters;
}

float height(const Vector& point, SymmetryParameters::Plane plane) {
    return plane == SymmetryParameters::Plane::YZ   ? point.x
           : plane == SymmetryParameters::Plane::XZ ? point.y
                                                    : point.z;
}

/// For each polygon of the half the number of its image, -1 for one that lies in the plane and has none.
std::vector<int32_t> imagesOf(const geometry::PolyMesh& half, const SymmetryParameters& parameters,
                              size_t imageCount) {
    std::vector<int32_t> images(half.polygons.size(), -1);
    const auto inPlane = [&](int32_t point) {
        return std::fabs(height(half.points[static_cast<size_t>(point)], parameters.plane)) <
               parameters.tolerance;
    };
    auto next = static_cast<int32_t>(images.size());
    for (size_t i = 0; i < images.size(); ++i) {
        const CPolygon& p = half.polygons[i];
        const bool flat =
            imageCount < images.size() && inPlane(p.a) && inPlane(p.b) && inPlane(p.c) && inPlane(p.d);
        if (!flat) {
            images[i] = next++;
        }
    }
    return images;
}

void addImages(BaseSelect& selection, const std::vector<int32_t>& images) {
    const BaseSelect half = selection;
    int32_t from = 0, to = 0;
    for (int32_t range = 0; half.GetRange(range, &from, &to); ++range) {
        for (int32_t i = from; i <= to && i < static_cast<int32_t>(images.size()); ++i) {
            if (images[static_cast<size_t>(i)] >= 0) {
                selection.Select(images[static_cast<size_t>(i)]);
            }
        }
    }
}

/// The image's corners are (a, d, c, b), a triangle's (a, c, b).
int32_t mirroredEdge(int32_t edge, bool triangle) {
    return triangle && (edge == 1 || edge == 2) ? 1 : 3 - edge;
}

void addImages(BaseSelect& edges, const std::vector<int32_t>& images, const std::vector<CPolygon>& polygons) {
    const BaseSelect half = edges;
    int32_t from = 0, to = 0;
    for (int32_t range = 0; half.GetRange(range, &from, &to); ++range) {
        for (int32_t edge = from; edge <= to && edge / 4 < static_cast<int32_t>(images.size()); ++edge) {
            const auto polygon = static_cast<size_t>(edge / 4);
            if (images[polygon] >= 0) {
                edges.Select(images[polygon] * 4 + mirroredEdge(edge % 4, polygons[polygon].IsTriangle()));
            }
        }
    }
}

std::unique_ptr<PolygonNode> mirror(const BuiltMesh& source, const SymmetryParameters& parameters) {
    // Tags come along with the copy; the arrays are replaced.
    std::unique_ptr<PolygonNode> made = clone(*source.mesh, Owned::parts);
    made->matrix = Matrix();
    if (!made->hasValidIndices()) {
        return made;
    }
    geometry::PolyMesh half;
    half.points = std::move(made->points);
    half.polygons = std::move(made->polygons);
    auto* const uvw = static_cast<UVWTagNode*>(made->tag(Tuvw));
    if (uvw && uvw->records.size() == half.polygons.size()) {
        half.uvw = std::move(uvw->records);
    }
    // A mirroring matrix would turn the polygons, and break their order with the edges.
    for (Vector& point : half.points) {
        point = source.matrix * point;
    }
    if (geometry::isMirrored(source.matrix)) {
        geometry::flipWinding(half);
    }
    geometry::PolyMesh whole = geometry::makeSymmetry(half, parameters);
    const std::vector<int32_t> images =
        imagesOf(half, parameters, whole.polygons.size() - half.polygons.size());
    for (Tag* tag = made->tags().first(); tag; tag = tag->next) {
        if (tag->type() == Tpolygonselection) {
            addImages(static_cast<SelectionTagNode*>(tag)->selection, images);
        }
    }
    addImages(made->brokenEdges, images, half.polygons);
    made->points = std::move(whole.points);
    made->polygons = std::move(whole.polygons);
    if (uvw) {
        uvw->records = std::move(whole.uvw);
        uvw->records.resize(made->polygons.size());
    }
    return made;
}

} // namespace

std::unique_ptr<Object> generateSymmetry(const Object& symmetry, const Object& builtInput) {
    const SymmetryParameters parameters = parametersOf(symmetry);
    std::vector<std::unique_ptr<PolygonNode>> halves;
    forEachMesh(builtInput, &symmetry,
                [&](const BuiltMesh& mesh) { halves.push_back(mirror(mesh, parameters)); });
    if (halves.empty()) {
        return nullptr;
    }
    if (halves.size() == 1) {
        return std::move(halves.front());
    }
    std::unique_ptr<Object> made = createObject(Onull);
    made->name = symmetry.name;
    for (std::unique_ptr<PolygonNode>& half : halves) {
        made->appendChild(std::move(half));
    }
    return made;
}

} // namespace headless
