// SPDX-License-Identifier: MIT
#include "headless/build/surface_data.h"

#include "headless/geometry/phong_normals.h"
#include "headless/geometry/uv_projection.h"
#include "headless/model/document.h"
#include "headless/model/handles.h"
#include "headless/model/host_memory.h"
#include "headless/model/primitive_ids.h"

#include <cmath>
#include <span>

namespace headless {

namespace {

using geometry::Projection;
using geometry::ProjectionCamera;

std::vector<uint8_t> brokenEdgesOf(const PolygonNode& mesh) {
    std::vector<int64_t> edges;
    int32_t from = 0, to = 0;
    for (int32_t range = 0; mesh.brokenEdges.GetRange(range, &from, &to); ++range) {
        for (int64_t edge = from; edge <= to; ++edge) {
            edges.push_back(edge);
        }
    }
    return edges.empty() ? std::vector<uint8_t>() : geometry::brokenEdgeBytes(mesh.polygons.size(), edges);
}

float aspectOf(const Document* document, const View& view) {
    float width = static_cast<float>(view.width), height = static_cast<float>(view.height);
    if (const RenderDataNode* const renderData = document ? document->activeRenderData() : nullptr) {
        width = renderData->data.GetReal(RDATA_XRES, width);
        height = renderData->data.GetReal(RDATA_YRES, height);
    }
    return width > 0.0f && height > 0.0f ? width / height : 1.0f;
}

ProjectionCamera projector(const Object& camera, const Matrix& meshMatrix, float aspect) {
    const BaseContainer& data = camera.data;
    ProjectionCamera projector;
    projector.fromObject = camera.globalMatrix().GetInverse() * meshMatrix;
    projector.apertureWidth = 1.0f;
    projector.focalLength = 0.5f / std::tan(data.GetReal(CAMERA_FOV, 0.92729521f) * 0.5f);
    projector.aspect = aspect;
    projector.parallel = data.GetLong(CAMERA_PROJECTION) == 1;
    projector.parallelWidth = 1024.0f / data.GetReal(CAMERA_ZOOM, 1.0f);
    return projector;
}

const Object* cameraOf(const TextureTagNode& tag, Projection projection, const Document* document,
                       const View& view) {
    Object* own = nullptr;
    if (projection == Projection::CameraMapping) {
        own = static_cast<Object*>(fromHost(tag.data.GetLink(TEXTURETAG_CAMERA, nullptr, Ocamera)));
    }
    return own ? own : view.sceneCamera(document);
}

} // namespace

Vector* createPhongNormals(const PolygonNode& mesh) {
    const Tag* const phong = mesh.tag(Tphong);
    if (!phong || !mesh.hasValidIndices()) {
        return nullptr;
    }
    geometry::PhongSettings settings;
    settings.angleLimited = phong->data.GetBool(PHONGTAG_PHONG_ANGLELIMIT);
    settings.angleLimit = static_cast<double>(
        phong->data.GetReal(PHONGTAG_PHONG_ANGLE, static_cast<float>(settings.angleLimit)));
    std::vector<uint8_t> broken;
    if (phong->data.GetBool(PHONGTAG_PHONG_USEEDGES)) {
        broken = brokenEdgesOf(mesh);
        settings.brokenEdges = broken;
    }
    const size_t count = mesh.polygons.size() * 4;
    auto* const normals = static_cast<Vector*>(allocateForHost(count * sizeof(Vector)));
    if (normals) {
        geometry::computePhongNormals(mesh.points, mesh.polygons, settings, std::span(normals, count));
    }
    return normals;
}

std::unique_ptr<UVWTagNode> generateUVW(const PolygonNode& mesh, const Matrix& meshMatrix,
                                        const TextureTagNode& tag, const Matrix& ownerMatrix,
                                        const View* view) {
    const auto projection = static_cast<Projection>(tag.data.GetLong(TEXTURETAG_PROJECTION));
    if (!mesh.hasValidIndices()) {
        return nullptr;
    }
    // The same matrix on both sides leaves no rounding behind: copies of an object get equal coordinates.
    const Matrix toOwner = meshMatrix == ownerMatrix ? Matrix() : ownerMatrix.GetInverse() * meshMatrix;
    std::span<const UVWStruct> existing;
    if (const auto* const uvw = static_cast<const UVWTagNode*>(mesh.tag(Tuvw))) {
        if (uvw->records.size() == mesh.polygons.size()) {
            existing = uvw->records;
        }
    }
    std::optional<ProjectionCamera> camera;
    if (view && (projection == Projection::Frontal || projection == Projection::CameraMapping)) {
        const Document* const document = mesh.document();
        camera =
            projector(*cameraOf(tag, projection, document, *view), meshMatrix, aspectOf(document, *view));
    }
    std::vector<UVWStruct> records = geometry::generateUVW(
        projection, mesh.points, mesh.polygons, tag.matrix.GetInverse() * toOwner, existing, camera);
    if (records.size() != mesh.polygons.size() || records.empty()) {
        return nullptr;
    }
    auto made = std::make_unique<UVWTagNode>();
    made->records = std::move(records);
    return made;
}

} // namespace headless
