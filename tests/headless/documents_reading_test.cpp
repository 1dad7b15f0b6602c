// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"
#include "headless/model/track.h"
#include "host/inexclude.h"

#include <chrono>
#include <numbers>

namespace headless {

namespace {

using DocumentReadingTest = DocumentsTest;

TEST_F(DocumentReadingTest, AnEmptyDocumentHasTheDefaults) {
    const LoadedDocument loaded = loadDocument(write("empty.json", withHead("")));
    const Document& document = *loaded.document;
    EXPECT_FALSE(loaded.unit);
    EXPECT_EQ(document.fps(), 30);
    EXPECT_EQ(document.time, BaseTime(0.0));
    EXPECT_EQ(document.maxTime, BaseTime(3.0));
    EXPECT_TRUE(document.objects().empty());
    EXPECT_EQ(document.activeRenderData(), document.renderData().first());
    EXPECT_EQ(document.fileName.GetUtf8(), "empty.json");
    EXPECT_EQ(document.path.GetUtf8() + "/empty.json", path("empty.json"));
}

TEST_F(DocumentReadingTest, ValuesTakeTheKindThatTheTypeDeclaresElseTheirOwn) {
    const auto document = load(R"("objects": [{"type": "Sphere", "parameters": {
        "PRIM_SPHERE_RAD": 5, "1111": 7, "PRIM_SPHERE_PERFECT": false,
        "1": true, "2": 3, "3": 3.0, "4": "text", "5": [1, 2, 3],
        "6": {"real": 3}, "7": {"degrees": 180}, "8": {"file": "a/b.png"}, "9": {"file": "/a/b.png"},
        "10": {"time": [1, 4]}, "11": {"matrix": [1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1]}, "12": {"link": null}}}])");
    const BaseContainer& data = document->objects().first()->data;
    const struct {
        int32_t id;
        int32_t type;
        GeData value;
    } cases[] = {
        {PRIM_SPHERE_RAD, DA_REAL, GeData(5.0f)},
        {PRIM_SPHERE_SUB, DA_LONG, GeData(7)},
        {PRIM_SPHERE_PERFECT, DA_LONG, GeData(false)},
        {1, DA_LONG, GeData(true)},
        {2, DA_LONG, GeData(3)},
        {3, DA_REAL, GeData(3.0f)},
        {4, DA_STRING, GeData("text")},
        {5, DA_VECTOR, GeData(Vector(1, 2, 3))},
        {6, DA_REAL, GeData(3.0f)},
        {7, DA_REAL, GeData(std::numbers::pi_v<float>)},
        {8, DA_FILENAME, GeData(Filename(String(path("a/b.png"))))},
        {9, DA_FILENAME, GeData(Filename("/a/b.png"))},
        {10, DA_TIME, GeData(BaseTime(0.25))},
        {11, DA_MATRIX, GeData(Matrix({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}))},
        {12, DA_LINK, GeData(BaseLink())},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(data.GetType(test.id), test.type) << test.id;
        EXPECT_TRUE(data.GetData(test.id) == test.value) << test.id;
    }
}

TEST_F(DocumentReadingTest, LinksLeadForwardsAcrossKindsAndInCircles) {
    const auto document = load(R"(
        "materials": [{"name": "M", "parameters": {"1": {"link": "b"}, "2": {"inExclude": ["b", ["a", 5]]}}}],
        "objects": [{"type": "Instance", "id": "a", "parameters": {"INSTANCEOBJECT_LINK": "b"}},
                    {"type": "Instance", "id": "b", "parameters": {"INSTANCEOBJECT_LINK": "a"}}],
        "camera": "b")");
    Object* const a = document->objects().first();
    Object* const b = a->next;
    const auto linkOf = [](const Node* node, int32_t id) {
        return fromHost(node->data.GetLink(id, nullptr));
    };
    EXPECT_EQ(linkOf(a, INSTANCEOBJECT_LINK), b);
    EXPECT_EQ(linkOf(b, INSTANCEOBJECT_LINK), a);
    const Material* const material = document->materials().first();
    EXPECT_EQ(linkOf(material, 1), b);
    const auto* const list =
        static_cast<InExcludeData*>(material->data.GetCustomDataType(2, CUSTOMDATATYPE_INEXCLUDE_LIST));
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->GetObjectCount(), 2);
    EXPECT_EQ(fromHost(list->ObjectFromIndex(nullptr, 1)), a);
    EXPECT_EQ(list->GetFlags(1), 5);
    EXPECT_EQ(document->view().chosenCamera(), b);
}

