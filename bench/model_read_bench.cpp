// SPDX-License-Identifier: MIT
// Reading of model files with four million quads: OBJ beside tinyobjloader, binary PLY beside Assimp, and the
// mesh file beside one fread of its bytes. OBJ also in two sizes, for a time that grows with more than the
// file.

#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "reading/model_loader.h"

#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <tiny_obj_loader.h>

namespace {

using namespace Quenza;

constexpr u32 SIDE = 2000;
constexpr u64 NUM_QUADS = u64(SIDE) * SIDE;

/// A wavy square of `side` quads along each edge, with UVs and smooth normals.
Mesh makeGrid(u32 side) {
    Mesh mesh;
    mesh.addMaterialUsed("default");
    mesh.setMaxNumTexcoordSets(1);
    const f32 step = 1.0f / f32(side);
    for (u32 y = 0; y <= side; ++y)
        for (u32 x = 0; x <= side; ++x) {
            const f32 u = f32(x) * step;
            const f32 v = f32(y) * step;
            mesh.addVertex({u * 10, std::sin(u * 40) * std::cos(v * 30), v * 10},
                           {-std::cos(u * 40), 1, std::sin(v * 30)});
            mesh.uv_pairs.push_back({u, v});
        }
    for (u32 y = 0; y < side; ++y)
        for (u32 x = 0; x < side; ++x) {
            const u32 a = y * (side + 1) + x;
            const u32 v[4] = {a, a + side + 1, a + side + 2, a + 1};
            mesh.addQuad(v, v, 0);
        }
    return mesh;
}

/// A file in parts of a few megabytes.
class Output {
public:
    explicit Output(const String& path) : file_(PlatformUtils::openFile(path, "wb")) {}
    ~Output() {
        flush();
        std::fclose(file_);
    }
    void text(const std::string& text) { bytes(text.data(), text.size()); }
    void bytes(const void* data, u64 size) {
        buffer_.append(static_cast<const char*>(data), size);
        if (buffer_.size() > u64(1) << 22)
            flush();
    }

private:
    void flush() {
        if (std::fwrite(buffer_.data(), 1, buffer_.size(), file_) != buffer_.size())
            throw std::runtime_error("the benchmark's files can't be written");
        buffer_.clear();
    }

