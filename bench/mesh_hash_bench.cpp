// SPDX-License-Identifier: MIT
// The hash that finds equal meshes, over a million quads with UVs in the stand-in host, beside zlib's crc32
// over as many bytes.

#include "export/mesh_hash.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/tables/host_table.h"

#include <benchmark/benchmark.h>
#include <random>
#include <zlib.h>

namespace {

constexpr size_t polygonCount = 1'000'000;
constexpr size_t byteCount = polygonCount * (sizeof(Vector) + sizeof(CPolygon) + sizeof(UVWStruct));

std::unique_ptr<headless::PolygonNode> makeMesh() {
    SetHostTables(headless::hostTable());
    auto mesh = headless::createPolygons(polygonCount, polygonCount);
    auto uvw = std::make_unique<headless::UVWTagNode>(polygonCount);
    std::mt19937 random(3);
    for (size_t i = 0; i < polygonCount; ++i) {
        mesh->points[i] = Vector(float(random()), float(random()), float(random()));
        mesh->polygons[i].a = int32_t(random() % polygonCount);
        uvw->records[i].a.x = float(random());
    }
    mesh->appendTag(std::move(uvw));
    return mesh;
}

void hashOfMesh(benchmark::State& state) {
    const std::unique_ptr<headless::PolygonNode> mesh = makeMesh();
    const auto* const object = static_cast<const PolygonObject*>(headless::toHost(mesh.get()));
    for (auto _ : state) {
        benchmark::DoNotOptimize(meshHash(object, {}, false, 0.01f));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(byteCount));
}

void zlibCrc32(benchmark::State& state) {
    std::vector<Bytef> bytes(byteCount);
    std::mt19937 random(3);
    for (Bytef& byte : bytes) {
        byte = static_cast<Bytef>(random());
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(byteCount));
}

BENCHMARK(zlibCrc32)->Unit(benchmark::kMillisecond);
BENCHMARK(hashOfMesh)->Unit(benchmark::kMillisecond);

} // namespace
