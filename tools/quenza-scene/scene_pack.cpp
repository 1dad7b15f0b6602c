// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/scene_pack.h"

#include "foundation/file_utils.h"
#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "scene/mesh_file.h"
#include "scene/scene_node_mesh.h"
#include "tools/quenza-scene/scene_files.h"
#include "tools/quenza-scene/zip_writer.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <stdexcept>

namespace scene_tool {

namespace {

namespace fs = std::filesystem;
using namespace Quenza;

/// A new folder beside the archive, for what goes into it; it goes at the end.
class StagingFolder {
public:
    explicit StagingFolder(const std::string& zip_path) {
        for (u32 i = 0; i < MAX_TRIES; ++i) {
            path_ = zip_path + ".partial" + (i == 0 ? "" : toString(i));
            if (PlatformUtils::makeDirectory(path_))
                return;
            const std::string reason = PlatformUtils::lastErrorText().toStdString();
            if (!FileUtils::directoryExists(path_))
                throw std::runtime_error("can't write beside '" + zip_path + "': " + reason);
        }
        throw std::runtime_error("can't write beside '" + zip_path + "': '" + path_ +
                                 "' and its like are in the way");
    }
    ~StagingFolder() {
        Vector<String> names;
        PlatformUtils::listDirectory(path_, names);
        for (const String& name : names)
            PlatformUtils::removeFile(FileUtils::join(path_, name));
        PlatformUtils::removeDirectory(path_);
    }
    StagingFolder(const StagingFolder&) = delete;
    StagingFolder& operator=(const StagingFolder&) = delete;

    std::string operator/(const std::string& name) const {
        return FileUtils::join(path_, name).toStdString();
    }

private:
    static constexpr u32 MAX_TRIES = 100;

    std::string path_;
};

/// One text for all paths that lead to the file, where the system can tell.
std::string realPath(const std::string& path) {
    std::error_code fault;
    const fs::path real = fs::canonical(nativePath(path), fault);
    return fault ? utf8Path(fs::absolute(nativePath(path)).lexically_normal()) : utf8Path(real);
}

/// Characters that some system doesn't take in a file name.
bool isUnsafe(char c) {
    return static_cast<unsigned char>(c) < 32 || std::string_view("\\:*?\"<>|").find(c) != std::string::npos;
}

std::string numbered(const std::string& name, u32 number) {
    const fs::path path = nativePath(name);
    const std::string file = utf8Path(path.stem()) + "_" + toString(number) + utf8Path(path.extension());
    return genericUtf8Path(path.parent_path() / nativePath(file));
}

void requireFiles(const std::string& scene_path, const std::vector<std::string>& files) {
    std::string missing;
    for (const std::string& file : files) {
        const std::string path = resolvedPath(scene_path, file);
        const bool exists = FileUtils::fileExists(path);
        if (!exists || PlatformUtils::isSpecialFile(path))
            missing += (missing.empty() ? "'" : ", '") + file + (exists ? "' (no ordinary file)" : "'");
    }
    if (!missing.empty())
        throw std::runtime_error("'" + scene_path + "' can't be packed, files are missing: " + missing);
}

/// Packs one scene.
class Packing {
public:
    Packing(const std::string& scene_path, const std::string& zip_path)
        : scene_path_(scene_path), zip_path_(zip_path), staging_(zip_path), root_(readScene(scene_path)),
          scene_name_(names_.add(FileUtils::getFilename(scene_path).toStdString())) {}

    void run() {
        requireFiles(scene_path_, collectFiles(*root_));
        renameFiles(*root_, [this](const std::string& file) { return nameOf(file); });
        for (const Ref<SceneNode>& node : root_->getChildren())
            if (auto* const mesh_node = dynamic_cast<SceneNodeMesh*>(node.getPointer()))
                storeMesh(*mesh_node);
        writeScene(*root_, staging_ / "scene.qzs");
        writeArchive();
    }

private:
    /// The entry of a file; one for all paths that lead to it.
    std::string nameOf(const std::string& file) {
        const std::string path = resolvedPath(scene_path_, file);
        const auto [known, is_new] = name_of_file_.try_emplace(realPath(path));
        if (is_new) {
            known->second = names_.add(file);
            sources_[known->second] = path;
        }
        return known->second;
    }

    /// A mesh in the scene itself becomes a file.
    void storeMesh(SceneNodeMesh& node) {
        if (!node.mesh)
            return;
        const std::string file = getMeshFileName(*node.mesh).toStdString();
        const std::string source = staging_ / file;
        const auto [known, is_new] = name_of_file_.try_emplace(source);
        if (is_new) {
            Mesh::writeToFile(source, *node.mesh);
            known->second =
                names_.add(FileUtils::removeExtension(scene_name_).toStdString() + "_meshes/" + file);
            sources_[known->second] = source;
        }
        node.releaseMesh(known->second);
    }

    void writeArchive() {
        const std::string partial = staging_ / "archive.zip";
        ZipWriter zip(partial);
        zip.addFile(scene_name_, staging_ / "scene.qzs");
        for (const auto& [name, source] : sources_)
            zip.addFile(name, source);
        zip.finish();
        FileUtils::moveFile(partial, zip_path_);
    }

    std::string scene_path_;
    std::string zip_path_;
    StagingFolder staging_;
    Ref<SceneNodeRoot> root_;
    ArchiveNames names_;
    std::string scene_name_;
    std::map<std::string, std::string> name_of_file_; ///< By the file's real path.
    std::map<std::string, std::string> sources_;      ///< By entry.
};

} // namespace

std::string ArchiveNames::add(const std::string& path) {
    const fs::path way = nativePath(path).lexically_normal();
    const bool inside = way.is_relative() && !way.has_root_name() && *way.begin() != ".." && way != ".";
    std::string name = inside ? genericUtf8Path(way) : "external/" + utf8Path(way.filename());
    std::replace_if(name.begin(), name.end(), isUnsafe, '_');
    const std::string wanted = name;
    for (u32 number = 2; !taken_.insert(toLowerCase(name)).second; ++number)
        name = numbered(wanted, number);
    return name;
}

void packScene(const std::string& scene_path, const std::string& zip_path) {
    Packing(scene_path, zip_path).run();
}

} // namespace scene_tool
