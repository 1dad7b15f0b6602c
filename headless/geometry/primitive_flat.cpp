// SPDX-License-Identifier: MIT
#include <algorithm>

#include "headless/geometry/lathe.h"
#include "headless/geometry/primitives.h"

namespace headless::geometry {

namespace {

/// Numbers the points on the surface of a box grid of nx * ny * nz cells without gaps: the lowest layer in
/// full, the layers between as their perimeter, the highest in full.
class BoxGrid {
public:
    BoxGrid(int nx, int ny, int nz) : nx_(nx), ny_(ny), nz_(nz) {}

    int32_t layerSize() const { return (nx_ + 1) * (nz_ + 1); }
    int32_t perimeterSize() const { return 2 * (nx_ + nz_); }
    int32_t pointCount() const { return 2 * layerSize() + (ny_ - 1) * perimeterSize(); }

    int32_t indexOf(int i, int j, int k) const {
        if (j == 0) {
            return k * (nx_ + 1) + i;
        }
        const int32_t firstOfLayer = layerSize() + (j - 1) * perimeterSize();
        return firstOfLayer + (j == ny_ ? k * (nx_ + 1) + i : perimeterIndexOf(i, k));
    }

private:
    int32_t perimeterIndexOf(int i, int k) const {
        if (k == 0) {
            return i;
        }
        if (i == nx_) {
            return nx_ + k;
        }
        if (k == nz_) {
            return nx_ + nz_ + (nx_ - i);
        }
        return 2 * nx_ + nz_ + (nz_ - k);
    }

    int nx_;
    int ny_;
    int nz_;
};

/// Cells of the box along an axis of which one component is 1 or -1.
int cellsAlong(const Vec3& axis, int nx, int ny, int nz) {
    return axis.x != 0.0 ? nx : axis.y != 0.0 ? ny : nz;
}

void addBoxSide(PolyMesh& mesh, const AxisFrame& frame, const Vec3& size, const std::array<int, 3>& cells) {
    const int nx = cells[0], ny = cells[1], nz = cells[2];
    const BoxGrid grid(nx, ny, nz);
    const int columns = cellsAlong(frame.right, nx, ny, nz);
    const int rows = cellsAlong(frame.up, nx, ny, nz);
    // Where a coordinate of [-1, 1] lies in the grid, and the grid in space.
    const auto cellOf = [](double x, int n) { return static_cast<int>(std::lround((x + 1.0) * 0.5 * n)); };
    const auto pointAt = [&](int column, int row) {
        const Vec3 p =
            frame.normal + frame.right * (2.0 * column / columns - 1.0) + frame.up * (1.0 - 2.0 * row / rows);
        const int32_t index = grid.indexOf(cellOf(p.x, nx), cellOf(p.y, ny), cellOf(p.z, nz));
        mesh.points[static_cast<std::size_t>(index)] =
            Vec3(p.x * size.x * 0.5, p.y * size.y * 0.5, p.z * size.z * 0.5).toVector();
        return index;
    };
    const auto texCoordAt = [&](int column, int row) {
        return Vec3(static_cast<double>(column) / columns, static_cast<double>(row) / rows, 0.0).toVector();
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            mesh.polygons.emplace_back(pointAt(column, row), pointAt(column + 1, row),
                                       pointAt(column + 1, row + 1), pointAt(column, row + 1));
            mesh.uvw.push_back({texCoordAt(column, row), texCoordAt(column + 1, row),
                                texCoordAt(column + 1, row + 1), texCoordAt(column, row + 1)});
        }
    }
}

} // namespace

PolyMesh makeCube(const CubeParameters& parameters) {
    const Vec3 size(validLength(parameters.size.x), validLength(parameters.size.y),
                    validLength(parameters.size.z));
    // Along a side of length zero all points fall together.
    const auto cellsOf = [](int segments, double length) {
        return length > 0.0 ? std::clamp(segments, 1, maxCubeSegments) : 1;
    };
    const std::array<int, 3> cells{cellsOf(parameters.segmentsX, size.x),
                                   cellsOf(parameters.segmentsY, size.y),
                                   cellsOf(parameters.segmentsZ, size.z)};
    PolyMesh mesh;
    const std::size_t sideCells = static_cast<std::size_t>(cells[0]) * static_cast<std::size_t>(cells[1]) +
                                  static_cast<std::size_t>(cells[1]) * static_cast<std::size_t>(cells[2]) +
                                  static_cast<std::size_t>(cells[2]) * static_cast<std::size_t>(cells[0]);
    mesh.polygons.reserve(2 * sideCells);
    mesh.uvw.reserve(2 * sideCells);
    for (const AxisFrame& frame : axisFrames) {
        if (std::abs(dot(frame.right, size)) > 0.0 && std::abs(dot(frame.up, size)) > 0.0) {
            mesh.points.resize(static_cast<std::size_t>(BoxGrid(cells[0], cells[1], cells[2]).pointCount()));
            addBoxSide(mesh, frame, size, cells);
        }
    }
    return mesh;
}

PolyMesh makePlane(const PlaneParameters& parameters) {
    const double width = validLength(parameters.width);
    const double height = validLength(parameters.height);
    if (width == 0.0 || height == 0.0) {
        return {};
    }
    const int columns = std::clamp(parameters.widthSegments, 1, maxSegments);
    const int rows = std::clamp(parameters.heightSegments, 1, maxSegments);
    PolyMesh mesh;
    const auto cellCount = static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    mesh.points.reserve(cellCount + static_cast<std::size_t>(columns + rows) + 1);
    mesh.polygons.reserve(cellCount);
    mesh.uvw.reserve(cellCount);
    for (int row = 0; row <= rows; ++row) {
        for (int column = 0; column <= columns; ++column) {
            const double u = static_cast<double>(column) / columns;
            const double v = static_cast<double>(row) / rows;
            mesh.points.push_back(Vec3((u - 0.5) * width, 0.0, (0.5 - v) * height).toVector());
        }
    }
    const auto texCoordAt = [&](int column, int row) {
        return Vec3(static_cast<double>(column) / columns, static_cast<double>(row) / rows, 0.0).toVector();
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int32_t topLeft = row * (columns + 1) + column;
            const int32_t bottomLeft = topLeft + columns + 1;
            mesh.polygons.emplace_back(topLeft, topLeft + 1, bottomLeft + 1, bottomLeft);
            mesh.uvw.push_back({texCoordAt(column, row), texCoordAt(column + 1, row),
                                texCoordAt(column + 1, row + 1), texCoordAt(column, row + 1)});
        }
    }
    orient(mesh, parameters.orientation);
    return mesh;
}

} // namespace headless::geometry
