// SPDX-License-Identifier: MIT
#include "reading/obj_decoder.h"

#include "foundation/mapped_file.h"
#include "foundation/string_utils.h"
#include "foundation/text_cursor.h"
#include "reading/byte_order_mark.h"
#include "reading/obj_corner_merge.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>

namespace Quenza {

namespace {

/// Corners that are read of a face; it's refused anyway.
constexpr u32 MAX_CORNERS = 256;

/// A normal that the mesh can take: extreme lengths are made 1, and one without a direction, which files of
/// many exporters have at collapsed faces, becomes (1, 0, 0) as in the export.
Vec3f usableNormal(const Vec3f& n) {
    const f32 squared = n.x * n.x + n.y * n.y + n.z * n.z;
    if (squared >= std::numeric_limits<f32>::min() && squared <= std::numeric_limits<f32>::max())
        return n;
    const double length = std::hypot(double(n.x), double(n.y), double(n.z));
    if (length == 0)
        return {1, 0, 0};
    return {f32(double(n.x) / length), f32(double(n.y) / length), f32(double(n.z) / length)};
}

class ObjReader {
public:
    ObjReader(std::string_view text, Mesh& mesh, double scale)
        : cursor_(text), mesh_(mesh), scale_(scale), merge_(mesh) {}

    void read() {
        for (; !cursor_.atEnd(); ++line_) {
            readLine();
            skipLine();
        }
        if (mesh_.used_materials.empty())
            mesh_.used_materials.push_back("default");
    }

private:
    void readLine();
    void readPosition();
    void readTexCoord();
    void readNormal();
    void readMaterial();
    void readFace();
    ObjCorner readCorner();
    u32 readIndex(u64 count, const char* token, const char* fault);
    void addFace(const ObjCorner* corners, u32 count);

    bool readNumbers(f32* numbers, u32 count);
    bool atLineEnd() const { return cursor_.atEnd() || cursor_.peek() == '\n' || cursor_.peek() == '\r'; }
    /// To the start of the next line, or the end.
    void skipLine();
    const char* lineEnd() const;
    std::string lineNumber() const { return toString(line_); }

