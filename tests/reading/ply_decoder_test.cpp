// SPDX-License-Identifier: MIT
#include "reading/model_files.h"

#include <cstring>
#include <limits>
#include <string>

namespace Quenza {
namespace {

class PlyDecoderTest : public ModelFilesTest {
protected:
    std::string loadPly(const std::string& bytes, double scale = 1) {
        return loadBytes("m.ply", bytes, scale);
    }
};

std::string asciiFile(const std::string& vertices, const std::string& faces, const std::string& body) {
    return "ply\nformat ascii 1.0\nelement vertex " + vertices +
           "\nproperty float x\nproperty float y\nproperty float z\nelement face " + faces +
           "\nend_header\n" + body;
}
const std::string LIST = "\nproperty list uchar int vertex_indices";
const std::string PLY_FOUR = "0 0 0 1 0 0 1 1 0 0 1 0 ";
const std::string PLY_FOUR_VERTICES = "material default\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

template <class... Numbers>
std::string littleEndian(Numbers... numbers) {
    std::string bytes;
    const auto append = [&bytes](auto number) {
        char raw[sizeof number];
        std::memcpy(raw, &number, sizeof number);
        bytes.append(raw, sizeof number);
    };
    (append(numbers), ...);
    return bytes;
}

/// A triangle and a quad over four vertices, with properties between that nobody needs.
std::string binaryFile(float last_coordinate = 0) {
    std::string file = "ply\r\nformat binary_little_endian 1.0\r\nelement vertex 4\r\nproperty double z\r\n"
                       "property uchar red\r\nproperty float x\r\nproperty float y\r\nelement face 2\r\n"
                       "property list uchar float texcoord\r\nproperty list ushort uint vertex_index\r\n"
                       "end_header\r\n";
    const char red = 1;
    file +=
        littleEndian(0.0, red, 0.0f, 0.0f, 0.0, red, 1.0f, 0.0f, 0.0, red, 1.0f, 1.0f, 0.0, red, 0.0f, 1.0f);
    file += littleEndian(char(1), 7.0f, std::uint16_t(4), 0u, 1u, 2u, 3u);
    file += littleEndian(char(0), std::uint16_t(3), 2u, 1u, 0u);
    if (last_coordinate != 0) // the last vertex lies before two faces of 23 and 15 bytes
        file.replace(file.size() - 15 - 23 - 4, 4, littleEndian(last_coordinate));
    return file;
}
const std::string BINARY_MESH = PLY_FOUR_VERTICES + "triangle 2 1 0 m 0\nquad 0 1 2 3 m 0\n";

TEST_F(PlyDecoderTest, ReadsTrianglesAndQuads) {
    EXPECT_EQ(loadPly(asciiFile("4", "2" + LIST, PLY_FOUR + "4 0 1 2 3 3 2 1 0")), BINARY_MESH);
    EXPECT_EQ(loadPly(binaryFile()), BINARY_MESH);
    EXPECT_EQ(loadPly(binaryFile(), -2), "material default\nv -0 -0 -0\nv -2 -0 -0\nv -2 -2 -0\nv -0 -2 "
                                         "-0\ntriangle 2 1 0 m 0\nquad 0 1 2 3 m 0\n");
    EXPECT_EQ(loadPly(asciiFile("4", "0", PLY_FOUR)), PLY_FOUR_VERTICES);
    EXPECT_EQ(loadPly(asciiFile("4", "1" + LIST, PLY_FOUR + "3 1 1 2")), PLY_FOUR_VERTICES)
        << "a triangle without area";
    EXPECT_EQ(loadPly("ply\nformat ascii 1.0\nelement face 1" + LIST +
                      "\nelement vertex 3\nproperty int x\nproperty int y\nproperty int z\nend_header\n"
                      "3 0 1 2 0 0 0 1 0 0 0 1 0"),
              "material default\nv 0 0 0\nv 1 0 0\nv 0 1 0\ntriangle 0 1 2 m 0\n")
        << "faces may come first";
}

TEST_F(PlyDecoderTest, TellsWhatIsWrong) {
    const std::string path = (dir / "m.ply").toStdString();
    const std::string float_list = "\nproperty list uint double vertex_indices";
    // The reader counts in this type.
    const char* const many = sizeof(long) > 4 ? "read of body failed." : "could not read header.";
    const struct {
        std::string file;
        std::string error;
    } cases[] = {
        {"", "could not open file '" + path + "' for reading."},
        {"solid", "could not open file '" + path + "' for reading."},
        {"ply\nformat ascii 1.0\nelement vertex -4\nend_header\n", "could not read header."},
        {asciiFile("2000000000", "0", "1 2 3"), "read of body failed."},
        {asciiFile("4000000000000000000", "0", "1 2 3"), many},
        {asciiFile("4", "2000000000" + LIST, PLY_FOUR), "read of body failed."},
        {asciiFile("4", "4000000000" + LIST, PLY_FOUR), many},
        {asciiFile("1", "0", "0 0 nan"), "read of body failed."},
        {asciiFile("1", "0", "0 0 inf"), "read of body failed."},
        {binaryFile(std::numeric_limits<float>::quiet_NaN()), "read of body failed."},
        {asciiFile("4", "1" + LIST, PLY_FOUR + "5 0 1 2 3 0"), "Invalid number of vertices in face: 5"},
        {asciiFile("4", "1" + LIST, PLY_FOUR + "2 0 1"), "Invalid number of vertices in face: 2"},
        {asciiFile("4", "1" + LIST, PLY_FOUR + "0"), "Invalid number of vertices in face: 0"},
        {asciiFile("4", "1" + float_list, PLY_FOUR + "2000000000 1"),
         "Invalid number of vertices in face: 2000000000"},
        {asciiFile("4", "1" + float_list, PLY_FOUR + "4000000000 1"),
         sizeof(long) > 4 ? "Invalid number of vertices in face: 4000000000" : "read of body failed."},
        {asciiFile("4", "1\nproperty list char int vertex_indices", PLY_FOUR + "-1"), "read of body failed."},
        {asciiFile("4", "1" + LIST, PLY_FOUR + "3 0 1 4"),
         "Triangle vertex index is out of bounds. (vertex index=4)"},
        {asciiFile("4", "1" + LIST, PLY_FOUR + "4 0 1 4 0"),
         "Quad vertex index is out of bounds. (vertex index=4)"},
        {asciiFile("4", "1" + LIST, PLY_FOUR + "3 0 -1 2"),
         "Triangle vertex index is out of bounds. (vertex index=-1)"},
        {asciiFile("4", "1" + float_list, PLY_FOUR + "4 0 1 2 0.5"),
         "Quad vertex index is out of bounds. (vertex index=0.5)"},
        {asciiFile("4", "1" + float_list, PLY_FOUR + "4 0 1 2 1e10"),
         "Quad vertex index is out of bounds. (vertex index=10000000000)"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(loadPly(test.file), "error: " + test.error) << test.file.substr(0, 400);
    EXPECT_EQ(loadPly(asciiFile("1", "0", "0 0 1e38"), 1e3), "error: read of body failed.");
}

TEST_F(PlyDecoderTest, FailsAtEveryTruncationOfABody) {
    const std::string whole = binaryFile();
    const std::size_t body = whole.find("end_header\r\n") + 12;
    for (std::size_t size = body; size < whole.size(); ++size)
        EXPECT_EQ(loadPly(whole.substr(0, size)), "error: read of body failed.") << size;
}

} // namespace
} // namespace Quenza
