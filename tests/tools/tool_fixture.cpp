// SPDX-License-Identifier: MIT
#include "tools/tool_fixture.h"

namespace {

/// A PNG image of one brown pixel.
const std::string
    WOOD("\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x00\x01\x00\x00\x00\x01"
         "\x08\x02\x00\x00\x00\x90\x77\x53\xde\x00\x00\x00\x0c\x49\x44\x41\x54\x78\x9c\x63\x58\x90\xa0\x00"
         "\x00\x02\xc4\x01\x21\x49\x5b\x9e\x1c\x00\x00\x00\x00\x49\x45\x4e\x44\xae\x42\x60\x82",
         69);

} // namespace

Tool::Tool() {
    write("scene.qzs", soundScene());
    write("images/wood.png", WOOD);
    std::filesystem::create_directory(path("scene_meshes"));
    Quenza::Mesh::writeToFile(path("scene_meshes/square.qzmesh"), square());
}

void Tool::write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
    Quenza::writeBytes(path(name), bytes);
}

std::string Tool::soundScene() {
    return Quenza::fileBytes(QUENZA_SOURCE_DIR "/tests/tools/golden/scene.qzs");
}

std::string Tool::edited(const std::string& from, const std::string& to) {
    std::string text = soundScene();
    const size_t at = text.find(from);
    if (at == std::string::npos) {
        ADD_FAILURE() << "the scene has no " << from;
        return text;
    }
    return text.replace(at, from.size(), to);
}

Quenza::Mesh Tool::square() {
    Quenza::Mesh mesh;
    mesh.setMaxNumTexcoordSets(1);
    mesh.addMaterialUsed("first");
    mesh.addMaterialUsed("second one");
    for (const Quenza::Vec3f& p :
         {Quenza::Vec3f{0, 0, 0}, Quenza::Vec3f{2, 0, 0}, Quenza::Vec3f{2, 1, 0}, Quenza::Vec3f{0, 1, 0}}) {
        mesh.addVertex(p, {0, 0, 1});
        Quenza::Vector<Quenza::Vec2f> uv;
        uv.push_back({p.x / 4, p.y});
        mesh.addUVs(uv);
    }
    const Quenza::u32 corners[] = {0, 1, 2, 3};
    mesh.addQuad(corners, corners, 1);
    mesh.addTriangle(corners, corners, 0);
    mesh.endOfModel();
    return mesh;
}
