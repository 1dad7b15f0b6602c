// SPDX-License-Identifier: MIT
#include "engine/subdivision.h"

#include "engine/random.h"
#include "engine/vec.h"

#include <array>
#include <bit>
#include <cmath>
#include <numbers>
#include <unordered_map>
#include <vector>

namespace engine {

namespace {

using namespace Quenza;

/// An edge between two vertices, or two UV entries, whatever its direction.
u64 keyOf(u32 a, u32 b) {
    return a < b ? u64(a) << 32 | b : u64(b) << 32 | a;
}

struct Edge {
    u32 ends[2];
    u32 opposite[2]; ///< Third corners of the first two triangles.
    u32 triangles = 0;
    u32 middle = 0;
};

using Edges = std::unordered_map<u64, Edge>;

Edges edgesOf(const Mesh& mesh) {
    Edges edges;
    edges.reserve(mesh.triangles.size() * 3 / 2 + 3);
    for (const MeshTriangle& triangle : mesh.triangles) {
        for (int i = 0; i < 3; ++i) {
            const u32 a = triangle.vertex_indices[i];
            const u32 b = triangle.vertex_indices[(i + 1) % 3];
            Edge& edge = edges[keyOf(a, b)];
            edge.ends[0] = a;
            edge.ends[1] = b;
            if (edge.triangles < 2) {
                edge.opposite[edge.triangles] = triangle.vertex_indices[(i + 2) % 3];
            }
            ++edge.triangles;
        }
    }
    return edges;
}

Vec positionOf(const Mesh& mesh, u32 vertex) {
    return toVec(mesh.vert_positions[vertex]);
}

Vec3f fromVec(const Vec& v) {
    return {v.x, v.y, v.z};
}

/// Where the old vertices go: Loop's weights, on borders those of a cubic spline. A vertex where several
/// borders meet stays.
std::vector<Vec> roundedVertices(const Mesh& mesh, const Edges& edges) {
    struct Ring {
        Vec all, border;
        u32 count = 0, border_count = 0;
    };
    std::vector<Ring> rings(mesh.vert_positions.size());
    for (const auto& [key, edge] : edges) {
        for (int i = 0; i < 2; ++i) {
            Ring& ring = rings[edge.ends[i]];
            const Vec other = positionOf(mesh, edge.ends[1 - i]);
            ring.all += other;
            ++ring.count;
            if (edge.triangles != 2) {
                ring.border += other;
                ++ring.border_count;
            }
        }
    }
    std::vector<Vec> rounded(rings.size());
    for (size_t i = 0; i < rings.size(); ++i) {
        const Ring& ring = rings[i];
        const Vec here = positionOf(mesh, u32(i));
        rounded[i] = here;
        if (ring.border_count == 2) {
            rounded[i] = here * 0.75f + ring.border * 0.125f;
        } else if (ring.border_count == 0 && ring.count >= 3) {
            const float count = float(ring.count);
            const float wave = 0.375f + 0.25f * std::cos(2.0f * std::numbers::pi_v<float> / count);
            const float share = (0.625f - wave * wave) / count;
            rounded[i] = here * (1.0f - share * count) + ring.all * share;
        }
    }
    return rounded;
}

class Cut {
public:
    Cut(const Mesh& mesh, bool smooth) : old_(mesh), smooth_(smooth), edges_(edgesOf(mesh)) {}

    Ref<Mesh> make() {
        new_ = new Mesh;
        new_->num_uv_mappings = old_.num_uv_mappings;
        new_->used_materials = old_.used_materials;
        new_->uv_pairs = old_.uv_pairs;
        new_->vert_positions = old_.vert_positions;
        if (!smooth_) {
            new_->vert_normals = old_.vert_normals;
        }
        cutEdges();
        new_->triangles.reserve(old_.triangles.size() * 4);
        for (const MeshTriangle& triangle : old_.triangles) {
            cutTriangle(triangle);
        }
        return new_;
    }

private:
    void cutEdges() {
        for (auto& [key, edge] : edges_) {
            edge.middle = u32(new_->vert_positions.size());
            const Vec a = positionOf(old_, edge.ends[0]);
            const Vec b = positionOf(old_, edge.ends[1]);
            Vec middle = (a + b) * 0.5f;
            if (smooth_ && edge.triangles == 2) {
                const Vec across = positionOf(old_, edge.opposite[0]) + positionOf(old_, edge.opposite[1]);
                middle = (a + b) * 0.375f + across * 0.125f;
            }
            new_->vert_positions.push_back(fromVec(middle));
            if (!new_->vert_normals.empty()) {
                const Vec normal =
                    toVec(old_.vert_normals[edge.ends[0]]) + toVec(old_.vert_normals[edge.ends[1]]);
                new_->vert_normals.push_back(fromVec(normalise(normal)));
            }
        }
        if (smooth_) {
            const std::vector<Vec> rounded = roundedVertices(old_, edges_);
            for (size_t i = 0; i < rounded.size(); ++i) {
                new_->vert_positions[i] = fromVec(rounded[i]);
            }
        }
    }

