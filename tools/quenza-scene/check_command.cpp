// SPDX-License-Identifier: MIT
#include "engine/images/image_file.h"
#include "foundation/string_utils.h"
#include "reading/mesh_report.h"
#include "reading/model_loader.h"
#include "reading/queue_report.h"
#include "reading/scene_report.h"
#include "tools/quenza-scene/commands.h"
#include "tools/quenza-scene/report_json.h"

#include <cstdio>
#include <limits>

namespace scene_tool {

namespace {

constexpr std::string_view HELP =
    R"(Reads each scene and all that it depends on, and lists every fault: what is wrong with the document or
one of its elements, nodes that share a UID, references that lead nowhere or to the wrong type, models
with too few materials, missing files and images that can't be read, pictures too large to draw, and
meshes that don't read, index out of bounds or hold numbers that aren't finite. Of a render queue (.qzq)
its own faults and those of its scenes are listed; a mesh (.obj, .ply, .qzmesh) may be named by itself.

Reading an element stops at its first fault; the other elements are read all the same.

Ends with 0 when there is no fault, and with 1 when there is one.
)";

/// Faults of one file.
struct Checked {
    std::string path;
    std::vector<std::string> faults;
    std::vector<std::string> missing_files;
    Quenza::u64 unread_elements = 0;
};

bool isQueue(const std::string& path) {
    return Quenza::toLowerCase(path).ends_with(".qzq");
}

/// As the stand-in renderer reads it.
std::string imageFault(const std::string& path) {
    std::string fault;
    engine::loadTexels(path, fault);
    return fault;
}

Checked checkScene(const std::string& path) {
    const Quenza::SceneSummary scene = Quenza::summariseScene(path, imageFault);
    return {path, scene.faults, scene.missing_files, scene.unread_elements};
}

Checked checkMeshFile(const std::string& path) {
    const std::string fault = Quenza::summariseMeshFile(path).fault;
    return {path, fault.empty() ? std::vector<std::string>() : std::vector{fault}, {}, 0};
}

void checkFile(const std::string& path, std::vector<Checked>& checked) {
    if (Quenza::ModelLoader().knowsFormatOf(path)) {
        checked.push_back(checkMeshFile(path));
        return;
    }
    if (!isQueue(path)) {
        checked.push_back(checkScene(path));
        return;
    }
    const Quenza::QueueSummary queue = Quenza::summariseQueue(path);
    checked.push_back({path, queue.faults, {}, 0});
    for (const Quenza::QueueItem& item : queue.items)
        checked.push_back(checkScene(item.scene_path));
}

std::string plural(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

void print(const Checked& file) {
    for (const std::string& fault : file.faults)
        std::printf("%s: %s\n", file.path.c_str(), fault.c_str());
    std::string result = file.faults.empty() ? "no faults" : plural(file.faults.size(), "fault");
    if (file.unread_elements != 0)
        result += "; there may be more in " + plural(file.unread_elements, "element") +
                  " that could not be read to the end";
    std::printf("%s: %s\n", file.path.c_str(), result.c_str());
}

void printAsJson(const std::vector<Checked>& checked, std::size_t faults) {
    Json files = Json::array();
    for (const Checked& file : checked)
        files.push_back({{"path", file.path},
                         {"faults", file.faults},
                         {"missing_files", file.missing_files},
                         {"unread_elements", file.unread_elements}});
    printJson({{"faults", faults}, {"files", std::move(files)}});
}

ExitStatus run(const Arguments& arguments) {
    std::vector<Checked> checked;
    for (const std::string& path : arguments.operands)
        checkFile(path, checked);
    std::size_t faults = 0;
    for (const Checked& file : checked)
        faults += file.faults.size();
    if (arguments.has("--json"))
        printAsJson(checked, faults);
    else
        for (const Checked& file : checked)
            print(file);
    return faults == 0 ? ExitStatus::DONE : ExitStatus::FAILED;
}

} // namespace

Command checkCommand() {
    return {"check",
            "FILE...",
            1,
            std::numeric_limits<std::size_t>::max(),
            "List every fault of scenes and what they depend on",
            {{"--json", "One JSON object for machines"}},
            HELP,
            run};
}

} // namespace scene_tool
