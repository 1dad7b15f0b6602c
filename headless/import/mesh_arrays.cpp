// SPDX-License-Identifier: MIT
#include "headless/import/mesh_arrays.h"

#include "headless/geometry/mesh_operations.h"
#include "headless/geometry/triangulate.h"

namespace headless {

namespace {

using Corner = MeshArrays::Corner;

/// Gathers the points that polygons use, and the polygons with the corners in the host's order.
class Collector {
public:
    Collector(MeshArrays& arrays, const ModelSpace& space) : arrays_(arrays), space_(space) {}

    void add(const aiMesh& mesh, uint32_t meshIndex) {
        arrays_.firstPolygon.push_back(arrays_.polygons.size());
        pointOfVertex_.assign(mesh.mNumVertices, -1);
        for (unsigned i = 0; i < mesh.mNumFaces; ++i) {
            if (mesh.mFaces[i].mNumIndices >= 3) {
                addFace(mesh, mesh.mFaces[i], meshIndex);
            }
        }
    }

private:
    void addFace(const aiMesh& mesh, const aiFace& face, uint32_t meshIndex) {
        // Mirroring turned the face round: its first corner stays, the others follow backwards.
        face_.clear();
        vertices_.clear();
        for (unsigned i = 0; i < face.mNumIndices; ++i) {
            const unsigned vertex = face.mIndices[i == 0 ? 0 : face.mNumIndices - i];
            vertices_.push_back({meshIndex, vertex});
            face_.push_back(pointOf(mesh, vertex));
        }
        if (face_.size() == 3) {
            addPolygon({0, 1, 2, 2});
        } else if (face_.size() == 4) {
            addPolygon({0, 1, 2, 3});
        } else {
            for (const auto& [a, b, c] : geometry::triangulatePlaces(face_, arrays_.points)) {
                addPolygon({a, b, c, c});
            }
        }
    }

    /// By places in the face.
    void addPolygon(const std::array<int32_t, 4>& places) {
        std::array<Corner, 4> corners;
        int32_t indices[4];
        for (size_t i = 0; i < 4; ++i) {
            corners[i] = vertices_[static_cast<size_t>(places[i])];
            indices[i] = face_[static_cast<size_t>(places[i])];
        }
        arrays_.polygons.emplace_back(indices[0], indices[1], indices[2], indices[3]);
        arrays_.corners.push_back(corners);
    }

    int32_t pointOf(const aiMesh& mesh, unsigned vertex) {
        int32_t& point = pointOfVertex_[vertex];
        if (point < 0) {
            point = static_cast<int32_t>(arrays_.points.size());
            arrays_.points.push_back(space_.point(mesh.mVertices[vertex]));
        }
        return point;
    }

    MeshArrays& arrays_;
    const ModelSpace& space_;
    std::vector<int32_t> pointOfVertex_;
    std::vector<int32_t> face_;
    std::vector<Corner> vertices_;
};

/// Brings points at one place together. Polygons stay, also those that lose a corner by it.
void weld(MeshArrays& arrays) {
    geometry::PolyMesh points;
    points.points = std::move(arrays.points);
    const std::vector<int32_t> pointMap = geometry::weldPoints(points, 0.0f).pointMap;
    arrays.points = std::move(points.points);
    for (CPolygon& polygon : arrays.polygons) {
        for (int32_t CPolygon::*const corner : {&CPolygon::a, &CPolygon::b, &CPolygon::c, &CPolygon::d}) {
            polygon.*corner = pointMap[static_cast<size_t>(polygon.*corner)];
        }
    }
}

} // namespace

MeshArrays collectPolygons(std::span<const aiMesh* const> meshes, const ModelSpace& space) {
    MeshArrays arrays;
    Collector collector(arrays, space);
    for (uint32_t i = 0; i < meshes.size(); ++i) {
        collector.add(*meshes[i], i);
    }
    arrays.firstPolygon.push_back(arrays.polygons.size());
    weld(arrays);
    return arrays;
}

} // namespace headless
