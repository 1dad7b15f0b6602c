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
std::string readEmbeddedText(const std::string& xml, double scale = 1) {
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

const std::string CORNERS =
    "<vertex pos='0 0 0'/><vertex pos='1 0 0'/>\n<vertex pos='1 1 0'/><vertex pos='0 1 0'/>\n";
const std::string CORNER_VERTICES = "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n";

TEST(EmbeddedMeshTest, ReadsTheOlderForm) {
    EXPECT_EQ(readEmbeddedText(
                  embedded("<vertex pos='0 0 0' normal='0 0 2' uv1='0.5 1'/>"
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
    EXPECT_EQ(readEmbeddedText(embedded("")), "");
}

TEST(EmbeddedMeshTest, ReadsTheNewerForm) {
    EXPECT_EQ(
        readEmbeddedText(
            embedded2("<expose_uv_set><index>0</index><name>albedo</name></expose_uv_set>"
                      "<used_material_name>a</used_material_name><used_material_name>b</used_material_name>" +
                      CORNERS +
                      "<uvs uv0='0 0'/><uvs uv0='1 0'/><uvs uv0='1 1' uv3='5 6'/>"
                      "<triangle v='0 1 2' uv='2 1 0' m='1'/><quad v='0 1 2 3' uv='0 1 2 0' m='0'/>"
                      "<triangle v='0 1 1' uv='2 1 0' m='1'/>")),
        "material a\nmaterial b\n" + CORNER_VERTICES +
            "uv 0 0\n   0 0\n   0 0\n   0 0\nuv 1 0\n   0 0\n   0 0\n   0 0\nuv 1 1\n   0 0\n   0 0\n   5 6\n"
            "triangle 0 1 2 uv 2 1 0 m 1\nquad 0 1 2 3 uv 0 1 2 0 m 0\n");
    // UVs of vertices, and faces that take them or others.
    EXPECT_EQ(readEmbeddedText(embedded2(
                  "<vertex pos='0 0 0' uv0='1 2'/><vertex pos='1 0 0'/><vertex pos='0 1 0'/>"
                  "<uvs uv0='3 4'/><triangle v='2 1 0' m='0'/><triangle v='2 1 0' uv='3 3 0' m='0'/>")),
              "v 0 0 0\nv 1 0 0\nv 0 1 0\nuv 1 2\nuv 0 0\nuv 0 0\nuv 3 4\n"
              "triangle 2 1 0 uv 2 1 0 m 0\ntriangle 2 1 0 uv 3 3 0 m 0\n");
    EXPECT_EQ(
        readEmbeddedText(embedded2(CORNERS + "<triangle v='2 1 0' m='0'/><quad v='3 2 1 0' m='7'/>"), -1),
        "v -0 -0 -0\nv -1 -0 -0\nv -1 -1 -0\nv -0 -1 -0\ntriangle 2 1 0 m 0\nquad 3 2 1 0 m 7\n");
}

} // namespace
} // namespace Quenza
