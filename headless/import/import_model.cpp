// SPDX-License-Identifier: MIT
#include "headless/import/import_model.h"

#include "foundation/file_utils.h"
#include "headless/documents/document_error.h"
#include "headless/import/animation_import.h"
#include "headless/import/frame_view.h"
#include "headless/import/material_import.h"
#include "headless/import/model_files.h"
#include "headless/import/node_import.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <filesystem>
#include <fstream>

namespace headless {

namespace {

/// Assimp's reader of PLY looks for the end of a header for ever.
void checkPlyHeader(const std::string& file) {
    constexpr size_t LARGEST_HEADER = 1 << 20;
    std::ifstream in(std::filesystem::path(reinterpret_cast<const char8_t*>(file.c_str())), std::ios::binary);
    std::string head(3, '\0');
    if (!in.read(head.data(), 3) || (head != "ply" && head != "PLY")) {
        return;
    }
    head.resize(LARGEST_HEADER);
    in.read(head.data() + 3, static_cast<std::streamsize>(LARGEST_HEADER - 3));
    head.resize(static_cast<size_t>(in.gcount()) + 3);
    const size_t end = head.find("end_header");
    if (end == std::string::npos || head.find('\n', end) == std::string::npos) {
        throw DocumentError(file,
                            "the model can't be read: its PLY header has no end; is the file complete?");
    }
}

/// No post-processing: its steps trust what the file says, and change the polygons.
const aiScene& readModel(Assimp::Importer& importer, const std::string& file) {
    if (!Quenza::FileUtils::fileExists(file)) {
        throw DocumentError(file, "there is no such file");
    }
    checkPlyHeader(file);
    importer.SetIOHandler(new ModelFiles); // Assimp owns it.
    // Without this each pivot of an FBX file becomes a chain of nodes.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    // Else a model without polygons gets some that show its nodes.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    // Names instead of a file's own numbers.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_COLLADA_USE_COLLADA_NAMES, true);
    const aiScene* scene = nullptr;
    try {
        scene = importer.ReadFile(file, 0);
    } catch (const std::exception& error) {
        throw DocumentError(file, std::string("the model can't be read: ") + error.what());
    }
    if (!scene || !scene->mRootNode) {
        throw DocumentError(file, std::string("the model can't be read: ") + importer.GetErrorString());
    }
    return *scene;
}

void setOrigin(Document& document, const std::string& file) {
    const Filename path{String(file)};
    document.path = path.GetDirectory();
    document.fileName = path.GetFile();
}

} // namespace

std::unique_ptr<Document> importModel(const std::string& file, std::vector<std::string>& warnings,
                                      const std::string& textureFolder) {
    std::vector<std::string> notes;
    Assimp::Importer importer;
    const aiScene& scene = readModel(importer, file);
    auto document = std::make_unique<Document>();
    setOrigin(*document, file);
    document->setFps(framesPerSecond(scene));
    const bool rootMoves = animatesRoot(scene);
    const ModelSpace space(scene, rootMoves);
    const std::vector<Material*> materials = importMaterials(scene, file, textureFolder, *document, notes);
    const size_t earlier = notes.size();
    std::vector<Fixture> fixtures = importFixtures(scene, file, space, notes);
    const ImportedNodes nodes =
        importNodes(scene, space, rootMoves, materials, std::move(fixtures), *document, notes);
    if (nodes.polygonCount == 0 && nodes.fixtures.empty()) {
        throw DocumentError(file, "the model has no polygons" +
                                      (notes.size() > earlier ? ": " + notes[earlier] : std::string()));
    }
    importAnimation(scene, space, nodes, *document, notes);
    if (!nodes.fixtures.empty() && nodes.fixtures.front()->type() == Ocamera) {
        document->view().setSceneCamera(nodes.fixtures.front());
    } else {
        frameView(*document);
    }
    for (const std::string& note : notes) {
        warnings.push_back(file + ": " + note);
    }
    return document;
}

} // namespace headless
