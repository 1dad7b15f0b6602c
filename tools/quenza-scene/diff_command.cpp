// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/commands.h"
#include "tools/quenza-scene/scene_diff.h"
#include "tools/quenza-scene/scene_files.h"

#include <cstdio>

namespace scene_tool {

namespace {

constexpr std::string_view HELP =
    R"(Compares two scenes node by node and field by field, in the form in which the exporter writes them, so
that older forms, includes and the order of nodes make no difference. Prints one line for each:

  - model2 7 "Cube"                                      a node that only A has
  + sphere 9 "Ball"                                      a node that only B has
  ~ camera 2 "Eye": keyframe/pos: '0 0 0' -> '0 1 0'     a field

Nodes go together by type and UID; camera, settings, tone mapping, background and metadata by type.
Mesh files are compared by their paths, which hold checksums where the exporter wrote them.

Ends with 0 when the scenes are equal, 1 when they differ, 2 when one can't be read or has references
that lead nowhere.
)";

ExitStatus run(const Arguments& arguments) {
    const Quenza::Ref<Quenza::SceneNodeRoot> a = readScene(arguments.operands[0]);
    const Quenza::Ref<Quenza::SceneNodeRoot> b = readScene(arguments.operands[1]);
    const std::vector<std::string> lines = diffScenes(*a, *b, arguments.has("--ignore-uids"));
    for (const std::string& line : lines)
        std::printf("%s\n", line.c_str());
    return lines.empty() ? ExitStatus::DONE : ExitStatus::DIFFERENT;
}

} // namespace

Command diffCommand() {
    return {"diff",
            "A.qzs B.qzs",
            2,
            2,
            "Compare two scenes by node and field",
            {{"--ignore-uids", "Nodes go together by type, name and order"}},
            HELP,
            run};
}

} // namespace scene_tool
