// SPDX-License-Identifier: MIT
#pragma once

#include "export/exact_merge.h"
#include "export/face_writer.h"
#include "export/mesh_arrays.h"
#include "foundation/vector.h"

#include <algorithm>
#include <array>
#include <utility>

/// What merging corners of one kind needs besides the mesh; kept from mesh to mesh, so that its memory is
/// there.
template <class Corners>
struct MergeScratch {
    /// The last corner that was seen at a point.
    struct Seen {
        uint32_t number; ///< Index of its record plus one; 0 before the first.
        [[no_unique_address]] typename Corners::Detail detail;
    };

    void release() {
        table.release();
        seen = {};
    }

    MergeTable table;
    Quenza::Vector<Seen> seen; ///< By point.
};

/// Equal corners become one record; records are numbered by first appearance.
///
/// A corner is first compared with the last one at the same point, which in a smooth mesh is equal; only the
/// others go to the table. Corners go through in batches, each step over the whole batch, so that what the
/// next step needs is on its way from memory by then.
template <class Corners>
class CornerMerge {
public:
    /// `cornerCount` is the number of corners of all runs.
    CornerMerge(const MeshArrays& arrays, const PolygonRuns& runs, uint64_t cornerCount, Corners corners,
                MergeScratch<Corners>& scratch, Quenza::Mesh& mesh)
        : arrays_(arrays), runs_(runs), cornerCount_(cornerCount), corners_(corners), table_(scratch.table),
          faces_(mesh) {
        const auto pointCount = static_cast<uint64_t>(arrays.pointCount);
        scratch.seen.resize(pointCount);
        seen_ = scratch.seen.data();
        std::fill_n(seen_, pointCount, Seen{});
        // Most meshes need little more than one record a point.
        setCapacity(std::min(cornerCount, pointCount + pointCount / 4));
        table_.reset(capacity_);
    }

    void run() {
        Batch* current = &batches_[0];
        Batch* coming = &batches_[1];
        take(*current);
        while (current->polygonCount > 0) {
            take(*coming);
            readDetails(*current);
            hashUnseen(*current);
            number(*current);
            cornersDone_ += current->cornerCount;
            std::swap(current, coming);
        }
        corners_.resize(size_);
    }

private:
    using Seen = typename MergeScratch<Corners>::Seen;
    using Detail = typename Corners::Detail;

    static constexpr uint32_t batchPolygons = 32;
    struct Batch {
        uint32_t polygonCount = 0;
        uint32_t cornerCount = 0;
        uint32_t unseenCount = 0;
        std::array<int32_t, batchPolygons> polygons;
        std::array<uint32_t, batchPolygons> slots;
        std::array<uint32_t, batchPolygons * 4> points;
        std::array<Detail, batchPolygons * 4> details;
        std::array<uint32_t, batchPolygons * 4> hashes; ///< Set for unseen corners only.
        std::array<uint32_t, batchPolygons * 4> unseen; ///< Corners that differ from the last at their point.
    };

    void take(Batch& batch) {
        batch.polygonCount = 0;
        batch.cornerCount = 0;
        while (batch.polygonCount < batchPolygons && runAt_ < runs_.size()) {
            const PolygonRun& run = runs_[runAt_];
            if (polygonAt_ >= run.to - run.from) {
                ++runAt_;
                polygonAt_ = 0;
                continue;
            }
            const int32_t i = run.from + polygonAt_++;
            batch.polygons[batch.polygonCount] = i;
            batch.slots[batch.polygonCount++] = run.slot;
            const uint32_t count = cornerCountOf(arrays_.polygons[i]);
            for (uint32_t c = 0; c < count; ++c) {
                const uint32_t point = cornerPoint(arrays_.polygons[i], c);
                batch.points[batch.cornerCount++] = point;
                __builtin_prefetch(seen_ + point);
            }
        }
    }

