// SPDX-License-Identifier: MIT
#include "scene/scene_visitor.h"

#include "foundation/exceptions.h"

#include <algorithm>
#include <cmath>

namespace Quenza {

namespace {

f32 roundedDown(double value) {
    const f32 rounded = f32(value);
    return double(rounded) > value ? std::nextafter(rounded, -std::numeric_limits<f32>::infinity()) : rounded;
}

f32 roundedUp(double value) {
    return -roundedDown(-value);
}

} // namespace

void SceneVisitor::growBox(const Vec3d& min, const Vec3d& max) {
    const double lows[3] = {min.x, min.y, min.z};
    const double highs[3] = {max.x, max.y, max.z};
    for (int i = 0; i < 3; ++i) {
        aabb_min[i] = std::min(aabb_min[i], roundedDown(lows[i]));
        aabb_max[i] = std::max(aabb_max[i], roundedUp(highs[i]));
    }
}

const String& getMappedPath(const Map<String, String>& path_map, const String& old_path) {
    if (const String* new_path = path_map.find(old_path))
        return *new_path;
    throw QuenzaException("While updating dependencies: Missing mapping for old path '" + old_path + "'.");
}

} // namespace Quenza
