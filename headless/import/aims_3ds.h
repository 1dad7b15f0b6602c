// SPDX-License-Identifier: MIT
#pragma once

#include <assimp/types.h>
#include <map>
#include <string>

namespace headless {

/// Where a camera or spot light of a 3DS file looks, in the file's space, whose Z is up.
struct Aim {
    /// From its place to its target.
    aiVector3D toTarget;
    /// Focal length in millimetres of a camera's lens, for a field of view of 2400 / lens degrees; 0 when the
    /// file has none that can be.
    float lens = 0.0f;
};

/// The aims that a 3DS file tells, by the objects' names. Assimp drops them as soon as the file has a tree of
/// nodes. Empty for a file that can't be read or is of another kind; broken parts are left out.
std::map<std::string, Aim> readAims3DS(const std::string& file);

} // namespace headless
