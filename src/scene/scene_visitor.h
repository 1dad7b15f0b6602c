// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/map.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "foundation/vector.h"

#include <limits>

namespace Quenza {

/// The argument of a walk over the nodes of a scene: what to do, and what was found.
class SceneVisitor {
public:
    /// Values of `mode`.
    enum Mode : u32 {
        BIND = 0,                 ///< Stored UIDs become references, through the root.
        COLLECT_DEPENDENCIES = 1, ///< Each file that a node needs goes to `dependencies`.
        UPDATE_DEPENDENCIES = 2,  ///< Stored paths are replaced through `path_map`.
        LOAD = 3,                 ///< Data that a node holds only as a path is loaded.
        BOUNDING_BOX = 4,         ///< `aabb_min` and `aabb_max` grow by the node's swept box, in world space.
        OFFSET_UIDS = 5,          ///< `uid_offset` is added to UIDs and stored references.
    };

    String path;      ///< Path of the scene file.
    String base_path; ///< Folder that relative paths are taken against.
    u32 mode = BIND;
    Vector<String> dependencies;
    Map<const void*, bool> seen; ///< Objects that were met before, where they may be met by several ways.
    Map<String, String> path_map;
    bool use_stored_paths = true; ///< Dependencies are reported as stored, else as they will be written.
    f32 aabb_min[3] = {INFINITE, INFINITE, INFINITE};
    f32 aabb_max[3] = {-INFINITE, -INFINITE, -INFINITE};
    u32 uid_offset = 0;

    /// Grows the box of mode BOUNDING_BOX, outwards to the next floats.
    void growBox(const Vec3d& min, const Vec3d& max);

    /// Adds `uid_offset` to a UID, leaving INVALID alone.
    void offsetUID(SceneNodeUID& uid) const {
        if (uid.isValid())
            uid = SceneNodeUID(uid.value() + uid_offset);
    }

private:
    static constexpr f32 INFINITE = std::numeric_limits<f32>::infinity();
};

/// The new path of `old_path`; throws QuenzaException when there is none.
const String& getMappedPath(const Map<String, String>& path_map, const String& old_path);

} // namespace Quenza
