// SPDX-License-Identifier: MIT
#include "scene/mesh.h"

#include "foundation/exceptions.h"
#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "scene/mesh_format.h"

#include <cstdio>
#include <memory>
#include <new>

namespace Quenza {

namespace {

/// Reads fields and counts what is left of the file, so that no count can ask for more memory than there are
/// bytes. An array that is cut short only marks the reader as failed, as a stream would: the next number then
/// can't be read.
class MeshReader {
public:
    explicit MeshReader(std::FILE* file) : file_(file) {
        const i64 size = PlatformUtils::openFileSize(file);
        remaining_ = size > 0 ? u64(size) : 0;
    }

    bool failed() const { return failed_; }

    u32 readU32() {
        u32 value = 0;
        if (!readBytes(&value, sizeof value))
            throw QuenzaException("Read failed.");
        return value;
    }
    String readString() {
        const u32 size = readU32();
        if (size > MeshFormat::MAX_STRING_BYTES)
            throw QuenzaException("String too long.");
        String text(size, '\0');
        if (!readBytes(text.data(), size))
            throw QuenzaException("Read failed.");
        return text;
    }
    void readStrings(Vector<String>& texts) {
        const u32 count = readCount();
        for (u32 i = 0; i < count; ++i)
            texts.push_back(readString());
    }
    void skipNamedIndices() {
        const u32 count = readCount();
        for (u32 i = 0; i < count; ++i) {
            readString();
            readU32();
        }
    }
    template <class T>
    void readArray(Vector<T>& values) {
        const u64 count = readCount();
        if (count * sizeof(T) > remaining_) {
            failed_ = true;
            return;
        }
        values.resize(count);
        readBytes(values.data(), count * sizeof(T));
    }

private:
    u32 readCount() {
        const u32 count = readU32();
        if (count > MeshFormat::MAX_COUNT)
            throw QuenzaException("Vector too long.");
        return count;
    }
    bool readBytes(void* out, u64 size) {
        if (!failed_ && size <= remaining_ && (size == 0 || std::fread(out, 1, size, file_) == size))
            remaining_ -= size;
        else
            failed_ = true;
        return !failed_;
    }

    std::FILE* file_;
    u64 remaining_;
    bool failed_ = false;
};

void readMesh(MeshReader& reader, Mesh& mesh) {
    if (reader.readU32() != MeshFormat::MAGIC)
        throw QuenzaException("Invalid magic number.");
    const u32 version = reader.readU32();
    if (version < MeshFormat::OLDEST_VERSION || version > MeshFormat::NEWEST_VERSION)
        throw QuenzaException("Unsupported format version.");
    mesh.num_uv_mappings = reader.readU32();
    reader.readStrings(mesh.used_materials);
    reader.skipNamedIndices();
    reader.readArray(mesh.vert_positions);
    reader.readArray(mesh.vert_normals);
    mesh.uv_layout = version >= MeshFormat::VERSION_WITH_UV_LAYOUT ? reader.readU32() : 0;
    if (mesh.uv_layout >= MeshFormat::NUM_UV_LAYOUTS)
        throw QuenzaException("Invalid uv_layout value " + toString(mesh.uv_layout));
    reader.readArray(mesh.uv_pairs);
    reader.readArray(mesh.triangles);
    if (version >= MeshFormat::VERSION_WITH_QUADS)
        reader.readArray(mesh.quads);
}

} // namespace

void Mesh::readFromFile(const String& path, Mesh& mesh) {
    const auto close = [](std::FILE* file) { std::fclose(file); };
    // A pipe would be waited for.
    std::FILE* const opened =
        PlatformUtils::isSpecialFile(path) ? nullptr : PlatformUtils::openFile(path, "rb");
    const std::unique_ptr<std::FILE, decltype(close)> file(opened, close);
    if (!file)
        throw QuenzaException("Failed to open file '" + path + "' for reading.");
    MeshReader reader(file.get());
    try {
        readMesh(reader, mesh);
    } catch (const std::bad_alloc&) {
        throw QuenzaException("Bad allocation while reading from file.");
    }
    if (reader.failed())
        throw QuenzaException("Error while reading from '" + path + "'.");
}

} // namespace Quenza
