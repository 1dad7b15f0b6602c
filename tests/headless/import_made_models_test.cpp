// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/import/import_model.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"

// Small models that the tests write themselves.

namespace headless {

namespace {

class MadeModelTest : public DocumentsTest {
protected:
    std::unique_ptr<Document> import(const std::string& name, const std::string& text) {
        return importModel(write(name, text), warnings_);
    }
    static const PolygonNode& polygonsOf(const Document& document) {
        for (const Object* top = document.objects().first(); top; top = top->next) {
            for (const Object* object = top; object; object = object->nextInBranch(*top)) {
                if (const PolygonNode* const polygons = asPolygons(object)) {
                    return *polygons;
                }
            }
        }
        throw std::runtime_error("no polygons");
    }

    std::vector<std::string> warnings_;
};

/// A Collada file of one triangle, with nodes that show it.
std::string collada(const std::string& nodes, const std::string& unit = "1") {
    return R"(<?xml version="1.0" encoding="utf-8"?>
<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1">
<asset><unit meter=")" +
           unit + R"("/><up_axis>Y_UP</up_axis></asset>
<library_geometries><geometry id="g" name="g"><mesh>
<source id="p"><float_array id="pa" count="9">0 0 0 2 0 0 0 3 4</float_array><technique_common>
<accessor source="#pa" count="3" stride="3"><param name="X" type="float"/><param name="Y" type="float"/><param name="Z" type="float"/></accessor>
</technique_common></source>
<vertices id="v"><input semantic="POSITION" source="#p"/></vertices>
<triangles count="1"><input semantic="VERTEX" source="#v" offset="0"/><p>0 1 2</p></triangles>
</mesh></geometry></library_geometries>
<library_visual_scenes><visual_scene id="s" name="s">)" +
           nodes + R"(</visual_scene></library_visual_scenes>
<scene><instance_visual_scene url="#s"/></scene></COLLADA>)";
}

constexpr const char* SHOWN = "<instance_geometry url=\"#g\"/>";

/// A square pyramid, base first: a quad with smooth normals and four faces.
constexpr const char* QUAD_AND_PENTAGON = R"(o shape
v 0 0 0
v 2 0 0
v 2 0 -2
v 0 0 -2
v 3 0 -1
vt 0 0
vt 1 0
vt 1 0.25
vt 0 0.25
usemtl floor
f 1/1 2/2 3/3 4/4
usemtl flap
f 2/1 5/2 3/3
)";

TEST_F(MadeModelTest, MirrorsPointsTurnsFacesAndTexturesOver) {
    const auto document = import("a.obj", QUAD_AND_PENTAGON);
    const PolygonNode& object = polygonsOf(*document);
    EXPECT_EQ(object.points, (std::vector<Vector>{{0, 0, 0}, {0, 0, 2}, {2, 0, 2}, {2, 0, 0}, {3, 0, 1}}));
    // The first corner stays, the others follow backwards: seen from above, clockwise.
    EXPECT_EQ(object.polygons, (std::vector<CPolygon>{{0, 1, 2, 3}, {3, 2, 4}}));
    const auto& uvw = static_cast<const UVWTagNode&>(*object.tag(Tuvw)).records;
    EXPECT_EQ(uvw[0], (UVWStruct{{0, 1, 0}, {0, 0.75f, 0}, {1, 0.75f, 0}, {1, 1, 0}}));
    EXPECT_EQ(uvw[1], (UVWStruct{{0, 1, 0}, {1, 0.75f, 0}, {1, 1, 0}, {1, 1, 0}}));
}

TEST_F(MadeModelTest, NormalsBecomeAPhongTagAndBrokenEdges) {
    // Three quads of a strip that is bent twice: the normals are smooth at the first bend and not at the
    // second.
    const std::string strip = "v 0 0 0\nv 0 1 0\nv 1 0 0\nv 1 1 0\nv 2 0 -1\nv 2 1 -1\nv 2 0 -2\nv 2 1 -2\n";
    const auto document = import("a.obj", strip + "vn 0 0 1\nvn 0.38 0 0.92\nvn 0.7 0 0.7\nvn 1 0 0\n"
                                                  "f 1//1 3//2 4//2 2//1\nf 3//2 5//3 6//3 4//2\n"
                                                  "f 5//4 7//4 8//4 6//4\n");
    const PolygonNode& object = polygonsOf(*document);
    const Tag* const phong = object.tag(Tphong);
    ASSERT_NE(phong, nullptr);
    EXPECT_FALSE(phong->data.GetBool(PHONGTAG_PHONG_ANGLELIMIT, true));
    EXPECT_TRUE(phong->data.GetBool(PHONGTAG_PHONG_USEEDGES));
    EXPECT_EQ(object.brokenEdges.GetCount(), 2) << "one edge, of both its polygons";
    EXPECT_TRUE(object.brokenEdges.IsSelected(4 + 1) || object.brokenEdges.IsSelected(4 + 2));

    const auto flat = import("flat.obj", strip + "f 1 3 4 2\nf 3 5 6 4\n");
    EXPECT_EQ(polygonsOf(*flat).tag(Tphong), nullptr);
}

