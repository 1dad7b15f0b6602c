// SPDX-License-Identifier: MIT
#pragma once

#include <set>
#include <string>

namespace scene_tool {

/// Gives files their names in an archive. A path below the scene's folder keeps its way; anything else goes
/// to the folder "external" by its file name alone. All names are relative, stay within the archive, and are
/// different even where case doesn't count.
class ArchiveNames {
public:
    /// A name for `path`, "/" between its parts.
    std::string add(const std::string& path);

private:
    std::set<std::string> taken_; ///< Lowered.
};

/// Writes a scene and all files that it depends on to a zip archive. The scene in it is one file, without
/// includes, in the form in which the exporter writes scenes. Throws std::runtime_error, naming all of them,
/// when files are missing. The archive appears whole or not at all; the same input gives the same bytes.
void packScene(const std::string& scene_path, const std::string& zip_path);

} // namespace scene_tool
