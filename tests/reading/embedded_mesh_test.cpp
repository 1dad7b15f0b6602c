// SPDX-License-Identifier: MIT
#include "reading/embedded_mesh.h"

#include "reading/model_files.h"
#include "support/thrown_message.h"

#include <string>
#include <tinyxml.h>

namespace Quenza {
namespace {

using Reader = void (*)(const TiXmlElement&, Mesh&, double);

/// meshText of an element's mesh, or "error: " and the message.
std::string read(const std::string& xml, double scale = 1) {
    TiXmlDocument document;
    document.Parse(xml.c_str());
    EXPECT_FALSE(document.Error()) << document.ErrorDesc() << '\n' << xml;
    const TiXmlElement& root = *document.RootElement();
    const Reader reader = root.ValueStr() == "embedded" ? readEmbeddedMesh : readEmbedded2Mesh;
    Mesh mesh;
    const std::string error = thrownMessage<MessageExcep>([&] { reader(root, mesh, scale); });
    return error == "no exception" ? meshText(mesh) : "error: " + error;
}

std::string embedded(const std::string& content) {
    return "<embedded>\n" + content + "</embedded>";
}
std::string embedded2(const std::string& content) {
    return "<embedded_2>\n" + content + "</embedded_2>";
}

const std::string FOUR =
    "<vertex pos='0 0 0'/><vertex pos='1 0 0'/>\n<vertex pos='1 1 0'/><vertex pos='0 1 0'/>\n";
const std::string FOUR_VERTICES = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

TEST(EmbeddedMeshTest, ReadsTheOlderForm) {
    EXPECT_EQ(read(embedded("<vertex pos='0 0 0' normal='0 0 2' uv1='0.5 1'/>"
                            "<!-- a comment --><vertex pos=' 2 0\t0\n' normal='0 1 0' uv0='3 4'/>"
                            "<triangle_set><material_name>red</material_name><tri>0 1 2</tri>"
                            "<tri> 2 1 0 <!-- one more --></tri></triangle_set>"
                            "<triangle_set><tri>0 2 1</tri><material_name>blue</material_name></triangle_set>"
                            "<triangle_set><material_name>red</material_name><tri>1 0 2</tri>"
                            "<tri>1 1 2</tri></triangle_set>"
                            "<vertex pos='0 4 0' normal='1 0 0'/>"),
                   0.5),
              "material red\nmaterial blue\n"
              "v 0 0 0 n 0 0 1\nv 1 0 0 n 0 1 0\nv 0 2 0 n 1 0 0\n"
              "uv 0 0\n   0.5 1\nuv 3 4\n   0 0\nuv 0 0\n   0 0\n"
              "triangle 0 1 2 uv 0 1 2 m 0\ntriangle 2 1 0 uv 2 1 0 m 0\ntriangle 0 2 1 uv 0 2 1 m 1\n"
              "triangle 1 0 2 uv 1 0 2 m 0\n");
    EXPECT_EQ(read(embedded("")), "");
}

TEST(EmbeddedMeshTest, ReadsTheNewerForm) {
    EXPECT_EQ(
        read(
            embedded2("<expose_uv_set><index>0</index><name>albedo</name></expose_uv_set>"
                      "<used_material_name>a</used_material_name><used_material_name>b</used_material_name>" +
                      FOUR +
                      "<uvs uv0='0 0'/><uvs uv0='1 0'/><uvs uv0='1 1' uv3='5 6'/>"
                      "<triangle v='0 1 2' uv='2 1 0' m='1'/><quad v='0 1 2 3' uv='0 1 2 0' m='0'/>"
                      "<triangle v='0 1 1' uv='2 1 0' m='1'/>")),
        "material a\nmaterial b\n" + FOUR_VERTICES +
            "uv 0 0\n   0 0\n   0 0\n   0 0\nuv 1 0\n   0 0\n   0 0\n   0 0\nuv 1 1\n   0 0\n   0 0\n   5 6\n"
            "triangle 0 1 2 uv 2 1 0 m 1\nquad 0 1 2 3 uv 0 1 2 0 m 0\n");
    // UVs of vertices, and faces that take them or others.
    EXPECT_EQ(
        read(embedded2("<vertex pos='0 0 0' uv0='1 2'/><vertex pos='1 0 0'/><vertex pos='0 1 0'/>"
                       "<uvs uv0='3 4'/><triangle v='2 1 0' m='0'/><triangle v='2 1 0' uv='3 3 0' m='0'/>")),
        "v 0 0 0\nv 1 0 0\nv 0 1 0\nuv 1 2\nuv 0 0\nuv 0 0\nuv 3 4\n"
        "triangle 2 1 0 uv 2 1 0 m 0\ntriangle 2 1 0 uv 3 3 0 m 0\n");
    EXPECT_EQ(read(embedded2(FOUR + "<triangle v='2 1 0' m='0'/><quad v='3 2 1 0' m='7'/>"), -1),
              "v -0 -0 -0\nv -1 -0 -0\nv -1 -1 -0\nv -0 -1 -0\ntriangle 2 1 0 m 0\nquad 3 2 1 0 m 7\n");
}

TEST(EmbeddedMeshTest, TellsWhatIsWrong) {
    const auto at = [](const char* element, int row, int column) {
        return std::string("  (In element '") + element + "', around line " + std::to_string(row) +
               ", column " + std::to_string(column) + ")";
    };
    const auto set = [](const std::string& content) {
        return embedded(FOUR + "<triangle_set>" + content + "</triangle_set>");
    };
    const auto named_set = [&set](const std::string& tri) {
        return set("<material_name>m</material_name>" + tri);
    };
    const struct {
        std::string xml;
        std::string error;
    } cases[] = {
        {embedded("<vertex uv0='0 0'/>"), "Vertex element was missing 'pos' attribute." + at("vertex", 2, 1)},
        {embedded(" <vertex pos='1 2'/>"),
         "Syntax error while parsing real 3-vector from '1 2'" + at("vertex", 2, 2)},
        {embedded("<vertex pos='1 2 3 4'/>"),
         "Syntax error while parsing real 3-vector from '1 2 3 4'" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1,2,3'/>"),
         "Syntax error while parsing real 3-vector from '1,2,3'" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1-2-3'/>"),
         "Syntax error while parsing real 3-vector from '1-2-3'" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1 2 NaN'/>"),
         "Syntax error while parsing real 3-vector from '1 2 NaN'" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1 2 1e300'/>"),
         "Syntax error while parsing real 3-vector from '1 2 1e300'" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1 2 3' normal='up'/>"),
         "Syntax error while parsing real 3-vector from 'up'" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1 2 3' normal='0 0 0'/>"), "Invalid normal"},
        {embedded("<vertex pos='1 2 3' uv0='1'/>"), "syntax error while parsing Vec2" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1 2 3' uv2='1 2 3'/>"),
         "syntax error while parsing Vec2" + at("vertex", 2, 1)},
        {embedded("<vertex pos='1 2 3' normal='0 0 1'/><vertex pos='1 2 3'/>"),
         "Must be zero normals, or normals.size() must equal verts.size()"},
        {embedded("<quad v='0 1 2 3' m='0'/>"), "Unexpected element 'quad'" + at("quad", 2, 1)},
        {set("<tri>0 1 2</tri>"), "could not find element 'material_name'" + at("triangle_set", 4, 1)},
        {named_set("<triangle/>"), "Unexpected element 'triangle'" + at("triangle", 4, 47)},
        {named_set("<tri/>"), "Found 'tri' element with no text child." + at("tri", 4, 47)},
        {named_set("<tri>0 1</tri>"), "syntax error while parsing 'tri' element." + at("tri", 4, 47)},
        {named_set("<tri>0 1 2 3</tri>"), "syntax error while parsing 'tri' element." + at("tri", 4, 47)},
        {named_set("<tri>0 1 -2</tri>"), "syntax error while parsing 'tri' element." + at("tri", 4, 47)},
        {named_set("<tri>0 1 4</tri>"), "Triangle vertex index is out of bounds. (vertex index=4)"},
        {embedded2("<vertex normal='0 0 1'/>"),
         "Vertex element was missing 'pos' attribute." + at("vertex", 2, 1)},
        {embedded2("<vertex pos='0 0 1' uv4='0 0'/>"),
         "Unexpected attribute 'uv4' while parsing vertex." + at("vertex", 2, 1)},
        {embedded2("<uvs uv0='x'/>"), "syntax error while parsing Vec2" + at("uvs", 2, 1)},
        {embedded2("<triangle_set/>"), "Unexpected element 'triangle_set'" + at("triangle_set", 2, 1)},
        {embedded2(FOUR + "<triangle v='0 1 2' uv='0 1 2' m='0'/><uvs uv0='0 0'/>"),
         "Triangle uv index is out of bounds. (uv index=1)"},
        {embedded2(FOUR + "<quad v='0 1 2 9' m='0'/>"),
         "Quad vertex index is out of bounds. (vertex index=9)"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(read(test.xml), "error: " + test.error) << test.xml;
}

TEST(EmbeddedMeshTest, TellsWhatIsWrongWithFaces) {
    const struct {
        const char* attributes; ///< With %s where a triangle has nothing and a quad its fourth index.
        const char* error;      ///< With %s for the face's word, or %S for it with a capital.
    } cases[] = {
        {"m='0'", "%S element was missing 'v' attribute."},
        {"v='0 1 2%s'", "%S element was missing 'm' attribute."},
        {"v='0 1' m='0'", "syntax error while parsing vertex indices"},
        {"v='0 1 2%s 0' m='0'", "syntax error while parsing vertex indices"},
        {"v='0 1 2.5%s' m='0'", "syntax error while parsing vertex indices"},
        {"v='0 1 4294967296%s' m='0'", "syntax error while parsing vertex indices"},
        {"v='0 1 2%s' uv='0' m='0'", "syntax error while parsing uv indices"},
        {"v='0 1 2%s' m='red'", "syntax error while parsing material index ('m')"},
        {"v='0 1 2%s' m='-1'", "syntax error while parsing material index ('m')"},
        {"v='0 1 2%s' m='4294967295'", "syntax error while parsing material index ('m')"},
        {"v='0 1 2%s' m='0' n='1'", "Unexpected element 'n' while parsing %s."},
    };
    const auto filled = [](std::string text, const std::string& small, const std::string& capital) {
        for (std::size_t at; (at = text.find('%')) != std::string::npos;)
            text.replace(at, 2, text[at + 1] == 's' ? small : capital);
        return text;
    };
    for (const bool quad : {false, true}) {
        const std::string word = quad ? "quad" : "triangle";
        for (const auto& test : cases)
            EXPECT_EQ(read(embedded2(FOUR + "<" + word + " " + filled(test.attributes, quad ? " 3" : "", "") +
                                     "/>")),
                      "error: " + filled(test.error, word, quad ? "Quad" : "Triangle") + "  (In element '" +
                          word + "', around line 4, column 1)");
    }
}

} // namespace
} // namespace Quenza
