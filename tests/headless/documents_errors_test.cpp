// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"

namespace headless {

namespace {

class DocumentErrorsTest : public DocumentsTest {
protected:
    std::string errorFor(const std::string& text) const {
        return errorOf([&] { loadDocument(write("a.json", text)); });
    }
    std::string errorInBody(const std::string& body) const { return errorFor(withHead(body)); }
};

TEST_F(DocumentErrorsTest, TellsWhyAFileIsNoDocument) {
    EXPECT_EQ(errorOf([&] { loadDocument(path("missing.json")); }),
              "missing.json: the file can't be opened for reading");
    EXPECT_EQ(errorOf([&] { loadDocument(path("")); }), ": the file can't be opened for reading");
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", "a.json: line 1, column 1: not valid JSON: syntax error while parsing value - unexpected end of "
             "input; expected '[', '{', or a literal"},
        {"{\"format\": \"quenza-headless-document\",\n \"version\"",
         "a.json: line 2, column 11: not valid JSON: syntax error while parsing object separator - "
         "unexpected "
         "end of input; expected ':'"},
        {"{\n  \"a\": [1, 2,]\n}",
         "a.json: line 2, column 14: not valid JSON: syntax error while parsing value - "
         "unexpected ']'; expected '[', '{', or a literal"},
        {"[]", "a.json: an object {...} is expected"},
        {"{}", "a.json: key \"format\" is missing"},
        {"{\"format\": \"x\"}",
         "a.json: format: this is no document: \"quenza-headless-document\" is expected"},
        {"{\"format\": \"quenza-headless-document\"}", "a.json: key \"version\" is missing"},
        {"{\"format\": \"quenza-headless-document\", \"version\": 2}",
         "a.json: version: version 2 is unknown; this program reads version 1"},
        {"{\"format\": \"quenza-headless-document\", \"version\": 1, \"verison\": 1}",
         "a.json: unknown key \"verison\"; known here: format, version, unit, fps, frame, frames, layers, "
         "materials, objects, camera, renderData"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(errorFor(test.text), test.error);
    }
    EXPECT_NE(errorFor("{\"format\": \"\xFC\"}").find("a.json: line 1, column 13: not valid JSON"),
              std::string::npos);
    EXPECT_NE(errorFor("{\"a\": 1e999}").find("a.json: not valid JSON: "), std::string::npos);
}

TEST_F(DocumentErrorsTest, NamesThePlaceOfAFault) {
    const struct {
        const char* body;
        const char* error;
    } cases[] = {
        {R"("unit": "inch")", "unit: \"inch\" is unknown; known are km, m, cm, mm"},
        {R"("unit": 5)", "unit: 5 is unknown; known are km, m, cm, mm"},
        {R"("fps": 0)", "fps: a whole number from 1 to 10000 is expected"},
        {R"("frames": [0])", "frames: 2 elements are expected, not 1"},
        {R"("objects": {})", "objects: an array [...] is expected"},
        {R"("objects": [1])", "objects[0]: an object {...} is expected"},
        {R"("objects": [{}])", "objects[0]: key \"type\" is missing"},
        {R"("objects": [{"type": "Kube"}])",
         "objects[0].type: unknown object type \"Kube\"; is the plug-in that "
         "defines it loaded?"},
        {R"("objects": [{"type": 5616}])",
         "objects[0].type: unknown object type \"5616\"; is the plug-in that defines it loaded?"},
        {R"("objects": [{"type": "Cube", "points": [], "polygons": []}])",
         "objects[0].type: only a Polygon object has points"},
        {R"("objects": [{"polygons": []}])", "objects[0]: key \"points\" is missing"},
        {R"("objects": [{"model": "a.obj", "points": []}])",
         "objects[0]: a \"model\" has no \"points\", \"polygons\" or \"brokenEdges\" of its own"},
        {R"("objects": [{"model": "none.obj"}])", "none.obj: there is no such file"},
        {R"("objects": [{"type": "Null", "children": [{"type": "Null", "position": [0, 0]}]}])",
         "objects[0].children[0].position: 3 elements are expected, not 2"},
        {R"("objects": [{"type": "Null", "scale": [1, 1, 1e39]}])",
         "objects[0].scale[2]: the number is too large"},
        {R"("objects": [{"type": "Null", "render": "maybe"}])",
         "objects[0].render: \"maybe\" is unknown; known are on, off, default"},
        {R"("objects": [{"type": "Null", "layer": "L"}])",
         "objects[0].layer: the document has no layer \"L\""},
        {R"("objects": [{"type": "Null", "name": "a\u0000b"}])",
         "objects[0].name: a text can't hold a zero character"},
        {R"("objects": [{"type": "Null", "id": ""}])", "objects[0].id: an id can't be empty"},
        {R"("materials": [{"id": "a"}], "objects": [{"type": "Null", "id": "a"}])",
         "objects[0].id: id \"a\" is in use already"},
        {R"("objects": [{"points": [[0, 0, 0], [1, 0, 0], [0, 1, 0]], "polygons": [[0, 1, 3]]}])",
         "objects[0].polygons[0][2]: point 3 doesn't exist; the object has 3"},
        {R"("objects": [{"points": [[0, 0, 0]], "polygons": [[0, 0]]}])",
         "objects[0].polygons[0]: a polygon has three or four corners, not 2"},
        {R"("objects": [{"points": [[0, 0, 0]], "polygons": [[0, 0, 0]], "brokenEdges": [4]}])",
         "objects[0].brokenEdges[0]: a whole number from 0 to 3 is expected"},
        {R"("objects": [{"type": "Cube", "parameters": {"PRIM_SPHERE_RAD": 1}}])",
         "objects[0].parameters.PRIM_SPHERE_RAD: the node's type has no parameter \"PRIM_SPHERE_RAD\"; a "
         "number "
         "works as well"},
        {R"("objects": [{"type": "Cube", "parameters": {"PRIM_CUBE_SUBX": 1.5}}])",
         "objects[0].parameters.PRIM_CUBE_SUBX: a whole number from -2147483648 to 2147483647 is expected"},
        {R"("objects": [{"type": "Cube", "parameters": {"PRIM_CUBE_SIZE": 100}}])",
         "objects[0].parameters.PRIM_CUBE_SIZE: an array [...] is expected"},
        {R"("objects": [{"type": "Cube", "parameters": {"1": null}}])",
         "objects[0].parameters.1: null is no value of this parameter"},
        {R"("objects": [{"type": "Cube", "parameters": {"1": {"reel": 1}}}])",
         "objects[0].parameters.1: unknown type \"reel\"; known are bool, long, real, degrees, text, file, "
         "vector, matrix, time, link, inExclude"},
        {R"("objects": [{"type": "Cube", "parameters": {"1": {"real": 1, "long": 1}}}])",
         "objects[0].parameters.1: one key that names the value's type is expected, such as {\"real\": 1}"},
        {R"("objects": [{"type": "Cube", "parameters": {"1": {"time": [1, 0]}}}])",
         "objects[0].parameters.1.time: the second number of a time must be above 0"},
        {R"("objects": [{"type": "Instance", "parameters": {"INSTANCEOBJECT_LINK": "gone"}}])",
         "objects[0].parameters.INSTANCEOBJECT_LINK: no node of the document has the id \"gone\""},
        {R"("objects": [{"type": "Cube", "tags": [{"type": "Texture", "material": "m"}]}])",
         "objects[0].tags[0].material: no node of the document has the id \"m\""},
        {R"("objects": [{"type": "Cube", "id": "c", "tags": [{"type": "Texture", "material": "c"}]}])",
         "objects[0].tags[0].material: \"c\" is a node of another kind"},
        {R"("objects": [{"type": "Cube", "tags": [{"type": "Phong", "material": "c"}]}])",
         "objects[0].tags[0]: a tag of this type has no \"material\""},
        {R"("objects": [{"points": [[0, 0, 0]], "polygons": [[0, 0, 0]],
                         "tags": [{"type": "Polygon Selection", "polygons": [[0, 1]]}]}])",
         "objects[0].tags[0].polygons[0][1]: a whole number from 0 to 0 is expected"},
        {R"("objects": [{"points": [[0, 0, 0]], "polygons": [[0, 0, 0]], "tags": [{"type": "UVW", "uvw": []}]}])",
         "objects[0].tags[0].uvw: 1 elements are expected, not 0"},
        {R"("objects": [{"type": "Cube", "tracks": [{"keys": []}]}])",
         "objects[0].tracks[0]: key \"channel\" is missing"},
        {R"("objects": [{"type": "Cube", "tracks": [{"channel": "position", "keys": [[1, [0, 0, 0]], [1, 0]]}]}])",
         "objects[0].tracks[0].keys[1]: the frames of keys must rise"},
        {R"("objects": [{"type": "Instance", "tracks": [{"parameter": "INSTANCEOBJECT_LINK", "keys": [[0, "a"]]}]}])",
         "objects[0].tracks[0].keys[0][1]: links can't be animated"},
        {R"("materials": [{"tracks": [{"channel": "position", "keys": []}]}])",
         "materials[0].tracks[0]: only objects have this channel; a \"parameter\" is expected"},
        {R"("materials": [{"shaders": [{"type": "Nois"}]}])",
         "materials[0].shaders[0].type: unknown shader type \"Nois\"; is the plug-in that defines it "
         "loaded?"},
        {R"("layers": [{"name": "A"}, {"name": "A"}])",
         "layers[1].name: there is a layer \"A\" already; an \"id\" can tell them apart"},
        {R"("camera": "nobody")", "camera: no node of the document has the id \"nobody\""},
        {R"("renderData": [{"width": 0}])",
         "renderData[0].width: a whole number from 1 to 65536 is expected"},
        {R"("renderData": [{"videoPosts": [{"type": "Glow"}]}])",
         "renderData[0].videoPosts[0].type: unknown video post type \"Glow\"; is the plug-in that defines it "
         "loaded?"},
    };
    for (const auto& test : cases) {
        const std::string error = errorInBody(test.body);
        const bool isModel = std::string(test.error).starts_with("none.obj");
        EXPECT_EQ(error, (isModel ? "" : "a.json: ") + std::string(test.error)) << test.body;
    }
}

TEST_F(DocumentErrorsTest, EndsWhatIsNestedTooDeep) {
    const auto nested = [](int depth, const std::string& open, const std::string& close) {
        std::string text;
        for (int i = 0; i < depth; ++i) {
            text += open;
        }
        for (int i = 0; i < depth; ++i) {
            text += close;
        }
        return text;
    };
    int number = 0;
    std::string layers = "\"layers\": [";
    for (; number < 150; ++number) {
        layers += "{\"name\": \"" + std::to_string(number) + "\", \"children\": [";
    }
    layers += nested(150, "", "]}") + "]";
    EXPECT_NE(errorInBody(layers).find("layers are nested too deep"), std::string::npos);
    EXPECT_NE(errorInBody("\"materials\": [{\"shaders\": [" +
                          nested(150, "{\"type\": \"Bitmap\", \"shaders\": [", "]}") + "]}]")
                  .find("shaders are nested too deep"),
              std::string::npos);
    // Brackets alone, a million deep.
    EXPECT_NE(errorInBody("\"objects\": " + nested(1000000, "[", "]")).find("an object {...} is expected"),
              std::string::npos);
}

} // namespace

} // namespace headless
