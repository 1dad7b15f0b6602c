// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/scene_files.h"

#include "foundation/file_utils.h"
#include "foundation/native_path.h"
#include "reading/scene_parser.h"
#include "scene/mesh_loader.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_visitor.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <set>
#include <stdexcept>

namespace scene_tool {

namespace {

namespace fs = std::filesystem;
using namespace Quenza;

/// Emission that names a material in the mesh's words can't be bound without the mesh.
bool needsMeshNames(const SceneNodeModel& model) {
    const auto only_named = [](const auto& emission) {
        return !emission->material && !emission->material_uid.isValid();
    };
    return std::any_of(model.emission_scales.begin(), model.emission_scales.end(), only_named) ||
           std::any_of(model.ies_profiles.begin(), model.ies_profiles.end(), only_named);
}

/// Meshes that stay loaded only while references are bound.
class BorrowedMeshes {
public:
    BorrowedMeshes(SceneNodeRoot& root, const String& base_path) {
        for (const Ref<SceneNode>& node : root.getChildren()) {
            const auto* const model = dynamic_cast<const SceneNodeModel*>(node.getPointer());
            if (model && needsMeshNames(*model))
                load(root, *model, base_path);
        }
    }
    ~BorrowedMeshes() {
        for (SceneNodeMesh* const mesh_node : loaded_)
            mesh_node->mesh = nullptr;
    }
    BorrowedMeshes(const BorrowedMeshes&) = delete;
    BorrowedMeshes& operator=(const BorrowedMeshes&) = delete;

private:
    void load(SceneNodeRoot& root, const SceneNodeModel& model, const String& base_path) {
        SceneNode* const geometry =
            model.geometry ? model.geometry.getPointer() : root.getChildByUID(model.geometry_uid);
        auto* const mesh_node = dynamic_cast<SceneNodeMesh*>(geometry);
        if (!mesh_node || mesh_node->mesh || mesh_node->path.empty())
            return;
        const Ref<Mesh> mesh = new Mesh;
        getMeshLoader()(FileUtils::join(base_path, mesh_node->path), *mesh, mesh_node->scale);
        mesh_node->mesh = mesh;
        loaded_.push_back(mesh_node);
    }

    std::vector<SceneNodeMesh*> loaded_;
};

fs::path folderOf(const std::string& file) {
    const fs::path path = fs::absolute(nativePath(file));
    std::error_code fault; // long paths on Windows
    const fs::path real = fs::weakly_canonical(path, fault);
    return (fault ? path.lexically_normal() : real).parent_path();
}

} // namespace

std::string faultOfFile(const std::string& path, const std::string& fault) {
    return fault.find("'" + path + "'") != std::string::npos ? fault : path + ": " + fault;
}

void namingFile(const std::string& path, const std::function<void()>& work) {
    try {
        work();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        throw std::runtime_error(faultOfFile(path, error.what()));
    }
}

Ref<SceneNodeRoot> readScene(const std::string& path) {
    Ref<SceneNodeRoot> root;
    namingFile(path, [&] {
        QuenzaModelParser().parseScene(root, path, {}, "");
        const BorrowedMeshes borrowed(*root, FileUtils::getDirectory(path));
        SceneVisitor binding;
        binding.mode = SceneVisitor::BIND;
        root->visitAll(binding);
    });
    return root;
}

void writeScene(SceneNodeRoot& root, const std::string& path) {
    root.checkValidity();
    root.writeToXMLFile(path, false, nullptr);
}

std::vector<std::string> collectFiles(SceneNodeRoot& root) {
    SceneVisitor collecting;
    collecting.mode = SceneVisitor::COLLECT_DEPENDENCIES;
    root.visitAll(collecting);
    std::vector<std::string> files;
    std::set<std::string> known;
    for (const String& dependency : collecting.dependencies) {
        const std::string file = dependency.toStdString();
        if (!file.empty() && known.insert(file).second)
            files.push_back(file);
    }
    return files;
}

void renameFiles(SceneNodeRoot& root, const std::function<std::string(const std::string&)>& renamed) {
    SceneVisitor updating;
    updating.mode = SceneVisitor::UPDATE_DEPENDENCIES;
    updating.path_map.insert("", ""); // of meshes without a file
    for (const std::string& file : collectFiles(root))
        updating.path_map.insert(file, renamed(file));
    root.visitAll(updating);
}

void moveScene(SceneNodeRoot& root, const std::string& from, const std::string& to) {
    const fs::path old_folder = folderOf(from);
    const fs::path new_folder = folderOf(to);
    if (old_folder == new_folder)
        return;
    const fs::path way = old_folder.lexically_relative(new_folder);
    renameFiles(root, [&](const std::string& file) {
        const fs::path name = nativePath(file);
        if (name.is_absolute())
            return file;
        return genericUtf8Path(((way.empty() ? old_folder : way) / name).lexically_normal());
    });
}

std::string resolvedPath(const std::string& scene_path, const std::string& path) {
    return FileUtils::join(FileUtils::getDirectory(scene_path), path).toStdString();
}

} // namespace scene_tool
