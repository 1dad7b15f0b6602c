// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/commands.h"
#include "tools/quenza-scene/output_file.h"
#include "tools/quenza-scene/scene_files.h"
#include "tools/quenza-scene/scene_merge.h"

#include <cstdio>

namespace scene_tool {

namespace {

constexpr std::string_view HELP =
    R"(Writes one scene of the nodes of both. UIDs of B are moved above the highest of A. A scene has one
camera, one of render settings, tone mapping, background and metadata: those of A stay, and those of B
are left out with a line that says so; where A's file brings none of its own, B's are taken. Meshes of
B that have the name of another mesh get a number behind it.

Paths are rewritten when OUT lies in another folder. OUT appears whole or not at all.
)";

ExitStatus run(const Arguments& arguments) {
    const std::string& out = arguments.operands[2];
    requireFileTarget(out);
    const Quenza::Ref<Quenza::SceneNodeRoot> a = readScene(arguments.operands[0]);
    const Quenza::Ref<Quenza::SceneNodeRoot> b = readScene(arguments.operands[1]);
    moveScene(*a, arguments.operands[0], out);
    moveScene(*b, arguments.operands[1], out);
    const std::vector<std::string> notes = mergeScenes(*a, *b, ownSingleNodes(arguments.operands[0]));
    writeScene(*a, out);
    for (const std::string& note : notes)
        std::printf("%s\n", note.c_str());
    return ExitStatus::DONE;
}

} // namespace

Command mergeCommand() {
    return {"merge", "A.qzs B.qzs OUT.qzs", 3, 3, "Put the nodes of two scenes into one", {}, HELP, run};
}

} // namespace scene_tool
