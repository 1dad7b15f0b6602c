// SPDX-License-Identifier: MIT
#include "foundation/file_utils.h"
#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "scene/mesh_loader.h"
#include "tools/quenza-scene/commands.h"
#include "tools/quenza-scene/obj_writer.h"
#include "tools/quenza-scene/output_file.h"
#include "tools/quenza-scene/ply_writer.h"
#include "tools/quenza-scene/scene_files.h"

#include <algorithm>
#include <stdexcept>

namespace scene_tool {

namespace {

using Quenza::Mesh;

constexpr std::string_view HELP =
    R"(Converts by the names' extensions:

  .obj, .ply, .qzmesh   to each other. OBJ gets normals, the first UV set and the materials' names;
                        PLY is binary, with normals, the first UV set and the materials' indices.
                        Reading PLY takes positions and faces alone.
  .qzs to .qzs          Writes the scene anew, in the form in which the exporter writes scenes:
                        includes, older forms and shorthands become plain nodes, meshes in the scene
                        become files beside it. Paths are rewritten when OUT lies in another folder.

OUT appears whole or not at all.
)";

/// Unlike scenes, a mesh that could not be written leaves its partial file.
void writeMeshFile(const std::string& path, const Mesh& mesh) {
    try {
        Mesh::writeToFile(path, mesh);
    } catch (...) {
        Quenza::PlatformUtils::removeFile(path + ".partial");
        throw;
    }
}

struct MeshFormat {
    std::string_view extension;
    void (*write)(const std::string& path, const Mesh& mesh);
};
constexpr MeshFormat MESH_FORMATS[] = {{".obj", writeObj}, {".ply", writePly}, {".qzmesh", writeMeshFile}};

const MeshFormat* meshFormatOf(const std::string& extension) {
    const auto named = [&](const MeshFormat& format) { return format.extension == extension; };
    const auto* const found = std::find_if(std::begin(MESH_FORMATS), std::end(MESH_FORMATS), named);
    return found == std::end(MESH_FORMATS) ? nullptr : found;
}

std::string extensionOf(const std::string& path) {
    return Quenza::toLowerCase(Quenza::utf8Path(Quenza::nativePath(path).extension()));
}

void convertMesh(const std::string& in, const std::string& out, const MeshFormat& format) {
    if (!Quenza::FileUtils::fileExists(in))
        throw std::runtime_error("'" + in + "' is missing");
    Mesh mesh;
    namingFile(in, [&] { Quenza::getMeshLoader()(in, mesh, 1.0); });
    if (mesh.triangles.empty() && mesh.quads.empty())
        throw std::runtime_error("'" + in + "' has " + std::to_string(mesh.vert_positions.size()) +
                                 " vertices and no faces, so nothing is written: save the model again with "
                                 "its faces");
    format.write(out, mesh);
}

void convertScene(const std::string& in, const std::string& out) {
    const Quenza::Ref<Quenza::SceneNodeRoot> root = readScene(in);
    moveScene(*root, in, out);
    writeScene(*root, out);
}

ExitStatus run(const Arguments& arguments) {
    const std::string& in = arguments.operands[0];
    const std::string& out = arguments.operands[1];
    const MeshFormat* const from = meshFormatOf(extensionOf(in));
    const MeshFormat* const to = meshFormatOf(extensionOf(out));
    const bool scenes = extensionOf(in) == ".qzs" && extensionOf(out) == ".qzs";
    if (!scenes && !(from && to))
        throw UsageError("can't convert '" + extensionOf(in) + "' to '" + extensionOf(out) +
                         "': .obj, .ply and .qzmesh convert to each other, and .qzs to .qzs");
    requireFileTarget(out);
    if (scenes)
        convertScene(in, out);
    else
        convertMesh(in, out, *to);
    return ExitStatus::DONE;
}

} // namespace

Command convertCommand() {
    return {"convert", "IN OUT", 2, 2, "Convert a mesh, or write a scene anew", {}, HELP, run};
}

} // namespace scene_tool
