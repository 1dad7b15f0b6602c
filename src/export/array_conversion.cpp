// SPDX-License-Identifier: MIT
#include "export/array_conversion.h"

#include "export/append_corners.h"

#include <exception>
#include <system_error>
#include <thread>

struct ArrayConverter::Task {
    const MeshArrays& arrays;
    const PolygonRuns& runs;
    uint64_t cornerCount;
    float scale;
    bool merge;
    Quenza::Mesh& mesh;
};

namespace {

/// Below this many corners a thread costs more than it brings.
constexpr uint64_t parallelCorners = 1 << 16;

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

template <class Corners, class Task>
void convertCorners(const Task& task, const Corners& corners, MergeScratch<Corners>& scratch) {
    if (task.merge) {
        CornerMerge<Corners>(task.arrays, task.runs, task.cornerCount, corners, scratch, task.mesh).run();
    } else {
        appendCorners(task.arrays, task.runs, task.cornerCount, corners, task.mesh);
    }
}

} // namespace

void ArrayConverter::convertVertices(const Task& task) {
    if (task.arrays.normals) {
        convertCorners(task, VertexCorners(task.arrays, task.scale, task.mesh), vertexScratch_);
    } else {
        convertCorners(task, PositionCorners(task.arrays, task.scale, task.mesh), positionScratch_);
    }
    trim(task.mesh.vert_positions);
    trim(task.mesh.vert_normals);
}

void ArrayConverter::convertUvs(const Task& task) {
    convertCorners(task, UvCorners(task.arrays, task.mesh), uvScratch_);
    trim(task.mesh.uv_pairs);
}

void ArrayConverter::releaseMemory() {
    positionScratch_.release();
    vertexScratch_.release();
    uvScratch_.release();
}

void ArrayConverter::convert(const MeshArrays& arrays, const PolygonRuns& runs, float scale, bool merge,
                             Quenza::Mesh& mesh) {
    mesh.setMaxNumTexcoordSets(1);
    const Task task{arrays, runs, allocateFaces(arrays, runs, mesh), scale, merge, mesh};

    std::exception_ptr failure;
    std::thread worker;
    if (task.cornerCount >= parallelCorners) {
        try {
            worker = std::thread([&] {
                try {
                    convertUvs(task);
                } catch (...) {
                    failure = std::current_exception();
                }
            });
        } catch (const std::system_error&) {
            // The system has no thread to give: the UVs come after the vertices then.
        }
    }
    struct Joiner {
        std::thread& thread;
        ~Joiner() {
            if (thread.joinable()) {
                thread.join();
            }
        }
    } joiner{worker};

    convertVertices(task);
    if (worker.joinable()) {
        worker.join();
    } else {
        convertUvs(task);
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}
