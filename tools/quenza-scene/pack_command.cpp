// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/commands.h"
#include "tools/quenza-scene/output_file.h"
#include "tools/quenza-scene/scene_pack.h"

namespace scene_tool {

namespace {

constexpr std::string_view HELP =
    R"(Writes a zip archive that holds the scene with all that it depends on: meshes, textures, IES profiles and
images. Paths in the scene become relative to it: what lies below the scene's folder keeps its way, and
the rest goes to the folder "external" of the archive. Included files are part of the one scene in it.

Missing files are named, and nothing is written. The same scene gives the same bytes. OUT.zip appears
whole or not at all.
)";

ExitStatus run(const Arguments& arguments) {
    requireFileTarget(arguments.operands[1]);
    packScene(arguments.operands[0], arguments.operands[1]);
    return ExitStatus::DONE;
}

} // namespace

Command packCommand() {
    return {"pack", "FILE.qzs OUT.zip", 2, 2, "Put a scene and all its files into an archive", {}, HELP, run};
}

} // namespace scene_tool
