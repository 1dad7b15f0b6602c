// SPDX-License-Identifier: MIT
#include "headless/geometry/mesh_operations.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <span>

namespace headless::geometry {

namespace {

CPolygon shifted(const CPolygon& p, int32_t offset) {
    return {p.a + offset, p.b + offset, p.c + offset, p.d + offset};
}

} // namespace

bool isMirrored(const Matrix& matrix) {
    return Affine(matrix).determinant() < 0.0;
}

void transformMesh(PolyMesh& mesh, const Matrix& matrix) {
    const Affine transform(matrix);
    for (Vector& point : mesh.points) {
        point = transform.point(point).toVector();
    }
    if (isMirrored(matrix)) {
        flipWinding(mesh);
    }
}

void appendMesh(PolyMesh& target, const PolyMesh& source, const Matrix& matrix) {
    const auto offset = static_cast<int32_t>(target.points.size());
    const std::size_t firstPolygon = target.polygons.size();
    const Affine transform(matrix);
    if (!target.uvw.empty() || !source.uvw.empty()) {
        target.uvw.resize(firstPolygon);
        target.uvw.insert(target.uvw.end(), source.uvw.begin(), source.uvw.end());
        target.uvw.resize(firstPolygon + source.polygons.size());
    }
    for (const Vector& point : source.points) {
        target.points.push_back(transform.point(point).toVector());
    }
    for (const CPolygon& polygon : source.polygons) {
        target.polygons.push_back(shifted(polygon, offset));
    }
    if (isMirrored(matrix)) {
        flipWinding(target, firstPolygon);
    }
}

PolyMesh makeSymmetry(const PolyMesh& mesh, const SymmetryParameters& parameters) {
    static constexpr std::array<float Vector::*, 3> normals{&Vector::x, &Vector::y, &Vector::z};
    const auto plane = static_cast<std::size_t>(parameters.plane);
    float Vector::*const across = normals[plane < normals.size() ? plane : 0];

    PolyMesh result = mesh;
    std::vector<int32_t> imageOf(mesh.points.size());
    for (std::size_t i = 0; i < mesh.points.size(); ++i) {
        if (parameters.weld && std::abs(mesh.points[i].*across) <= parameters.tolerance) {
            result.points[i].*across = 0.0f;
            imageOf[i] = static_cast<int32_t>(i);
            continue;
        }
        imageOf[i] = static_cast<int32_t>(result.points.size());
        Vector image = mesh.points[i];
        image.*across = -(image.*across);
        result.points.push_back(image);
    }

    PolyMesh images;
    for (std::size_t i = 0; i < mesh.polygons.size(); ++i) {
        const CPolygon& polygon = mesh.polygons[i];
        const auto at = [&](int32_t index) { return imageOf[static_cast<std::size_t>(index)]; };
        const CPolygon image(at(polygon.a), at(polygon.b), at(polygon.c), at(polygon.d));
        if (image == polygon) {
            continue;
        }
        images.polygons.push_back(image);
        if (!mesh.uvw.empty()) {
            images.uvw.push_back(mesh.uvw[i]);
        }
    }
    flipWinding(images);
    result.polygons.insert(result.polygons.end(), images.polygons.begin(), images.polygons.end());
    result.uvw.insert(result.uvw.end(), images.uvw.begin(), images.uvw.end());
    return result;
}

} // namespace headless::geometry
