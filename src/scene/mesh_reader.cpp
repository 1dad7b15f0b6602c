// SPDX-License-Identifier: MIT
#include "scene/mesh.h"

#include "foundation/exceptions.h"
#include "foundation/parallel.h"
#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "scene/mesh_format.h"
#include "scene/mesh_measure.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <mutex>
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
        size_ = size > 0 ? u64(size) : 0;
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
    /// Hands the records to `take(part, records, count)` piece by piece, while the processor still has them
    /// at hand; `part` comes to `measure`. Large arrays are read by all processors, since most of the time
    /// goes into copying, and into the zeros that the system puts into fresh memory.
    template <class T, class Take>
    void readArray(Vector<T>& values, MeshMeasure& measure, const Take& take) {
        const u64 count = readCount();
        const u64 size = count * sizeof(T);
        if (failed_ || size > size_ - position_) {
            failed_ = true;
            return;
        }
        values.resize(count);
        std::mutex mutex;
        parallelFor(count, THREAD_BYTES / sizeof(T), [&](std::size_t begin, std::size_t end) {
            MeshMeasure part;
            const bool complete = readRange(values.data(), begin, end,
                                            [&](T* records, u64 number) { take(part, records, number); });
            const std::lock_guard lock(mutex);
            measure.take(part);
            failed_ = failed_ || !complete;
        });
        position_ += size;
        failed_ = failed_ || !PlatformUtils::seekFile(file_, i64(position_));
    }

private:
    /// Fits a processor's cache of the second level.
    static constexpr u64 PIECE_BYTES = u64(1) << 18;
    /// Worth a thread.
    static constexpr u64 THREAD_BYTES = u64(1) << 22;

    u32 readCount() {
        const u32 count = readU32();
        if (count > MeshFormat::MAX_COUNT)
            throw QuenzaException("Vector too long.");
        return count;
    }
    bool readBytes(void* out, u64 size) {
        if (!failed_ && size <= size_ - position_ && (size == 0 || std::fread(out, 1, size, file_) == size))
            position_ += size;
        else
            failed_ = true;
        return !failed_;
    }
    /// Of the array of records that begins here.
    template <class T, class Take>
    bool readRange(T* values, u64 begin, u64 end, const Take& take) const {
        while (begin < end) {
            const u64 number = std::min(end - begin, PIECE_BYTES / sizeof(T));
            if (!PlatformUtils::readFileAt(file_, i64(position_ + begin * sizeof(T)), values + begin,
                                           number * sizeof(T)))
                return false;
            take(values + begin, number);
            begin += number;
        }
        return true;
    }

    std::FILE* file_;
    u64 size_;
    u64 position_ = 0;
    bool failed_ = false;
};

void scale(Vec3f* positions, u64 count, f32 factor) {
    if (factor == 1.0f)
        return;
    for (Vec3f* v = positions; v != positions + count; ++v)
        *v = Vec3f{v->x * factor, v->y * factor, v->z * factor};
}

void readMesh(MeshReader& reader, Mesh& mesh, f32 factor, MeshMeasure& measure) {
    const auto take_positions = [factor](MeshMeasure& part, Vec3f* positions, u64 count) {
        scale(positions, count, factor);
        part.takePositions(positions, count);
    };
    const auto take_faces = [](MeshMeasure& part, const auto* faces, u64 count) {
        part.takeFaces(faces, count);
    };
    const auto take_other = [](MeshMeasure&, const auto*, u64) {};
    if (reader.readU32() != MeshFormat::MAGIC)
        throw QuenzaException("Invalid magic number.");
    const u32 version = reader.readU32();
    if (version < MeshFormat::OLDEST_VERSION || version > MeshFormat::NEWEST_VERSION)
        throw QuenzaException("Unsupported format version.");
    mesh.num_uv_mappings = reader.readU32();
    reader.readStrings(mesh.used_materials);
    reader.skipNamedIndices();
    reader.readArray(mesh.vert_positions, measure, take_positions);
    reader.readArray(mesh.vert_normals, measure, take_other);
    mesh.uv_layout = version >= MeshFormat::VERSION_WITH_UV_LAYOUT ? reader.readU32() : 0;
    if (mesh.uv_layout >= MeshFormat::NUM_UV_LAYOUTS)
        throw QuenzaException("Invalid uv_layout value " + toString(mesh.uv_layout));
    reader.readArray(mesh.uv_pairs, measure, take_other);
    reader.readArray(mesh.triangles, measure, take_faces);
    if (version >= MeshFormat::VERSION_WITH_QUADS)
        reader.readArray(mesh.quads, measure, take_faces);
}

MeshMeasure readFile(const String& path, Mesh& mesh, f32 factor) {
    const auto close = [](std::FILE* file) { std::fclose(file); };
    // A pipe would be waited for.
    std::FILE* const opened =
        PlatformUtils::isSpecialFile(path) ? nullptr : PlatformUtils::openFile(path, "rb");
    const std::unique_ptr<std::FILE, decltype(close)> file(opened, close);
    if (!file)
        throw QuenzaException("Failed to open file '" + path + "' for reading.");
    MeshReader reader(file.get());
    MeshMeasure measure;
    try {
        readMesh(reader, mesh, factor, measure);
    } catch (const std::bad_alloc&) {
        throw QuenzaException("Bad allocation while reading from file.");
    }
    if (reader.failed())
        throw QuenzaException("Error while reading from '" + path + "'.");
    return measure;
}

} // namespace

void Mesh::readFromFile(const String& path, Mesh& mesh) {
    readFile(path, mesh, 1.0f);
}

void Mesh::readCheckedFromFile(const String& path, Mesh& mesh, f32 factor) {
    mesh.endOfUncheckedModel(readFile(path, mesh, factor));
}

} // namespace Quenza
