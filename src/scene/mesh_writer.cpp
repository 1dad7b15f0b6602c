// SPDX-License-Identifier: MIT
#include "scene/mesh.h"

#include "foundation/exceptions.h"
#include "foundation/safe_file.h"
#include "scene/mesh_format.h"

namespace Quenza {

namespace {

/// Gathers small fields and hands arrays to the file in one piece.
class MeshWriter {
public:
    explicit MeshWriter(SafeFile& file) : file_(file) {}

    void writeU32(u32 value) { small_.append(reinterpret_cast<const char*>(&value), sizeof value); }
    void writeString(const String& text) {
        if (text.size() > MeshFormat::MAX_STRING_BYTES)
            throw QuenzaException("String too long.");
        writeU32(u32(text.size()));
        small_ += text;
    }
    void writeStrings(const Vector<String>& texts) {
        writeCount(texts.size());
        for (const String& text : texts)
            writeString(text);
    }
    template <class T>
    void writeArray(const Vector<T>& values) {
        writeCount(values.size());
        flush();
        file_.write(values.data(), values.size() * sizeof(T));
    }
    void flush() {
        file_.write(small_.data(), small_.size());
        small_.clear();
    }

private:
    void writeCount(u64 count) {
        if (count > MeshFormat::MAX_COUNT)
            throw QuenzaException("Vector too long.");
        writeU32(u32(count));
    }

    SafeFile& file_;
    String small_;
};

} // namespace

void Mesh::writeToFile(const String& path, const Mesh& mesh) {
    mesh.checkInvariants();
    SafeFile file(path, SafeFile::Mode::BINARY);
    if (!file.isOpen())
        throw QuenzaException("Failed to open file '" + path + "' for writing.");
    file.keepPartialFile();

    MeshWriter writer(file);
    writer.writeU32(MeshFormat::MAGIC);
    writer.writeU32(MeshFormat::NEWEST_VERSION);
    writer.writeU32(mesh.num_uv_mappings);
    writer.writeStrings(mesh.used_materials);
    writer.writeU32(0); // no UV set names
    writer.writeArray(mesh.vert_positions);
    writer.writeArray(mesh.vert_normals);
    writer.writeU32(mesh.uv_layout);
    writer.writeArray(mesh.uv_pairs);
    writer.writeArray(mesh.triangles);
    writer.writeArray(mesh.quads);
    writer.flush();
    if (!file.commit())
        throw QuenzaException("Error while writing to '" + path + "'.");
}

} // namespace Quenza
