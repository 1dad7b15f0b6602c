// SPDX-License-Identifier: MIT
// Conversion of 4-million-quad grids: unmerged beside a copy of the arrays that it makes, merged beside
// libmeshoptimizer merging the same corner records (position and normal, no UVs); and of a small grid beside
// ordered maps.

#include "bench/mesh_grid.h"
#include "export/array_conversion.h"

#include <array>
#include <benchmark/benchmark.h>
#include <map>
#include <meshoptimizer.h>

namespace {

/// Some 4 million quads. A multiple of 3, since libmeshoptimizer takes its indices by threes.
constexpr int32_t gridSide = 2001;
constexpr int32_t smallGridSide = 300;

/// Runs `work(buffers)` for each iteration: warm with the buffers of the run before, else with new ones.
template <class Buffers, class Work>
void measure(benchmark::State& state, bool warm, Work work) {
    Buffers kept;
    if (warm) {
        work(kept);
    }
    for (auto _ : state) {
        if (warm) {
            work(kept);
        } else {
            Buffers cold;
            work(cold);
        }
    }
}

const Grid& grid(int64_t kind) {
    static Grid grids[3] = {{Grid::SMOOTH, gridSide}, {Grid::SHUFFLED, gridSide}, {Grid::FLAT, gridSide}};
    return grids[kind];
}

void countCorners(benchmark::State& state, const Grid& mesh) {
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(mesh.polygons.size()) * 4);
}

struct Conversion {
    ArrayConverter converter;
    Quenza::Mesh mesh;
};

void convertGrid(benchmark::State& state, bool merge, bool warm) {
    const Grid& source = grid(state.range(0));
    measure<Conversion>(state, warm, [&](Conversion& buffers) {
        buffers.converter.convert(source.arrays(), source.runs, 0.01f, merge, buffers.mesh);
        benchmark::DoNotOptimize(buffers.mesh.quads.data());
    });
    countCorners(state, source);
}

void unmergedWarm(benchmark::State& state) {
    convertGrid(state, false, true);
}
void unmergedCold(benchmark::State& state) {
    convertGrid(state, false, false);
}
void mergedWarm(benchmark::State& state) {
    convertGrid(state, true, true);
}
void mergedCold(benchmark::State& state) {
    convertGrid(state, true, false);
}

/// Copies as many bytes as the unmerged arrays have.
void copyOfUnmerged(benchmark::State& state, bool warm) {
    const Grid& source = grid(state.range(0));
    Quenza::Mesh mesh;
    ArrayConverter().convert(source.arrays(), source.runs, 0.01f, false, mesh);
    measure<Quenza::Mesh>(state, warm, [&mesh](Quenza::Mesh& out) {
        out.vert_positions = mesh.vert_positions;
        out.vert_normals = mesh.vert_normals;
        out.uv_pairs = mesh.uv_pairs;
        out.quads = mesh.quads;
        benchmark::DoNotOptimize(out.quads.data());
    });
    countCorners(state, source);
}
void copyWarm(benchmark::State& state) {
    copyOfUnmerged(state, true);
}
void copyCold(benchmark::State& state) {
    copyOfUnmerged(state, false);
}

struct CornerRecord {
    Vector position;
    Vector normal;
};

std::vector<CornerRecord> cornerRecords(const Grid& source) {
    std::vector<CornerRecord> records;
    records.reserve(source.polygons.size() * 4);
    for (size_t i = 0; i < source.polygons.size(); ++i) {
        const int32_t* const corners = &source.polygons[i].a;
        for (size_t c = 0; c < 4; ++c) {
            records.push_back({source.points[size_t(corners[c])], source.normals[i * 4 + c]});
        }
    }
    return records;
}

/// What libmeshoptimizer's merging needs; its own table is allocated by every call.
struct MeshoptBuffers {
    std::vector<unsigned> remap;
    std::vector<unsigned> indices;
    std::vector<CornerRecord> vertices;
};

void mergeWithMeshopt(const std::vector<CornerRecord>& records, MeshoptBuffers& buffers) {
    const size_t count = records.size();
    buffers.remap.resize(count);
    const size_t unique = meshopt_generateVertexRemap(buffers.remap.data(), nullptr, count, records.data(),
                                                      count, sizeof(CornerRecord));
    buffers.vertices.resize(unique);
    meshopt_remapVertexBuffer(buffers.vertices.data(), records.data(), count, sizeof(CornerRecord),
                              buffers.remap.data());
    buffers.indices.resize(count);
    meshopt_remapIndexBuffer(buffers.indices.data(), nullptr, count, buffers.remap.data());
    benchmark::DoNotOptimize(buffers.indices.data());
}

void meshoptimizer(benchmark::State& state, bool warm) {
    const Grid& source = grid(state.range(0));
    const std::vector<CornerRecord> records = cornerRecords(source);
    measure<MeshoptBuffers>(state, warm,
                            [&](MeshoptBuffers& buffers) { mergeWithMeshopt(records, buffers); });
    countCorners(state, source);
}
void meshoptimizerWarm(benchmark::State& state) {
    meshoptimizer(state, true);
}
void meshoptimizerCold(benchmark::State& state) {
    meshoptimizer(state, false);
}

void smallMerged(benchmark::State& state) {
    const Grid source(static_cast<Grid::Kind>(state.range(0)), smallGridSide);
    measure<Conversion>(state, true, [&](Conversion& buffers) {
        buffers.converter.convert(source.arrays(), source.runs, 0.01f, true, buffers.mesh);
        benchmark::DoNotOptimize(buffers.mesh.quads.data());
    });
    countCorners(state, source);
}

/// Positions and normals alone.
void smallOrderedMap(benchmark::State& state) {
    const Grid source(static_cast<Grid::Kind>(state.range(0)), smallGridSide);
    const std::vector<CornerRecord> records = cornerRecords(source);
    for (auto _ : state) {
        std::map<std::array<float, 6>, unsigned> known;
        std::vector<unsigned> indices;
        indices.reserve(records.size());
        for (const CornerRecord& record : records) {
            const Vector& p = record.position;
            const Vector& n = record.normal;
            const auto next = static_cast<unsigned>(known.size());
            indices.push_back(known.emplace(std::array{p.x, p.y, p.z, n.x, n.y, n.z}, next).first->second);
        }
        benchmark::DoNotOptimize(indices.data());
    }
    countCorners(state, source);
}

void kinds(benchmark::internal::Benchmark* bench) {
    bench->ArgName("smooth=0,shuffled=1,flat=2")->Arg(Grid::SMOOTH)->Arg(Grid::SHUFFLED)->Arg(Grid::FLAT);
    bench->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(copyWarm)->Apply(kinds);
BENCHMARK(unmergedWarm)->Apply(kinds);
BENCHMARK(copyCold)->Apply(kinds);
BENCHMARK(unmergedCold)->Apply(kinds);
BENCHMARK(meshoptimizerWarm)->Apply(kinds);
BENCHMARK(mergedWarm)->Apply(kinds);
BENCHMARK(meshoptimizerCold)->Apply(kinds);
BENCHMARK(mergedCold)->Apply(kinds);
BENCHMARK(smallOrderedMap)->Apply(kinds);
BENCHMARK(smallMerged)->Apply(kinds);

} // namespace
