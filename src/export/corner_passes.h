// SPDX-License-Identifier: MIT
#pragma once

#include "export/exact_merge.h"
#include "export/mesh_corners.h"
#include "foundation/vector.h"

#include <array>

// The two ways in which the corners of all polygons become records and face indices. `Corners` is one of the
// kinds of mesh_corners.h. Faces leave reversed, (c, b, a) and (d, c, b, a), since the scene's space mirrors
// the host's. The face arrays have their size already; a pass writes its own fields only.

/// What merging needs besides the mesh; kept from mesh to mesh, so that its memory is there already.
struct MergeScratch {
    /// What became of the last corner at a point.
    struct Hint {
        uint32_t hash;
        uint32_t index; ///< noIndex until a corner was seen.
    };
    static constexpr uint32_t noIndex = 0xFFFFFFFF;

    MergeTable table;
    Quenza::Vector<Hint> hints;
};

inline uint32_t polygonPoint(const CPolygon& polygon, uint32_t corner) {
    return static_cast<uint32_t>((&polygon.a)[corner]);
}

/// Hands out the faces of a mesh in order.
template <class Corners>
class FaceWriter {
public:
    explicit FaceWriter(Quenza::Mesh& mesh) : triangle_(mesh.triangles.data()), quad_(mesh.quads.data()) {}

    /// `indices` in the host's order of corners; a triangle has three.
    void write(const uint32_t* indices, bool isTriangle, uint32_t slot) {
        if (isTriangle) {
            uint32_t* const out = Corners::indices(*triangle_);
            out[0] = indices[2];
            out[1] = indices[1];
            out[2] = indices[0];
            if constexpr (Corners::writesSlot) {
                triangle_->tri_mat_index = slot;
            }
            ++triangle_;
        } else {
            uint32_t* const out = Corners::indices(*quad_);
            out[0] = indices[3];
            out[1] = indices[2];
            out[2] = indices[1];
            out[3] = indices[0];
            if constexpr (Corners::writesSlot) {
                quad_->mat_index = slot;
            }
            ++quad_;
        }
    }

private:
    Quenza::MeshTriangle* triangle_;
    Quenza::MeshQuad* quad_;
};

/// Every corner becomes a record of its own. `cornerCount` is the number of corners of all runs.
template <class Corners>
void appendCorners(const MeshArrays& arrays, const PolygonRuns& runs, uint64_t cornerCount, Corners corners,
                   Quenza::Mesh& mesh) {
    corners.resize(cornerCount);
    FaceWriter<Corners> faces(mesh);
    uint32_t next = 0;
    for (const PolygonRun& run : runs) {
        for (int32_t i = run.from; i < run.to; ++i) {
            const CPolygon& polygon = arrays.polygons[i];
            const bool isTriangle = polygon.IsTriangle();
            const uint32_t indices[4] = {next, next + 1, next + 2, next + 3};
            const uint32_t count = isTriangle ? 3 : 4;
            for (uint32_t c = 0; c < count; ++c) {
                corners.write(next + c, corners.read(i, c, polygonPoint(polygon, c)));
            }
            next += count;
            faces.write(indices, isTriangle, run.slot);
        }
    }
}

/// Equal corners become one record, numbered by first appearance.
///
/// Corners go through in batches, so that what a batch needs of the table and the arrays is on its way from
/// memory before it's looked at. A corner is first compared with the last one at the same point, which in a
/// smooth mesh is the same record; only the others go to the table.
template <class Corners>
class MergePass {
public:
    MergePass(const MeshArrays& arrays, const PolygonRuns& runs, uint64_t cornerCount, Corners corners,
              MergeScratch& scratch, Quenza::Mesh& mesh)
        : arrays_(arrays), runs_(runs), corners_(corners), table_(scratch.table), faces_(mesh),
          capacity_(static_cast<uint64_t>(arrays.pointCount), cornerCount) {
        scratch.hints.resize(static_cast<uint64_t>(arrays.pointCount));
        hints_ = scratch.hints.data();
        std::memset(static_cast<void*>(hints_), 0xFF, scratch.hints.size() * sizeof(MergeScratch::Hint));
        table_.reset(capacity_.get());
        corners_.resize(capacity_.get());
    }