TEST_F(MadeModelTest, ShowsRepeatedMeshesAsRenderInstances) {
    const auto document =
        import("a.dae", collada("<node id=\"a\" name=\"First\">" + std::string(SHOWN) +
                                "<node id=\"b\" name=\"Child\"><translate>1 2 3</translate>" + SHOWN +
                                "</node></node><node id=\"c\" name=\"Last\">" + SHOWN + "</node>"));
    const Object* const first = document->objects().first();
    // Its polygons stand below it: instances would show the child with them.
    EXPECT_EQ(first->type(), Onull);
    const Object* const polygons = first->children().first();
    ASSERT_NE(asPolygons(polygons), nullptr);
    for (const Object* const instance : {polygons->next, first->next}) {
        ASSERT_NE(instance, nullptr);
        EXPECT_EQ(instance->type(), Oinstance);
        EXPECT_TRUE(instance->data.GetBool(INSTANCEOBJECT_RENDERINSTANCE));
        EXPECT_EQ(fromHost(instance->data.GetLink(INSTANCEOBJECT_LINK, nullptr)), polygons);
    }
    EXPECT_EQ(polygons->next->name, "Child");
    EXPECT_EQ(polygons->next->matrix.off, Vector(100, 200, -300));
}

TEST_F(MadeModelTest, LeavesOutTheMeshThatIsBrokenAndSaysSo) {
    const auto document = import("a.obj", "o bad\nv 1e39 0 0\nv 1 0 0\nv 1 1 0\nf 1 2 3\n"
                                          "o huge\nv 1e7 0 0\nv 1.00001e7 0 0\nv 1e7 1e7 0\nf 4 5 6\n");
    EXPECT_EQ(polygonsOf(*document).points[0], Vector(1e7f, 0, 0));
    EXPECT_EQ(warnings_,
              (std::vector<std::string>{path("a.obj") + ": mesh \"bad\" is left out: the coordinates of "
                                                        "point 0 are no finite numbers"}));
}

TEST_F(MadeModelTest, NodesMayBeNestedDeep) {
    constexpr int DEPTH = 5000;
    std::string nodes;
    for (int i = 0; i < DEPTH; ++i) {
        nodes += "<node id=\"n" + std::to_string(i) + "\" name=\"" + std::to_string(i) + "\">";
    }
    nodes += SHOWN;
    for (int i = 0; i < DEPTH; ++i) {
        nodes += "</node>";
    }
    const auto document = import("deep.dae", collada(nodes));
    int depth = 0;
    for (const Object* object = document->objects().first(); object; object = object->children().first()) {
        ++depth;
    }
    EXPECT_EQ(depth, DEPTH);
}

TEST_F(MadeModelTest, EveryTruncationIsImportedOrRefused) {
    std::string binaryStl(80, ' ');
    binaryStl += std::string("\1\0\0\0", 4) + std::string(50, '\1');
    const std::pair<const char*, std::string> models[] = {
        {"a.obj", QUAD_AND_PENTAGON},
        {"a.ply",
         "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
         "element face 1\nproperty list uchar int vertex_indices\nend_header\n0 0 0\n1 0 0\n0 1 0\n"
         "3 0 1 2\n"},
        {"a.stl", binaryStl},
        {"a.dae", collada("<node id=\"a\" name=\"a\">" + std::string(SHOWN) + "</node>")},
        {"a.gltf",
         R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}], "nodes": [{"mesh": 0}],
"meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}],
"accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3"}],
"bufferViews": [{"buffer": 0, "byteLength": 36}], "buffers": [{"byteLength": 36, "uri":
"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]})"},
    };
    for (const auto& [name, text] : models) {
        EXPECT_EQ(errorOf([&] { import(name, text); }), "no error") << name;
        for (size_t length = 0; length<text.size(); length += text.size()> 300 ? 7 : 1) {
            const std::string error = errorOf([&] { import(name, text.substr(0, length)); });
            EXPECT_TRUE(error == "no error" || error.starts_with(std::string(name) + ": ")) << error;
        }
    }
}

TEST_F(MadeModelTest, RefusesFilesThatArentThereOrNoModels) {
    EXPECT_EQ(errorOf([&] { importModel(path("none.obj"), warnings_); }), "none.obj: there is no such file");
    for (const char* const name :
         {"a.obj", "a.fbx", "a.glb", "a.gltf", "a.dae", "a.3ds", "a.ply", "a.stl", "a.xyz"}) {
        std::string garbage;
        for (int i = 0; i < 3000; ++i) {
            garbage += static_cast<char>(i * 7919 % 251);
        }
        const std::string error = errorOf([&] { import(name, garbage); });
        EXPECT_TRUE(error.starts_with(std::string(name) + ": the model ")) << error;
    }
}

} // namespace

} // namespace headless
