// SPDX-License-Identifier: MIT
#include "reading/model_files.h"

#include <string>

namespace Quenza {
namespace {

class ObjDecoderTest : public ModelFilesTest {
protected:
    std::string loadObj(const std::string& text, double scale = 1) { return loadBytes("m.obj", text, scale); }
};

const std::string FOUR = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";
const std::string FOUR_VERTICES = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

TEST_F(ObjDecoderTest, ReadsFacesOfAllForms) {
    const struct {
        const char* what;
        std::string file;
        std::string mesh;
    } cases[] = {
        {"positions", FOUR + "f 1 2 3 4\nf 1 2 3\n",
         "material default\n" + FOUR_VERTICES + "triangle 0 1 2 m 0\nquad 0 1 2 3 m 0\n"},
        {"no more than what faces use, in their order", FOUR + "v 5 5 5\nf 4 3 1\n",
         "material default\nv 0 1 0\nv 1 1 0\nv 0 0 0\ntriangle 0 1 2 m 0\n"},
        {"indices from the end, before more positions", FOUR + "f -4 -3 -1\nv 7 7 7\nf -1 -2 -4\n",
         "material default\nv 0 0 0\nv 1 0 0\nv 0 1 0\nv 7 7 7\ntriangle 0 1 2 m 0\ntriangle 3 2 1 m 0\n"},
        {"texture coordinates", FOUR + "vt 0 0\nvt .5 1 9\nf 1/1 2/2 3/1\nf 1/1 3/1 4/-1\n",
         "material default\n" + FOUR_VERTICES +
             "uv 0 0\nuv 0.5 1\nuv 0 0\nuv 0.5 1\ntriangle 0 1 2 uv 0 1 2 m 0\ntriangle 0 2 3 uv 0 2 3 m "
             "0\n"},
        {"texture coordinates of some corners", FOUR + "vt .5 1\nf 1 2 3\nf 1 3/1 4\n",
         "material default\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 1 1 0\nv 0 1 0\n"
         "uv 0 0\nuv 0 0\nuv 0 0\nuv 0.5 1\nuv 0 0\ntriangle 0 1 2 uv 0 1 2 m 0\ntriangle 0 3 4 uv 0 3 4 m "
         "0\n"},
        {"normals", FOUR + "vn 0 0 2\nvn 0 -3 0\nf 1//1 2//1 3//2\nf 1//2 3//2 4//1\nf 1//1 2//1 4//1\n",
         "material default\nv 0 0 0 n 0 0 1\nv 1 0 0 n 0 0 1\nv 1 1 0 n 0 -1 0\nv 0 0 0 n 0 -1 0\n"
         "v 0 1 0 n 0 0 1\ntriangle 0 1 2 m 0\ntriangle 3 2 4 m 0\ntriangle 0 1 4 m 0\n"},
        {"all three", FOUR + "vt 1 0\nvn 1 0 0\nf 1/1/1 2/1/1 3/1/-1 4/1/1\n",
         "material default\nv 0 0 0 n 1 0 0\nv 1 0 0 n 1 0 0\nv 1 1 0 n 1 0 0\nv 0 1 0 n 1 0 0\n"
         "uv 1 0\nuv 1 0\nuv 1 0\nuv 1 0\nquad 0 1 2 3 uv 0 1 2 3 m 0\n"},
        {"normals that can't be normalised as they are",
         FOUR + "vn 0 0 0\nvn 0 1e30 0\nvn 0 0 -1e-30\nf 1//1 2//2 3//3\n",
         "material default\nv 0 0 0 n 1 0 0\nv 1 0 0 n 0 1 0\nv 1 1 0 n 0 0 -1\ntriangle 0 1 2 m 0\n"},
        {"a triangle without area, which is left out, and a quad without", FOUR + "f 1 1 2\nf 1 1 1 1\n",
         "material default\nv 0 0 0\nv 1 0 0\nquad 0 0 0 0 m 0\n"},
        {"nothing", "", "material default\n"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(loadObj(test.file), test.mesh) << test.what;
}

// A position with many kinds of corners must not lose or double any.
TEST_F(ObjDecoderTest, MergesEqualCornersOfOnePosition) {
    std::string file = FOUR;
    const int kinds = 3000;
    for (int i = 0; i < kinds; ++i)
        file += "vt " + std::to_string(i) + " 0\n";
    for (int round = 0; round < 2; ++round)
        for (int i = 1; i <= kinds; ++i)
            file += "f 1/" + std::to_string(i) + " 2 3\n";
    Mesh mesh;
    writeBytes(dir / "m.obj", file);
    ModelLoader().streamModel(dir / "m.obj", mesh, 1);
    ASSERT_EQ(mesh.vert_positions.size(), u64(kinds) + 2);
    ASSERT_EQ(mesh.triangles.size(), 2u * kinds);
    for (u64 i = 0; i < mesh.triangles.size(); ++i) {
        const u32 uv_entry = mesh.triangles[i].uv_indices[0];
        EXPECT_EQ(mesh.uv_pairs[uv_entry], (Vec2f{float(i % kinds), 0}));
    }
}

TEST_F(ObjDecoderTest, ReadsLinesOfAllForms) {
    const std::string expected =
        "material default\n" + FOUR_VERTICES + "triangle 0 1 2 m 0\nquad 0 1 2 3 m 0\n";
    const std::string file =
        "# comment v 1\n\no name\n  \t v 0 +0 0 0.5 0.5 0.5\nv\t1.e0   0 00.\n  vp 1\n"
        "v 10e-1 1 0 trailing\ns off\nv 0 1 0  \nf 1 2 3 \nmtllib f 1 2 3\nf\t1 2  3\t4 # quad";
    EXPECT_EQ(loadObj(file), expected);
    std::string with_cr;
    for (const char c : file)
        with_cr += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(loadObj(with_cr), expected);
    EXPECT_EQ(loadObj("\xEF\xBB\xBF" + FOUR + "f 1 2 3\nf 1 2 3 4"), expected);
}

TEST_F(ObjDecoderTest, TellsWhatIsWrong) {
    std::string long_face = FOUR + "f";
    for (int i = 0; i < 1000; ++i)
        long_face += " 1";
    const struct {
        std::string file;
        const char* error;
    } cases[] = {
        {"v 1 2\n3", "Parse error while reading position on line 1"},
        {"#\n\nv", "Parse error while reading position on line 3"},
        {"#\r\n\r\nv 1 x 3", "Parse error while reading position on line 3"},
        {"v 1 2 nan", "Parse error while reading position on line 1"},
        {"v 1 2 1e39", "Parse error while reading position on line 1"},
        {"vt 1", "Parse error while reading tex coord on line 1"},
        {"v 0 0 0\nvn 1 2", "Parse error while reading normal on line 2"},
        {FOUR + "f", "syntax error: no integer following 'f' (line 5)"},
        {FOUR + "f #", "syntax error: no integer following 'f' (line 5)"},
        {FOUR + "f a", "syntax error: no integer following 'f' (line 5)"},
        {FOUR + "f 1 2 3x", "syntax error: no integer following 'f' (line 5)"},
        {FOUR + "f 1 2 99999999999", "syntax error: no integer following 'f' (line 5)"},
        {FOUR + "f 1/ 2 3", "syntax error: no integer following '/' (line 5)"},
        {FOUR + "vt 0 0\nf 1/1/ 2 3", "syntax error: no integer following '/' (line 6)"},
        {FOUR + "f 1//", "syntax error: no integer following '/' (line 5)"},
        {FOUR + "f 1 2 5", "Position index invalid. (index '5' out of bounds, on line 5)"},
        {FOUR + "f 0 1 2", "Position index invalid. (index '0' out of bounds, on line 5)"},
        {FOUR + "f 1 2 -5", "Position index invalid. (index '-5' out of bounds, on line 5)"},
        {FOUR + "f 1 2 -2147483648",
         "Position index invalid. (index '-2147483648' out of bounds, on line 5)"},
        {FOUR + "f 1/1 2 3", "Invalid tex coord index. (index '1' out of bounds, on line 5)"},
        {FOUR + "vn 0 0 1\nf 1//2 2 3", "Invalid normal index. (index '2' out of bounds, on line 6)"},
        {FOUR + "vt 0 0\nf 1/1/1 2 3", "Normal index invalid. (index '1' out of bounds, on line 6)"},
        {FOUR + "f 1", "Invalid number of vertices in face: 1"},
        {FOUR + "f 1 2", "Invalid number of vertices in face: 2"},
        {FOUR + "f 1 2 3 4 1", "Invalid number of vertices in face: 5"},
        {long_face, "Invalid number of vertices in face: 256"},
        {FOUR + "vn 0 0 1\nf 1//1 2//1 3", "Must be zero normals, or normals.size() must equal verts.size()"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(loadObj(test.file), std::string("error: ") + test.error) << test.file.substr(0, 80);
    EXPECT_EQ(loadObj("v 1 2 1e38", 1e3), "error: Parse error while reading position on line 1");
}

} // namespace
} // namespace Quenza