    void run() {
        Batch* current = &batches_[0];
        Batch* following = &batches_[1];
        fill(*current);
        while (current->polygonCount > 0) {
            fill(*following);
            read(*current);
            merge(*current);
            std::swap(current, following);
        }
        corners_.resize(size_);
    }

private:
    static constexpr uint32_t batchPolygons = 32;
    struct Batch {
        uint32_t polygonCount = 0;
        uint32_t cornerCount = 0;
        std::array<int32_t, batchPolygons> polygons;
        std::array<uint32_t, batchPolygons> slots;
        std::array<uint32_t, batchPolygons * 4> points;
        std::array<uint32_t, batchPolygons * 4> hashes;
        std::array<typename Corners::Record, batchPolygons * 4> records;
    };

    /// Takes the next polygons of the runs.
    void fill(Batch& batch) {
        batch.polygonCount = 0;
        batch.cornerCount = 0;
        while (batch.polygonCount < batchPolygons && runAt_ < runs_.size()) {
            const PolygonRun& run = runs_[runAt_];
            if (run.from + polygonAt_ >= run.to) {
                ++runAt_;
                polygonAt_ = 0;
                continue;
            }
            const int32_t i = run.from + polygonAt_++;
            batch.polygons[batch.polygonCount] = i;
            batch.slots[batch.polygonCount++] = run.slot;
            const CPolygon& polygon = arrays_.polygons[i];
            const uint32_t count = polygon.IsTriangle() ? 3 : 4;
            for (uint32_t c = 0; c < count; ++c) {
                const uint32_t point = polygonPoint(polygon, c);
                batch.points[batch.cornerCount++] = point;
                corners_.prefetch(point);
                __builtin_prefetch(hints_ + point);
            }
        }
    }

    void read(Batch& batch) {
        uint32_t at = 0;
        for (uint32_t p = 0; p < batch.polygonCount; ++p) {
            const int32_t i = batch.polygons[p];
            const uint32_t count = arrays_.polygons[i].IsTriangle() ? 3 : 4;
            for (uint32_t c = 0; c < count; ++c, ++at) {
                batch.records[at] = corners_.read(i, c, batch.points[at]);
                const auto hash = static_cast<uint32_t>(Corners::hash(batch.records[at]));
                batch.hashes[at] = hash;
                const MergeScratch::Hint hint = hints_[batch.points[at]];
                if (hint.hash == hash && hint.index != MergeScratch::noIndex) {
                    corners_.prefetchWritten(hint.index);
                } else {
                    table_.prefetch(hash);
                }
            }
        }
    }

    void merge(const Batch& batch) {
        uint32_t at = 0;
        for (uint32_t p = 0; p < batch.polygonCount; ++p) {
            const bool isTriangle = arrays_.polygons[batch.polygons[p]].IsTriangle();
            const uint32_t count = isTriangle ? 3 : 4;
            uint32_t indices[4];
            for (uint32_t c = 0; c < count; ++c, ++at) {
                indices[c] = indexOf(batch.records[at], batch.hashes[at], hints_[batch.points[at]]);
            }
            faces_.write(indices, isTriangle, batch.slots[p]);
        }
    }

    uint32_t indexOf(const typename Corners::Record& record, uint32_t hash, MergeScratch::Hint& hint) {
        if (hint.hash == hash && hint.index != MergeScratch::noIndex &&
            corners_.equalsAtPoint(hint.index, record)) {
            return hint.index;
        }
        const uint32_t index = table_.findOrAppend(
            hash, [&](uint32_t known) { return corners_.equals(known, record); },
            [&] { return append(record); });
        hint = {hash, index};
        return index;
    }

    uint32_t append(const typename Corners::Record& record) {
        if (capacity_.isFull(size_)) {
            capacity_.raise();
            corners_.resize(capacity_.get());
        }
        corners_.write(size_, record);
        return static_cast<uint32_t>(size_++);
    }

    const MeshArrays& arrays_;
    const PolygonRuns& runs_;
    Corners corners_;
    MergeTable& table_;
    MergeScratch::Hint* hints_ = nullptr;
    FaceWriter<Corners> faces_;
    CornerCapacity capacity_;
    uint64_t size_ = 0;
    size_t runAt_ = 0;
    int32_t polygonAt_ = 0;
    std::array<Batch, 2> batches_;
};

template <class Corners>
void mergeCorners(const MeshArrays& arrays, const PolygonRuns& runs, uint64_t cornerCount, Corners corners,
                  MergeScratch& scratch, Quenza::Mesh& mesh) {
    MergePass<Corners>(arrays, runs, cornerCount, corners, scratch, mesh).run();
}
