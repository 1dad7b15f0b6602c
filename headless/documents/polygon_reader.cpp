// SPDX-License-Identifier: MIT
#include "headless/documents/parameter_reader.h"
#include "headless/documents/part_readers.h"
#include "headless/model/node_types.h"

namespace headless {

std::unique_ptr<PolygonNode> readPolygons(const JsonCursor& object) {
    const JsonCursor points = object.at("points");
    const JsonCursor polygons = object.at("polygons");
    const size_t pointCount = points.arraySize();
    std::unique_ptr<PolygonNode> node = createPolygons(pointCount, polygons.arraySize());
    for (size_t i = 0; i < pointCount; ++i) {
        node->points[i] = readVector(points.at(i));
    }
    for (size_t i = 0; i < node->polygons.size(); ++i) {
        const JsonCursor polygon = polygons.at(i);
        const size_t corners = polygon.arraySize();
        if (corners != 3 && corners != 4) {
            polygon.fail("a polygon has three or four corners, not " + std::to_string(corners));
        }
        int32_t indices[4];
        for (size_t corner = 0; corner < corners; ++corner) {
            const JsonCursor index = polygon.at(corner);
            indices[corner] = index.integer();
            if (indices[corner] < 0 || static_cast<size_t>(indices[corner]) >= pointCount) {
                index.fail("point " + std::to_string(indices[corner]) + " doesn't exist; the object has " +
                           std::to_string(pointCount));
            }
        }
        node->polygons[i] =
            CPolygon(indices[0], indices[1], indices[2], corners == 4 ? indices[3] : indices[2]);
    }
    if (const auto edges = object.find("brokenEdges")) {
        const auto edgeCount = static_cast<int32_t>(node->polygons.size() * 4);
        for (size_t i = 0, count = edges->arraySize(); i < count; ++i) {
            node->brokenEdges.Select(edges->at(i).integer(0, edgeCount - 1));
        }
    }
    return node;
}

} // namespace headless