    std::FILE* file_;
    std::string buffer_;
};

void writeObj(const String& path, const Mesh& mesh) {
    Output out(path);
    char line[200];
    const auto print = [&](const char* format, auto... values) {
        out.bytes(line, u64(std::snprintf(line, sizeof line, format, values...)));
    };
    for (const Vec3f& v : mesh.vert_positions)
        print("v %.6f %.6f %.6f\n", double(v.x), double(v.y), double(v.z));
    for (const Vec2f& t : mesh.uv_pairs)
        print("vt %.6f %.6f\n", double(t.x), double(t.y));
    for (const Vec3f& n : mesh.vert_normals)
        print("vn %.4f %.4f %.4f\n", double(n.x), double(n.y), double(n.z));
    for (const MeshQuad& quad : mesh.quads) {
        out.text("f");
        for (const u32 v : quad.vertex_indices)
            print(" %u/%u/%u", v + 1, v + 1, v + 1);
        out.text("\n");
    }
}

void writePly(const String& path, const Mesh& mesh) {
    Output out(path);
    out.text("ply\nformat binary_little_endian 1.0\nelement vertex " + toString(mesh.vert_positions.size()) +
             "\nproperty float x\nproperty float y\nproperty float z\nelement face " +
             toString(mesh.quads.size()) + "\nproperty list uchar uint vertex_indices\nend_header\n");
    for (const Vec3f& v : mesh.vert_positions)
        out.bytes(&v, sizeof v);
    for (const MeshQuad& quad : mesh.quads) {
        const char corners = 4;
        out.bytes(&corners, 1);
        out.bytes(quad.vertex_indices, sizeof quad.vertex_indices);
    }
}

/// The files, made when they are first asked for and gone at the end.
class Files {
public:
    Files() : folder_(std::filesystem::temp_directory_path() / "model_read_bench") {
        std::filesystem::create_directories(folder_);
    }
    ~Files() {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    String get(const std::string& name, void (*write)(const String&, const Mesh&), u32 side = SIDE) {
        const std::filesystem::path path = folder_ / name;
        if (!std::filesystem::exists(path))
            write(path.string(), makeGrid(side));
        return path.string();
    }

private:
    std::filesystem::path folder_;
};

Files& files() {
    static Files files;
    return files;
}

void load(benchmark::State& state, const String& path, u64 num_quads) {
    const ModelLoader loader;
    for (auto _ : state) {
        Mesh mesh;
        loader.streamModel(path, mesh, 1);
        if (mesh.quads.size() != num_quads || mesh.vert_positions.empty())
            state.SkipWithError("wrong number of faces");
    }
    state.SetBytesProcessed(state.iterations() * i64(std::filesystem::file_size(path.toStdString())));
}

void objByTinyObjLoader(benchmark::State& state) {
    const std::string path = files().get("grid.obj", writeObj).toStdString();
    for (auto _ : state) {
        tinyobj::attrib_t attributes;
        std::vector<tinyobj::shape_t> shapes;
        std::vector<tinyobj::material_t> materials;
        std::string warnings;
        std::string errors;
        if (!tinyobj::LoadObj(&attributes, &shapes, &materials, &warnings, &errors, path.c_str(), nullptr,
                              false) ||
            shapes[0].mesh.num_face_vertices.size() != NUM_QUADS)
            state.SkipWithError("wrong number of faces");
    }
    state.SetBytesProcessed(state.iterations() * i64(std::filesystem::file_size(path)));
}

void objByModelLoader(benchmark::State& state) {
    load(state, files().get("grid.obj", writeObj), NUM_QUADS);
}

void objOfSide(benchmark::State& state) {
    const auto side = u32(state.range(0));
    load(state, files().get("grid" + toString(side) + ".obj", writeObj, side), u64(side) * side);
}

void plyByAssimp(benchmark::State& state) {
    const std::string path = files().get("grid.ply", writePly).toStdString();
    for (auto _ : state) {
        Assimp::Importer importer;
        const aiScene* const scene = importer.ReadFile(path, 0);
        if (!scene || scene->mMeshes[0]->mNumFaces != NUM_QUADS)
            state.SkipWithError("wrong number of faces");
    }
    state.SetBytesProcessed(state.iterations() * i64(std::filesystem::file_size(path)));
}

void plyByModelLoader(benchmark::State& state) {
    load(state, files().get("grid.ply", writePly), NUM_QUADS);
}

void meshFileByFread(benchmark::State& state) {
    const String path = files().get("grid.qzmesh", Mesh::writeToFile);
    const u64 size = std::filesystem::file_size(path.toStdString());
    for (auto _ : state) {
        Vector<char> bytes(size);
        std::FILE* const file = PlatformUtils::openFile(path, "rb");
        if (std::fread(bytes.data(), 1, size, file) != size)
            state.SkipWithError("short read");
        std::fclose(file);
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(state.iterations() * i64(size));
}

/// With the check of every index, and the bounds.
void meshFileByModelLoader(benchmark::State& state) {
    load(state, files().get("grid.qzmesh", Mesh::writeToFile), NUM_QUADS);
}

/// Several threads work for some of them, which the caller's processor time wouldn't show.
void setUp(benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
}

BENCHMARK(objByTinyObjLoader)->Apply(setUp);
BENCHMARK(objByModelLoader)->Apply(setUp);
BENCHMARK(objOfSide)->Arg(500)->Arg(707)->Arg(1000)->Apply(setUp);
BENCHMARK(plyByAssimp)->Apply(setUp);
BENCHMARK(plyByModelLoader)->Apply(setUp);
BENCHMARK(meshFileByFread)->Apply(setUp);
BENCHMARK(meshFileByModelLoader)->Apply(setUp);

} // namespace
