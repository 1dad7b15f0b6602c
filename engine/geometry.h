// SPDX-License-Identifier: MIT
#pragma once

#include "engine/transform.h"
#include "engine/vec.h"
#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "scene/mesh.h"

#include <embree3/rtcore.h>
#include <limits>
#include <memory>
#include <vector>

namespace engine {

class EmissionProfile;
class SurfaceShader;

/// A mesh, or the unit sphere where there is none, with an Embree scene of its own that instances share.
struct Shape {
    Quenza::Ref<Quenza::Mesh> mesh;
    /// For meshes that are to be smooth and have no normals of their own; one a vertex.
    std::vector<Quenza::Vec3f> smooth_normals;
    RTCScene scene = nullptr;

    /// Triangles, then two for each quad, cut as Embree cuts them.
    Quenza::u64 countTriangles() const { return mesh ? mesh->triangles.size() + 2 * mesh->quads.size() : 0; }
    struct Corners {
        Quenza::u32 vertices[3];
        Quenza::u32 uvs[3];
        Quenza::u32 material;
    };
    Corners triangle(Quenza::u64 index) const;
    Vec vertex(Quenza::u32 index) const { return toVec(mesh->vert_positions[index]); }
};

/// A shape at its place in the scene.
struct Instance {
    const Shape* shape = nullptr;
    MotionTransform transform;
    /// By the shape's material indices; at least one, never null.
    std::vector<const SurfaceShader*> materials;
    /// How each of the materials emits here; null for those that don't.
    std::vector<const EmissionProfile*> emission;
    bool invisible_to_camera = false;
    Quenza::u64 cut_planes = 0; ///< A bit for each of the geometry's cut planes that cuts it.

    /// For any index that a mesh may hold.
    Quenza::u32 shaderIndex(Quenza::u32 material) const {
        return material < materials.size() ? material : Quenza::u32(materials.size() - 1);
    }
    const SurfaceShader* shaderOf(Quenza::u32 material) const { return materials[shaderIndex(material)]; }
};

struct Ray {
    Vec origin;
    Vec direction; ///< Of length 1.
    float near = 0;
    float far = std::numeric_limits<float>::infinity();
    float time = 0; ///< 0 to 1.
};

struct Hit {
    const Instance* instance = nullptr;
    Quenza::u64 triangle = 0; ///< As Shape::triangle counts.
    float u = 0, v = 0;       ///< Barycentric weights of the second and third corner.
    float distance = 0;
    Vec sphere_normal; ///< Of a sphere's hit, in the sphere's own space.
};

/// A point of a surface, in scene space. Without an instance it stands for a direction of the background,
/// which is then the position.
struct SurfacePoint {
    const Instance* instance = nullptr;
    Vec position;
    Vec normal;         ///< Of the facet, outwards, unit length.
    Vec shading_normal; ///< On the side of `normal`, unit length.
    Vec ray_direction;  ///< Of what sees or hits the point, towards it, unit length; zero for none.
    Vec dpdu, dpdv;     ///< Change of the position along the first UV set; zero without UVs.
    float error = 0;    ///< Distance to keep when a ray starts here.
    Quenza::u64 triangle = 0;
    Quenza::u32 material = 0;
    Quenza::u32 uv_index[3] = {};
    float u = 0, v = 0;
    Vec sphere_normal;

    const SurfaceShader& shader() const { return *instance->materials[material]; }
    /// (0, 0) where the mesh has no such set; of the background, the place in a panorama.
    Quenza::Vec2f uv(Quenza::u32 set) const;
    /// Where a ray in this direction starts.
    Vec leave(const Vec& direction) const {
        return position + normal * (dot(direction, normal) < 0.0f ? -error : error);
    }
};

struct CutPlane {
    Vec normal; ///< What lies on this side is cut away.
    float offset = 0;
};

/// All surfaces of a scene, for rays.
class Geometry {
public:
    Geometry();
    ~Geometry();
    Geometry(const Geometry&) = delete;
    Geometry& operator=(const Geometry&) = delete;

    /// The mesh's arrays are shared with Embree and must not change. Throws QuenzaException when a face's
    /// indices are out of bounds, and when there is no memory.
    const Shape* addMesh(const Quenza::Ref<Quenza::Mesh>& mesh, bool smooth);
    const Shape* sphere();
    Instance& addInstance(std::unique_ptr<Instance> instance);
    static constexpr Quenza::u64 MAX_CUT_PLANES = 64;
    /// At most MAX_CUT_PLANES.
    void addCutPlane(const CutPlane& plane) { cut_planes_.push_back(plane); }
    /// Builds the scene from what was added. Nothing may be added afterwards.
    void commit();

    const std::vector<std::unique_ptr<Instance>>& instances() const { return instances_; }
    /// The nearest surface. Rays of the camera don't see what is invisible to it.
    bool intersect(const Ray& ray, Hit& hit, bool from_camera = false) const;
    /// True when any surface lies between the ray's ends.
    bool occluded(const Ray& ray) const;
    SurfacePoint surfaceAt(const Ray& ray, const Hit& hit) const;
    /// Radius of a sphere about the origin that holds the scene; 0 for an empty one.
    float radius() const { return radius_; }

private:
    bool isCut(const Ray& ray, float distance, Quenza::u64 planes) const;
    void failOnError(const char* what) const;

    RTCDevice device_;
    RTCScene top_ = nullptr;
    std::vector<std::unique_ptr<Shape>> shapes_;
    const Shape* sphere_ = nullptr;
    std::vector<std::unique_ptr<Instance>> instances_;
    std::vector<CutPlane> cut_planes_;
    float radius_ = 0;
    bool hides_ = false; ///< Something is cut, or invisible to the camera.
};

} // namespace engine