    u32 middleOfUVs(u32 a, u32 b) {
        if (old_.num_uv_mappings == 0) {
            return 0;
        }
        const auto [known, added] = uv_middles_.try_emplace(keyOf(a, b), u32(new_->getNumUVs()));
        for (u32 set = 0; added && set < old_.num_uv_mappings; ++set) {
            const Vec2f from = old_.uv_pairs[u64(a) * old_.num_uv_mappings + set];
            const Vec2f to = old_.uv_pairs[u64(b) * old_.num_uv_mappings + set];
            new_->uv_pairs.push_back({0.5f * (from.x + to.x), 0.5f * (from.y + to.y)});
        }
        return known->second;
    }

    void cutTriangle(const MeshTriangle& t) {
        u32 vertices[3], uvs[3];
        for (int i = 0; i < 3; ++i) {
            const int next = (i + 1) % 3;
            vertices[i] = edges_.at(keyOf(t.vertex_indices[i], t.vertex_indices[next])).middle;
            uvs[i] = middleOfUVs(t.uv_indices[i], t.uv_indices[next]);
        }
        for (int i = 0; i < 3; ++i) {
            const int before = (i + 2) % 3;
            new_->triangles.push_back({{t.vertex_indices[i], vertices[i], vertices[before]},
                                       {t.uv_indices[i], uvs[i], uvs[before]},
                                       t.tri_mat_index});
        }
        new_->triangles.push_back(
            {{vertices[0], vertices[1], vertices[2]}, {uvs[0], uvs[1], uvs[2]}, t.tri_mat_index});
    }

    const Mesh& old_;
    bool smooth_;
    Edges edges_;
    std::unordered_map<u64, u32> uv_middles_;
    Ref<Mesh> new_;
};

/// Faces that meet at one place share a vertex there, or rounding would tear them apart.
void weld(Mesh& mesh) {
    const std::vector<u32> firsts = firstAtSamePlace(mesh);
    for (MeshTriangle& triangle : mesh.triangles) {
        for (u32& vertex : triangle.vertex_indices) {
            vertex = firsts[vertex];
        }
    }
}

/// Quads become two triangles each, along the diagonal along which rays see them.
Ref<Mesh> triangulated(const Mesh& mesh) {
    Ref<Mesh> result = new Mesh;
    result->num_uv_mappings = mesh.num_uv_mappings;
    result->used_materials = mesh.used_materials;
    result->vert_positions = mesh.vert_positions;
    result->vert_normals = mesh.vert_normals;
    result->uv_pairs = mesh.uv_pairs;
    result->triangles = mesh.triangles;
    result->triangles.reserve(mesh.triangles.size() + 2 * mesh.quads.size());
    for (const MeshQuad& q : mesh.quads) {
        const u32* const v = q.vertex_indices;
        const u32* const uv = q.uv_indices;
        result->triangles.push_back({{v[0], v[1], v[3]}, {uv[0], uv[1], uv[3]}, q.mat_index});
        result->triangles.push_back({{v[2], v[3], v[1]}, {uv[2], uv[3], uv[1]}, q.mat_index});
    }
    return result;
}

} // namespace

std::vector<u32> firstAtSamePlace(const Mesh& mesh) {
    struct Hash {
        size_t operator()(const std::array<u32, 3>& key) const {
            return size_t(Random::scramble((u64(key[0]) << 32 | key[1]) ^ Random::scramble(key[2])));
        }
    };
    std::unordered_map<std::array<u32, 3>, u32, Hash> known;
    known.reserve(mesh.vert_positions.size());
    std::vector<u32> firsts;
    firsts.reserve(mesh.vert_positions.size());
    for (const Vec3f& p : mesh.vert_positions) {
        // By their bits: what isn't a number has no order. Both zeros are one.
        const std::array<u32, 3> key{std::bit_cast<u32>(p.x + 0.0f), std::bit_cast<u32>(p.y + 0.0f),
                                     std::bit_cast<u32>(p.z + 0.0f)};
        firsts.push_back(known.try_emplace(key, u32(firsts.size())).first->second);
    }
    return firsts;
}

Ref<Mesh> subdivided(const Mesh& mesh, int levels, bool smooth) {
    Ref<Mesh> result = triangulated(mesh);
    if (smooth && levels > 0) {
        weld(*result);
    }
    for (int i = 0; i < levels; ++i) {
        result = Cut(*result, smooth).make();
    }
    return result;
}

int affordableLevels(const Mesh& mesh, int wanted, u64 limit) {
    u64 triangles = mesh.triangles.size() + 2 * mesh.quads.size();
    int levels = 0;
    while (levels < wanted && triangles > 0 && triangles <= limit / 4) {
        triangles *= 4;
        ++levels;
    }
    return levels;
}

} // namespace engine
