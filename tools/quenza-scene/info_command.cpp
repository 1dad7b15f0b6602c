// SPDX-License-Identifier: MIT
#include "foundation/file_utils.h"
#include "foundation/string_utils.h"
#include "reading/model_loader.h"
#include "reading/scene_report.h"
#include "tools/quenza-scene/commands.h"
#include "tools/quenza-scene/report_json.h"
#include "tools/quenza-scene/scene_files.h"

#include <cstdio>

namespace scene_tool {

namespace {

using namespace Quenza;

constexpr std::string_view HELP =
    R"(Tells what a scene holds: its nodes by type, materials with their UIDs and types, meshes with counts,
bounds in metres and the memory that their arrays take, and the files that it depends on with their
sizes. Of a mesh (.obj, .ply, .qzmesh) it tells counts, bounds, memory and the names of its materials.

Faults are left to "check", but what can't be read is missing here, so it is told on standard error
and ends with 1.
)";

std::string plural(u64 count, const std::string& one, const std::string& more) {
    return std::to_string(count) + " " + (count == 1 ? one : more);
}

std::string numbers(const Vec3f& v) {
    return "(" + floatToString(v.x) + " " + floatToString(v.y) + " " + floatToString(v.z) + ")";
}

std::string contentOf(const MeshSummary& mesh) {
    const bool empty = mesh.vertices == 0;
    return plural(mesh.vertices, "vertex", "vertices") + ", " +
           plural(mesh.triangles, "triangle", "triangles") + ", " + plural(mesh.quads, "quad", "quads") +
           ", " + plural(mesh.uvs, "UV", "UVs") + ", " + plural(mesh.materials, "material", "materials") +
           ", " + getPrettyFileSize(static_cast<i64>(mesh.memory)) +
           (empty ? "" : ", bounds " + numbers(mesh.bounds_min) + " to " + numbers(mesh.bounds_max));
}

std::string meshLine(const MeshSummary& mesh) {
    return "\"" + mesh.name + "\" " + (mesh.path.empty() ? "in the scene" : "'" + mesh.path + "'") + ": " +
           contentOf(mesh);
}

/// In bytes; -1 for a file that isn't there.
i64 sizeOf(const SceneSummary& scene, const std::string& file) {
    try {
        return static_cast<i64>(FileUtils::getFileSize(resolvedPath(scene.path, file)));
    } catch (const FileUtils::FileUtilsExcep&) {
        return -1;
    }
}

u64 memoryOf(const SceneSummary& scene) {
    u64 memory = 0;
    for (const MeshSummary& mesh : scene.meshes)
        memory += mesh.memory;
    return memory;
}

void print(const SceneSummary& scene) {
    std::string text = "Scene: " + scene.path + "\n\nNodes:\n";
    for (const auto& [name, count] : scene.nodes)
        text += "  " + name + " " + std::to_string(count) + "\n";
    text += "\nMaterials:\n";
    for (const MaterialSummary& material : scene.materials)
        text += "  " + std::to_string(material.uid) + " \"" + material.name + "\" " + material.type + "\n";
    text += "\nMeshes:\n";
    for (const MeshSummary& mesh : scene.meshes)
        text += "  " + meshLine(mesh) + "\n";
    text += "\nFiles:\n";
    for (const std::string& file : scene.files) {
        const i64 size = sizeOf(scene, file);
        text += "  '" + file + "' " + (size < 0 ? "is missing" : getPrettyFileSize(size)) + "\n";
    }
    text += "\nMemory of the meshes: " + getPrettyFileSize(static_cast<i64>(memoryOf(scene))) + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
}

Json vectorJson(const Vec3f& v) {
    return {v.x, v.y, v.z};
}

Json meshJson(const MeshSummary& mesh) {
    return {{"name", mesh.name},
            {"path", mesh.path},
            {"vertices", mesh.vertices},
            {"triangles", mesh.triangles},
            {"quads", mesh.quads},
            {"uvs", mesh.uvs},
            {"materials", mesh.materials},
            {"memory", mesh.memory},
            {"bounds_min", mesh.vertices ? vectorJson(mesh.bounds_min) : Json()},
            {"bounds_max", mesh.vertices ? vectorJson(mesh.bounds_max) : Json()}};
}

void printAsJson(const SceneSummary& scene) {
    Json report = {{"path", scene.path},      {"nodes", scene.nodes},   {"materials", Json::array()},
                   {"meshes", Json::array()}, {"files", Json::array()}, {"memory", memoryOf(scene)}};
    for (const MaterialSummary& material : scene.materials)
        report["materials"].push_back(
            {{"uid", material.uid}, {"name", material.name}, {"type", material.type}});
    for (const MeshSummary& mesh : scene.meshes)
        report["meshes"].push_back(meshJson(mesh));
    for (const std::string& file : scene.files) {
        const i64 size = sizeOf(scene, file);
        report["files"].push_back({{"path", file}, {"size", size < 0 ? Json() : Json(size)}});
    }
    printJson(report);
}

void complain(const std::string& path, const std::string& fault) {
    std::fprintf(stderr, "quenza-scene: %s\n", faultOfFile(path, fault).c_str());
}

void print(const MeshFileSummary& file) {
    std::string text = "Mesh: " + file.mesh.path + "\n\n  " + contentOf(file.mesh) + "\n\nMaterials:\n";
    for (const std::string& name : file.material_names)
        text += "  \"" + name + "\"\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
}

ExitStatus runOnMesh(const std::string& path, bool for_machines) {
    const MeshFileSummary file = summariseMeshFile(path);
    if (!file.is_read) {
        complain(path, file.fault);
        return ExitStatus::FAILED;
    }
    if (for_machines) {
        Json report = meshJson(file.mesh);
        report.erase("name");
        report["material_names"] = file.material_names;
        printJson(report);
    } else {
        print(file);
    }
    return ExitStatus::DONE;
}

ExitStatus run(const Arguments& arguments) {
    if (ModelLoader().knowsFormatOf(arguments.operands[0]))
        return runOnMesh(arguments.operands[0], arguments.has("--json"));
    const SceneSummary scene = summariseScene(arguments.operands[0]);
    const bool readable = scene.unread_elements == 0 && (!scene.nodes.empty() || scene.faults.empty());
    if (!readable)
        for (const std::string& fault : scene.faults)
            complain(scene.path, fault);
    if (arguments.has("--json"))
        printAsJson(scene);
    else if (readable || !scene.nodes.empty())
        print(scene);
    return readable ? ExitStatus::DONE : ExitStatus::FAILED;
}

} // namespace

Command infoCommand() {
    return {"info",
            "FILE",
            1,
            1,
            "Tell what a scene or a mesh holds",
            {{"--json", "One JSON object for machines"}},
            HELP,
            run};
}

} // namespace scene_tool
