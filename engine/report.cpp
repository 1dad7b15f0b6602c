// SPDX-License-Identifier: MIT
#include "engine/report.h"

#include "foundation/file_utils.h"
#include "foundation/string_utils.h"
#include "reading/queue_report.h"
#include "reading/scene_report.h"

namespace engine {

namespace {

/// Longer lists are cut: the report is to fit a page.
constexpr size_t MAX_LISTED = 24;

std::string plural(Quenza::u64 count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string numbers(const Quenza::Vec3f& v) {
    return "(" + Quenza::floatToString(v.x) + " " + Quenza::floatToString(v.y) + " " +
           Quenza::floatToString(v.z) + ")";
}

template <typename Item, typename Line>
std::string listed(const std::vector<Item>& items, Line line) {
    std::string text;
    for (size_t i = 0; i < items.size() && i < MAX_LISTED; ++i) {
        text += "  " + line(items[i]) + "\n";
    }
    if (items.size() > MAX_LISTED) {
        text += "  and " + std::to_string(items.size() - MAX_LISTED) + " more\n";
    }
    return items.empty() ? "  none\n" : text;
}

std::string meshLine(const Quenza::MeshSummary& mesh) {
    return mesh.name + " '" + mesh.path + "': " + std::to_string(mesh.vertices) + " vertices, " +
           plural(mesh.triangles, "triangle") + ", " + plural(mesh.quads, "quad") + ", " +
           plural(mesh.uvs, "UV") + ", " + plural(mesh.materials, "material") + ", bounds " +
           numbers(mesh.bounds_min) + " to " + numbers(mesh.bounds_max);
}

std::string describeScene(const Quenza::SceneSummary& scene) {
    std::string text = "Scene: " + scene.path + "\n\nNodes:\n";
    for (const auto& [name, count] : scene.nodes) {
        text += "  " + name + " " + std::to_string(count) + "\n";
    }
    if (scene.nodes.empty()) {
        text += "  none\n";
    }
    text += "\nMeshes:\n" + listed(scene.meshes, meshLine);
    text += "\nMissing files:\n" + listed(scene.missing_files, [](const std::string& path) { return path; });
    return text + "\n";
}

void addScene(const std::string& path, Report& report, bool named) {
    const Quenza::SceneSummary scene = Quenza::summariseScene(path);
    report.text += describeScene(scene);
    for (const std::string& fault : scene.faults) {
        report.faults.push_back(named ? path + ": " + fault : fault);
    }
}

void addQueue(const std::string& path, Report& report) {
    const Quenza::QueueSummary queue = Quenza::summariseQueue(path);
    report.faults = queue.faults;
    report.text += "Queue: " + path + ", " + plural(queue.items.size(), "item") + "\n\n";
    for (const Quenza::QueueItem& item : queue.items) {
        report.text += "Item: seed " + item.seed + ", halt time " + Quenza::doubleToString(item.halt_time) +
                       ", halt samples per pixel " + Quenza::doubleToString(item.halt_spp) +
                       (item.output_path.empty() ? "" : ", output '" + item.output_path + "'") + "\n";
        addScene(item.scene_path, report, true);
    }
}

} // namespace

bool isQueue(const std::string& path) {
    return path.size() >= 4 && Quenza::toLowerCase(path.substr(path.size() - 4)) == ".qzq";
}

std::string reportPath(const std::string& input) {
    return Quenza::FileUtils::removeExtension(input).toStdString() + ".report.txt";
}

Report makeReport(const Options& options) {
    Report report;
    report.text =
        "Quenza renderer report\n\nCommand line: " + options.commandLine + "\n\nSwitches:\n" +
        listed(options.switches, [](const auto& entry) { return entry.first + " " + entry.second; }) + "\n";
    if (isQueue(options.input)) {
        addQueue(options.input, report);
    } else {
        addScene(options.input, report, false);
    }
    for (const auto& [name, value] : options.switches) {
        if (name == "--settings") {
            const std::vector<std::string> faults = Quenza::faultsOfExtraSettings(value);
            report.faults.insert(report.faults.end(), faults.begin(), faults.end());
        }
    }
    if (!report.faults.empty()) {
        report.text += "Faults:\n";
        for (const std::string& fault : report.faults) {
            report.text += "  " + fault + "\n";
        }
        report.text += "\n";
    }
    report.text +=
        "Result: " + (report.faults.empty() ? "no faults" : plural(report.faults.size(), "fault")) + "\n";
    return report;
}

} // namespace engine