TEST_F(DocumentReadingTest, TransformsAreDegreesInTheParentsSpace) {
    const auto document = load(R"("objects": [
        {"type": "Null", "position": [1, 2, 3], "rotation": [90, 0, 0], "scale": [2, -3, 4]}])");
    const Matrix& m = document->objects().first()->matrix;
    const Matrix expected({1, 2, 3}, {0, 0, 2}, {0, -3, 0}, {-4, 0, 0});
    for (const auto axis : {&Matrix::off, &Matrix::axisX, &Matrix::axisY, &Matrix::axisZ}) {
        EXPECT_LT((m.*axis - expected.*axis).GetLength(), 1e-6f);
    }
}

TEST_F(DocumentReadingTest, KeysAreFramesAndDegrees) {
    const auto document = load(R"("fps": 25, "objects": [{"type": "Null", "tracks": [
        {"channel": "rotation", "component": "y", "keys": [[-5, 0], [12.5, 180]]},
        {"channel": "position", "keys": [[50, [1, 2, 3]]]}]}])");
    const std::vector<Track>& tracks = document->objects().first()->animation->tracks;
    ASSERT_EQ(tracks.size(), 2u);
    EXPECT_EQ(tracks[0].component, 1);
    EXPECT_EQ(tracks[0].keys[0].time, -0.2);
    EXPECT_EQ(tracks[0].keys[1].time, 0.5);
    EXPECT_EQ(tracks[0].keys[1].value.GetReal(), std::numbers::pi_v<float>);
    EXPECT_EQ(tracks[1].keys[0].value.GetVector(), Vector(1, 2, 3));
}

TEST_F(DocumentReadingTest, AHundredThousandObjectsComeBackSlow) {
    constexpr int COUNT = 100000;
    std::string body = "\"objects\": [{\"type\": \"Cube\", \"id\": \"c\"}";
    for (int i = 0; i < COUNT; ++i) {
        body += ",\n{\"type\": \"Instance\", \"name\": \"I\", \"id\": \"" + std::to_string(i) +
                "\", \"position\": [" + std::to_string(i) + ", 0, 0], \"rotation\": [" + std::to_string(i) +
                ", 1, 2], \"parameters\": {\"INSTANCEOBJECT_LINK\": \"c\", "
                "\"INSTANCEOBJECT_RENDERINSTANCE\": true}}";
    }
    const auto document = load(body + "]");
    const auto copy = saveAndLoad(*document);
    int count = 0;
    for (const Object* object = copy->objects().first(); object; object = object->next) {
        ++count;
    }
    EXPECT_EQ(count, COUNT + 1);
}

TEST_F(DocumentReadingTest, HierarchiesHaveAnyDepth) {
    constexpr int DEPTH = 20000;
    std::string body = "\"objects\": [";
    for (int i = 0; i < DEPTH; ++i) {
        body += "{\"type\": \"Null\", \"name\": \"" + std::to_string(i) + "\", \"children\": [";
    }
    for (int i = 0; i < DEPTH; ++i) {
        body += "]}";
    }
    const auto copy = saveAndLoad(*load(body + "]"));
    int depth = 0;
    for (const Object* object = copy->objects().first(); object; object = object->children().first()) {
        EXPECT_EQ(object->name, std::to_string(depth++));
    }
    EXPECT_EQ(depth, DEPTH);
    // The place of a fault deep down stays readable.
    const std::string fault = errorOf([&] {
        body.replace(body.rfind("\"Null\""), 6, "\"Nul\"");
        load(body + "]");
    });
    EXPECT_TRUE(
        fault.ends_with("children[0].type: unknown object type \"Nul\"; is the plug-in that defines it "
                        "loaded?"));
    EXPECT_LT(fault.size(), 400u);
}

TEST_F(DocumentReadingTest, VeryManyParametersOfOneNodeTakeNoLongerEach) {
    std::string body = "\"objects\": [{\"type\": \"Null\", \"parameters\": {\"0\": 0";
    for (int i = 1; i < 20000; ++i) {
        body += ", \"" + std::to_string(i) + "\": " + std::to_string(i);
    }
    const auto document = load(body + "}}]");
    EXPECT_EQ(document->objects().first()->data.GetLong(19999), 19999);
}

} // namespace

} // namespace headless