    TextCursor cursor_;
    u64 line_ = 1;
    Mesh& mesh_;
    double scale_;
    ObjCornerMerge merge_;
    std::unordered_map<std::string, u32> material_indices_;
    u32 material_index_ = 0;
};

void ObjReader::readLine() {
    cursor_.skipBlanks();
    if (atLineEnd() || cursor_.peek() == '#')
        return;
    const std::string_view token = cursor_.parseToken();
    if (token == "v")
        readPosition();
    else if (token == "f")
        readFace();
    else if (token == "vt")
        readTexCoord();
    else if (token == "vn")
        readNormal();
    else if (token == "usemtl")
        readMaterial();
}

const char* ObjReader::lineEnd() const {
    const char* const at = cursor_.position();
    const void* const found = std::memchr(at, '\n', std::size_t(cursor_.end() - at));
    return found ? static_cast<const char*>(found) : cursor_.end();
}

void ObjReader::skipLine() {
    if (cursor_.atEnd())
        return;
    cursor_.advance(u64(lineEnd() - cursor_.position()));
    if (!cursor_.atEnd())
        cursor_.advance();
}

bool ObjReader::readNumbers(f32* numbers, u32 count) {
    for (u32 i = 0; i < count; ++i) {
        cursor_.skipBlanks();
        if (!cursor_.parseFloat(numbers[i]))
            return false;
    }
    return true;
}

void ObjReader::readPosition() {
    f32 p[3];
    bool good = readNumbers(p, 3);
    for (f32& coordinate : p) {
        coordinate = good ? f32(double(coordinate) * scale_) : 0.0f;
        good = good && std::isfinite(coordinate);
    }
    if (!good)
        throw ModelLoaderExcep("Parse error while reading position on line " + lineNumber());
    merge_.addPosition({p[0], p[1], p[2]});
}

void ObjReader::readTexCoord() {
    f32 t[2];
    if (!readNumbers(t, 2))
        throw ModelLoaderExcep("Parse error while reading tex coord on line " + lineNumber());
    merge_.tex_coords.push_back({t[0], t[1]});
}

void ObjReader::readNormal() {
    f32 n[3];
    if (!readNumbers(n, 3))
        throw ModelLoaderExcep("Parse error while reading normal on line " + lineNumber());
    merge_.normals.push_back(usableNormal({n[0], n[1], n[2]}));
}

void ObjReader::readMaterial() {
    cursor_.skipBlanks();
    const char* const start = cursor_.position();
    const char* end = lineEnd();
    while (end != start && TextCursor::isWhitespace(end[-1]))
        --end;
    const auto [entry, is_new] =
        material_indices_.try_emplace(std::string(start, end), u32(mesh_.used_materials.size()));
    if (is_new)
        mesh_.used_materials.push_back(entry->first);
    material_index_ = entry->second;
}

void ObjReader::readFace() {
    ObjCorner corners[MAX_CORNERS];
    u32 count = 0;
    cursor_.skipBlanks();
    // A face without a corner is told as one whose first corner is no number.
    do {
        corners[count++] = readCorner();
        cursor_.skipBlanks();
    } while (count < MAX_CORNERS && !atLineEnd() && cursor_.peek() != '#');
    addFace(corners, count);
}

ObjCorner ObjReader::readCorner() {
    ObjCorner corner = {0, ObjCorner::NONE, ObjCorner::NONE};
    corner.position = readIndex(merge_.numPositions(), "f", "Position index invalid.");
    if (cursor_.atEnd() || cursor_.peek() != '/')
        return corner;
    cursor_.advance();
    const bool has_tex_coord = cursor_.atEnd() || cursor_.peek() != '/';
    if (has_tex_coord) {
        corner.tex_coord = readIndex(merge_.tex_coords.size(), "/", "Invalid tex coord index.");
        if (cursor_.atEnd() || cursor_.peek() != '/')
            return corner;
    }
    cursor_.advance();
    // The two texts are meant: the form of the corner can be told from them.
    corner.normal = readIndex(merge_.normals.size(), "/",
                              has_tex_coord ? "Normal index invalid." : "Invalid normal index.");
    return corner;
}

/// Reads an index, which counts from 1 or, when negative, from the end of the list so far; returns the place
/// in the list.
u32 ObjReader::readIndex(u64 count, const char* token, const char* fault) {
    i32 index = 0;
    if (!cursor_.parseInt(index))
        throw ModelLoaderExcep(String("syntax error: no integer following '") + token + "' (line " +
                               lineNumber() + ")");
    const i64 place = index < 0 ? i64(count) + index : i64(index) - 1;
    if (place < 0 || place >= i64(count))
        throw ModelLoaderExcep(String(fault) + " (index '" + toString(index) + "' out of bounds, on line " +
                               lineNumber() + ")");
    return u32(place);
}

void ObjReader::addFace(const ObjCorner* corners, u32 count) {
    if (count != 3 && count != 4)
        throw ModelLoaderExcep("Invalid number of vertices in face: " + toString(count));
    // Each vertex has the UV entry of its own number.
    u32 v[4];
    for (u32 i = 0; i < count; ++i)
        v[i] = merge_.vertexFor(corners[i]);
    if (count == 3)
        mesh_.addTriangle(v, v, material_index_);
    else
        mesh_.quads.push_back({{v[0], v[1], v[2], v[3]}, {v[0], v[1], v[2], v[3]}, material_index_});
}

/// Faces of a mesh without UVs have UV indices of zero.
void clearUVIndices(Mesh& mesh) {
    for (MeshTriangle& triangle : mesh.triangles)
        for (u32& index : triangle.uv_indices)
            index = 0;
    for (MeshQuad& quad : mesh.quads)
        for (u32& index : quad.uv_indices)
            index = 0;
}

} // namespace

void FormatDecoderObj::streamModel(const String& path, Mesh& mesh, double scale) {
    const MappedFile file(path);
    std::string_view text = file.bytes();
    if (text.starts_with(BYTE_ORDER_MARK))
        text.remove_prefix(BYTE_ORDER_MARK.size());
    ObjReader(text, mesh, scale).read();
    if (mesh.num_uv_mappings == 0)
        clearUVIndices(mesh);
    mesh.endOfModel();
}

} // namespace Quenza
