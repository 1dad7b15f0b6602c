// SPDX-License-Identifier: MIT
#include "engine/surrounding_media.h"

#include "engine/surface_shader.h"

#include <algorithm>
#include <vector>

namespace engine {

namespace {

constexpr int MAX_SURFACES = 10000;
/// Askew, so that they run along no wall.
constexpr Vec DIRECTIONS[] = {{0.31f, 0.17f, 0.94f}, {0.83f, -0.53f, -0.18f}, {-0.71f, 0.64f, -0.29f}};

/// Those whose surfaces a ray leaves more often than it enters them, the innermost first.
std::vector<const InternalMedium*> leftBy(const Geometry& geometry, const Vec& point, const Vec& direction) {
    std::vector<const InternalMedium*> left, entered;
    Ray ray;
    ray.origin = point;
    ray.direction = normalise(direction);
    Hit hit;
    for (int i = 0; i < MAX_SURFACES && geometry.intersect(ray, hit); ++i) {
        const SurfacePoint surface = geometry.surfaceAt(ray, hit);
        ray.near = hit.distance + surface.error;
        const InternalMedium* const medium = surface.shader().medium();
        if (!medium) {
            continue;
        }
        const auto open = std::find(entered.begin(), entered.end(), medium);
        if (dot(ray.direction, surface.normal) < 0.0f) {
            entered.push_back(medium);
        } else if (open != entered.end()) {
            entered.erase(open);
        } else {
            left.push_back(medium);
        }
    }
    return left;
}

} // namespace

MediumStack mediaAround(const Geometry& geometry, const Vec& point) {
    std::vector<const InternalMedium*> around = leftBy(geometry, point, DIRECTIONS[0]);
    for (size_t i = 1; i < std::size(DIRECTIONS) && !around.empty(); ++i) {
        std::vector<const InternalMedium*> others = leftBy(geometry, point, DIRECTIONS[i]);
        const auto isOpen = [&others](const InternalMedium* medium) {
            const auto found = std::find(others.begin(), others.end(), medium);
            const bool missing = found == others.end();
            if (!missing) {
                others.erase(found);
            }
            return missing;
        };
        around.erase(std::remove_if(around.begin(), around.end(), isOpen), around.end());
    }
    MediumStack media;
    for (auto outer = around.rbegin(); outer != around.rend(); ++outer) {
        media.enter(*outer);
    }
    return media;
}

} // namespace engine
