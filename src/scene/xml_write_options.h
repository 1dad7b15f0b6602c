// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"

namespace Quenza {

/// Told how far the writing of a scene has come. It may throw to end the writing: the scene file is then
/// discarded.
class ProgressListener {
public:
    virtual ~ProgressListener() = default;
    /// `fraction` lies in 0 to 1, and the last call may well be short of 1.
    virtual void progress(f32 fraction) = 0;
};

struct XMLWriteOptions {
    /// File that the scene is written to. It names the folder of the mesh files.
    String scene_path;
    /// Folder that relative paths are taken against.
    String base_path;
    bool write_absolute_paths = false;
    /// Materials and media refer to others by UID, or else by name so that they can stand without a scene.
    bool write_uids = true;
    /// Not owned; may be null.
    ProgressListener* progress = nullptr;
    /// Mesh nodes let go of their mesh once its file is written, and keep the path of that file.
    bool release_meshes = false;
};

} // namespace Quenza