    void readDetails(Batch& batch) {
        batch.unseenCount = 0;
        uint32_t at = 0;
        for (uint32_t p = 0; p < batch.polygonCount; ++p) {
            const int32_t i = batch.polygons[p];
            const uint32_t count = cornerCountOf(arrays_.polygons[i]);
            for (uint32_t c = 0; c < count; ++c, ++at) {
                batch.details[at] = corners_.readDetail(i, c);
                if (!isSeen(batch, at)) {
                    corners_.prefetchPlace(batch.points[at]);
                    batch.unseen[batch.unseenCount++] = at;
                }
            }
        }
    }

    void hashUnseen(Batch& batch) {
        for (uint32_t u = 0; u < batch.unseenCount; ++u) {
            const uint32_t at = batch.unseen[u];
            batch.hashes[at] = static_cast<uint32_t>(corners_.hash(batch.points[at], batch.details[at]));
            table_.prefetch(batch.hashes[at]);
        }
    }

    /// Gives each corner its index, in order.
    void number(const Batch& batch) {
        uint32_t at = 0;
        uint32_t nextUnseen = 0;
        for (uint32_t p = 0; p < batch.polygonCount; ++p) {
            const CPolygon& polygon = arrays_.polygons[batch.polygons[p]];
            const uint32_t count = cornerCountOf(polygon);
            uint32_t indices[4];
            for (uint32_t c = 0; c < count; ++c, ++at) {
                const bool wasUnseen = nextUnseen < batch.unseenCount && batch.unseen[nextUnseen] == at;
                nextUnseen += wasUnseen;
                indices[c] = wasUnseen ? indexOfUnseen(batch, at) : indexOfSeen(batch, at);
            }
            faces_.write(indices, polygon.IsTriangle(), batch.slots[p]);
        }
    }

    bool isSeen(const Batch& batch, uint32_t at) const {
        const Seen& seen = seen_[batch.points[at]];
        return seen.number != 0 && Corners::sameDetail(seen.detail, batch.details[at]);
    }

    /// Corners of the same batch may have changed what was seen at the point.
    uint32_t indexOfSeen(const Batch& batch, uint32_t at) {
        if (isSeen(batch, at)) {
            return seen_[batch.points[at]].number - 1;
        }
        return lookUp(batch, at, static_cast<uint32_t>(corners_.hash(batch.points[at], batch.details[at])));
    }
    uint32_t indexOfUnseen(const Batch& batch, uint32_t at) {
        return isSeen(batch, at) ? seen_[batch.points[at]].number - 1 : lookUp(batch, at, batch.hashes[at]);
    }

    uint32_t lookUp(const Batch& batch, uint32_t at, uint32_t hash) {
        const uint32_t point = batch.points[at];
        const Detail& detail = batch.details[at];
        if (size_ == capacity_ && capacity_ < cornerCount_) {
            makeRoom();
        }
        const uint32_t index = table_.findOrAppend(
            hash, [&](uint32_t known) { return corners_.equals(known, point, detail); },
            [&] { return append(point, detail); });
        seen_[point] = {index + 1, detail};
        return index;
    }

    uint32_t append(uint32_t point, const Detail& detail) {
        corners_.write(size_, point, detail);
        return static_cast<uint32_t>(size_++);
    }

    /// There are more records than expected: by now it shows how many they will be.
    void makeRoom() {
        const double share = double(size_) / double(std::max(cornersDone_, size_));
        table_.reserve(static_cast<uint64_t>(share * double(cornerCount_)));
        setCapacity(cornerCount_);
    }

    /// Memory that nothing is written to stays with the system, so a capacity that is too large costs little.
    void setCapacity(uint64_t capacity) {
        corners_.resize(capacity);
        capacity_ = capacity;
    }

    const MeshArrays& arrays_;
    const PolygonRuns& runs_;
    uint64_t cornerCount_;
    Corners corners_;
    MergeTable& table_;
    Seen* seen_ = nullptr;
    FaceWriter<Corners> faces_;
    uint64_t capacity_ = 0;
    uint64_t size_ = 0;
    uint64_t cornersDone_ = 0;
    size_t runAt_ = 0;
    int32_t polygonAt_ = 0;
    std::array<Batch, 2> batches_;
};
