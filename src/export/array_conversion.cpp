// SPDX-License-Identifier: MIT
#include "export/array_conversion.h"

#include "export/append_corners.h"
#include "foundation/parallel.h"

#include <algorithm>

struct ArrayConverter::Task {
    const MeshArrays& arrays;
    const PolygonRuns& runs;
    uint64_t cornerCount;
    float scale;
    Quenza::Mesh& mesh;
};

namespace {

/// A thread costs more than it brings for fewer polygons.
constexpr size_t parallelPolygons = 1 << 14;

/// Gives the face arrays their size, and returns the number of corners.
uint64_t allocateFaces(const MeshArrays& arrays, const PolygonRuns& runs, Quenza::Mesh& mesh) {
    uint64_t triangles = 0;
    uint64_t polygons = 0;
    for (const PolygonRun& run : runs) {
        polygons += static_cast<uint64_t>(run.to - run.from);
        for (int32_t i = run.from; i < run.to; ++i) {
            triangles += arrays.polygons[i].IsTriangle();
        }
    }
    mesh.triangles.resize(triangles);
    mesh.quads.resize(polygons - triangles);
    return triangles * 3 + (polygons - triangles) * 4;
}

/// Gives back what a growing array has too much. A large block keeps its size: what was never written to
/// takes no memory.
template <class T>
void trim(Quenza::Vector<T>& values) {
    if (values.size() < values.capacity() &&
        values.capacity() * sizeof(T) < Quenza::BlockMemory::LARGE_BLOCK_BYTES) {
        values = Quenza::Vector<T>(values);
    }
}

/// The polygons at the places `begin` to `end` of the runs' order.
PolygonSlice sliceOf(const MeshArrays& arrays, const PolygonRuns& runs, size_t begin, size_t end) {
    PolygonSlice slice;
    size_t place = 0;
    for (const PolygonRun& run : runs) {
        const size_t runEnd = place + static_cast<size_t>(run.to - run.from);
        const auto polygonAt = [&](size_t at) {
            return run.from + static_cast<int32_t>(std::clamp(at, place, runEnd) - place);
        };
        const PolygonRun part{polygonAt(begin), polygonAt(end), run.slot};
        for (int32_t i = run.from; i < part.from; ++i) {
            const bool isTriangle = arrays.polygons[i].IsTriangle();
            slice.firstTriangle += isTriangle;
            slice.firstQuad += !isTriangle;
        }
        if (part.from < part.to) {
            slice.runs.push_back(part);
        }
        place = runEnd;
        if (place >= end) {
            break;
        }
    }
    slice.firstCorner = static_cast<uint32_t>(slice.firstTriangle * 3 + slice.firstQuad * 4);
    return slice;
}

template <class Vertices>
void appendMesh(const MeshArrays& arrays, const PolygonRuns& runs, uint64_t cornerCount, Vertices vertices,
                Quenza::Mesh& mesh) {
    UvCorners uvs(arrays, mesh);
    vertices.resize(cornerCount);
    uvs.resize(cornerCount);
    Quenza::parallelFor(mesh.triangles.size() + mesh.quads.size(), parallelPolygons,
                        [&](size_t begin, size_t end) {
                            const PolygonSlice slice = sliceOf(arrays, runs, begin, end);
                            appendCorners(arrays, slice, vertices, mesh);
                            appendCorners(arrays, slice, uvs, mesh);
                        });
}

template <class Corners, class Task>
void mergeCorners(const Task& task, const Corners& corners, MergeScratch<Corners>& scratch) {
    CornerMerge<Corners>(task.arrays, task.runs, task.cornerCount, corners, scratch, task.mesh).run();
}

} // namespace

void ArrayConverter::mergeVertices(const Task& task) {
    if (task.arrays.normals) {
        mergeCorners(task, VertexCorners(task.arrays, task.scale, task.mesh), vertexScratch_);
    } else {
        mergeCorners(task, PositionCorners(task.arrays, task.scale, task.mesh), positionScratch_);
    }
    trim(task.mesh.vert_positions);
    trim(task.mesh.vert_normals);
}

void ArrayConverter::mergeUvs(const Task& task) {
    mergeCorners(task, UvCorners(task.arrays, task.mesh), uvScratch_);
    trim(task.mesh.uv_pairs);
}

void ArrayConverter::mergeMesh(const Task& task) {
    // Two halves of unequal work, for two threads when the mesh is worth them.
    const size_t grain = task.cornerCount >= parallelPolygons * 4 ? 1 : 2;
    Quenza::parallelFor(2, grain, [&](size_t begin, size_t end) {
        if (begin == 0) {
            mergeVertices(task);
        }
        if (end == 2) {
            mergeUvs(task);
        }
    });
}

void ArrayConverter::appendMesh(const Task& task) {
    if (task.arrays.normals) {
        ::appendMesh(task.arrays, task.runs, task.cornerCount,
                     VertexCorners(task.arrays, task.scale, task.mesh), task.mesh);
    } else {
        ::appendMesh(task.arrays, task.runs, task.cornerCount,
                     PositionCorners(task.arrays, task.scale, task.mesh), task.mesh);
    }
}

void ArrayConverter::releaseMemory() {
    positionScratch_.release();
    vertexScratch_.release();
    uvScratch_.release();
}

void ArrayConverter::convert(const MeshArrays& arrays, const PolygonRuns& runs, float scale, bool merge,
                             Quenza::Mesh& mesh) {
    mesh.setMaxNumTexcoordSets(1);
    const Task task{arrays, runs, allocateFaces(arrays, runs, mesh), scale, mesh};
    if (merge) {
        mergeMesh(task);
    } else {
        appendMesh(task);
    }
}
