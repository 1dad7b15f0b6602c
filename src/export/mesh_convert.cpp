// SPDX-License-Identifier: MIT
#include "export/mesh_convert.h"

#include "export/time_text.h"
#include "export/uv_baking.h"
#include "host/general.h"
#include "host/ids.h"

#include <memory>

namespace {

struct HostFree {
    void operator()(void* memory) const { GeFree(memory); }
};

MeshArrays arraysOf(const PolygonObject* object) {
    MeshArrays arrays;
    arrays.points = object->GetPointR();
    arrays.polygons = object->GetPolygonR();
    arrays.pointCount = object->GetPointCount();
    arrays.polygonCount = object->GetPolygonCount();
    return arrays;
}

const char* faultText(MeshFault fault) {
    switch (fault) {
    case MeshFault::NONE:
        break;
    case MeshFault::POINT_INDEX:
        return "a polygon refers to a point that doesn't exist";
    case MeshFault::NOT_FINITE:
        return "the coordinates of a point are no finite numbers";
    case MeshFault::TOO_LARGE:
        return "it has more polygons than a mesh file can hold";
    }
    return "";
}

void printConverted(const PolygonObject* object, const Quenza::Mesh& mesh, uint32_t start) {
    const float processing = secondsSince(start);
    GePrint(String("--Exported ") + object->GetName() + ": " +
            LongToString(static_cast<int64_t>(mesh.triangles.size() + mesh.quads.size())) + " Faces, " +
            LongToString(static_cast<int64_t>(mesh.vert_positions.size())) + " Vertices, " +
            LongToString(static_cast<int64_t>(mesh.uv_pairs.size())) + " UVs. Processing Time: " +
            secondsText(processing) + "s. Export Time: " + secondsText(secondsSince(start)) + "s");
}

} // namespace

Quenza::Ref<Quenza::Mesh> PolygonMeshExporter::convertMesh(PolygonObject* object,
                                                           const std::vector<MaterialSlot>& slots,
                                                           const Options& options) {
    const uint32_t start = GeGetMilliSeconds();
    MeshArrays arrays = arraysOf(object);
    const MeshFault fault = findMeshFault(arrays, options.scale);
    if (fault != MeshFault::NONE) {
        GePrint(String("Object \"") + object->GetName() + "\" is left out: " + faultText(fault) + ".");
        return nullptr;
    }
    const Quenza::Ref<Quenza::Mesh> mesh = new Quenza::Mesh;
    BakedUVs uvs;
    if (uvs.bake(object, slots, options.document)) {
        arrays.uvs = uvs.source();
        std::unique_ptr<Vector, HostFree> normals;
        if (object->GetTag(Tphong)) {
            normals.reset(object->CreatePhongNormals());
            arrays.normals = normals.get();
        }
        for (size_t slot = 0; slot < slots.size(); ++slot) {
            mesh->addMaterialUsed(Quenza::String("default" + std::to_string(slot)));
        }
        converter_.convert(arrays, polygonRuns(slots, arrays.polygonCount), options.scale, options.merge,
                           *mesh);
    }
    mesh->endOfModel();
    if (options.verbose) {
        printConverted(object, *mesh, start);
    }
    return mesh;
}
