// SPDX-License-Identifier: MIT
#include "headless/documents_description.h"
#include "headless/documents_fixture.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"
#include "headless/model/track.h"
#include "host/inexclude.h"

#include <cmath>
#include <limits>

namespace headless {

namespace {

class DocumentRoundTripTest : public DocumentsTest {
protected:
    /// Compares the document with what its file gives back, and that file with the file of the copy.
    void expectKept(const Document& document) {
        const std::unique_ptr<Document> copy = saveAndLoad(document);
        EXPECT_EQ(describe(*copy), describe(document));
        const std::string text = readText(path("saved.json"));
        saveDocument(*copy, path("again.json"));
        EXPECT_EQ(readText(path("again.json")), text);
    }
};

std::filesystem::path examples() {
    return std::filesystem::path(QUENZA_SOURCE_DIR) / "examples";
}

TEST_F(DocumentRoundTripTest, KeepsTheExamples) {
    loadPlugin();
    size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(examples())) {
        if (entry.path().extension() != ".json" || (entry.path().filename() == "real-model.json" &&
                                                    !std::filesystem::exists("/usr/share/assimp/models"))) {
            continue;
        }
        SCOPED_TRACE(entry.path().filename());
        LoadedDocument loaded = loadDocument(entry.path().string());
        EXPECT_EQ(loaded.warnings, std::vector<std::string>());
        expectKept(*loaded.document);
        ++count;
    }
    EXPECT_GE(count, 2u);
}

TEST_F(DocumentRoundTripTest, KeepsEveryKindOfValueWithAndWithoutADeclaration) {
    Document document;
    Object& target = document.appendObject(createObject(Onull));
    // 1234 and up: nobody declares them. Sphere declares a real and flags, camera mapping a link.
    Object& sphere = document.appendObject(createObject(Osphere));
    BaseContainer& data = sphere.data;
    int32_t id = 1234;
    for (const float value : {0.1f, -0.0f, 1.0f, 1e-45f, 3.4028235e38f, 16777216.0f, 1.0f / 3.0f}) {
        data.SetReal(id++, value);
    }
    for (const int32_t value : {INT32_MIN, -1, 0, 1, INT32_MAX}) {
        data.SetLong(id++, value);
    }
    data.SetString(id++, String("W\xC3\xBCrfel \"1\"\n\xF0\x9F\xA6\x86"));
    data.SetVector(id++, Vector(0.1f, 1e9f, -2.5f));
    data.SetMatrix(id++, Matrix({1, 2, 3}, {0, 1, 0}, {1, 0, 0}, {0, 0, -1}));
    data.SetTime(id++, BaseTime(1.0, 3.0));
    data.SetFilename(id++, Filename("/somewhere/else.png"));
    data.SetFilename(id++, Filename(String(path("textures/near.png"))));
    data.SetFilename(id++, Filename());
    data.SetLink(id++, toHost(static_cast<Node*>(&target)));
    data.SetLink(id++, nullptr);
    InExcludeData list;
    list.InsertObject(toHost(static_cast<Node*>(&target)), 3);
    list.InsertObject(toHost(static_cast<Node*>(&sphere)), 0);
    data.SetData(id++, GeData(list));
    // Values of another type than the declared one.
    data.SetLong(PRIM_SPHERE_RAD, 7);
    data.SetReal(PRIM_SPHERE_SUB, 7.0f);
    data.SetLong(PRIM_SPHERE_PERFECT, 5);
    expectKept(document);
    EXPECT_NE(readText(path("saved.json")).find("\"textures/near.png\""), std::string::npos)
        << "a path below the document's folder isn't written from there";
}

TEST_F(DocumentRoundTripTest, KeepsMatricesExactly) {
    Document document;
    const auto add = [&document](const Matrix& matrix) {
        document.appendObject(createObject(Onull)).matrix = matrix;
    };
    add(Matrix({0.1f, -0.0f, 1e7f}, {2, 0, 0}, {0, -3, 0}, {0, 0, 0.001f}));
    add(Matrix({}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}));
    add(Matrix({1, 2, 3}, {0.5f, 0.25f, 0}, {0, 1, 0.125f}, {-3, 0, 1}));
    for (int i = 0; i < 200; ++i) {
        const auto a = static_cast<float>(i);
        add(Matrix({a, -a, 0}, {std::cos(a), 0, std::sin(a)}, {0, 1, 0}, {-std::sin(a), 0, std::cos(a)}));
    }
    expectKept(document);
}

TEST_F(DocumentRoundTripTest, KeepsTracksToTheLastBit) {
    Document document;
    document.setFps(24);
    Object& object = document.appendObject(createObject(Ocube));
    object.animation = std::make_unique<Animation>();
    std::vector<Track>& tracks = object.animation->tracks;
    Track angles;
    angles.channel = Channel::rotation;
    angles.component = 1;
    angles.interpolation = Interpolation::spline;
    for (int frame = 0; frame < 100; ++frame) {
        angles.keys.push_back({frame / 24.0, GeData(std::sin(static_cast<float>(frame)) * 3.0f)});
    }
    tracks.push_back(angles);
    tracks.push_back({Channel::transform, 0, -1, Interpolation::linear, {{0.0, GeData(Matrix())}}});
    tracks.push_back({Channel::parameter,
                      PRIM_CUBE_SIZE,
                      -1,
                      Interpolation::step,
                      {{0.0, GeData(Vector(1, 2, 3))}, {1.0, GeData(Vector(4, 5, 6))}}});
    tracks.push_back({Channel::parameter, 4321, -1, Interpolation::step, {{0.5, GeData(String("now"))}}});
    expectKept(document);
}

TEST_F(DocumentRoundTripTest, WritesOnlyWhatDiffersAndIdsWhereTheyAreNeeded) {
    const auto document = load(R"("objects": [
        {"type": "cube", "id": "first", "name": "Box", "rotation": [0, 90, 0], "parameters": {"1101": 1, "1102": 5}},
        {"type": 5159, "id": "second", "name": "Box", "scale": [1, 1, -2]},
        {"type": "Instance", "parameters": {"INSTANCEOBJECT_LINK": "second"}}])");
    saveDocument(*document, path("saved.json"), 2);
    EXPECT_EQ(readText(path("saved.json")), R"({
  "format": "quenza-headless-document",
  "version": 1,
  "unit": "m",
  "fps": 30,
  "frame": 0,
  "frames": [0, 90],
  "objects": [
    {
      "type": "Cube",
      "name": "Box",
      "rotation": [0, 90, 0],
      "parameters": {"PRIM_CUBE_SUBY": 5}
    },
    {
      "type": "Cube",
      "id": "Box",
      "name": "Box",
      "scale": [1, 1, -2]
    },
    {
      "type": "Instance",
      "parameters": {"INSTANCEOBJECT_LINK": "Box"}
    }
  ],
  "renderData": [
    {}
  ]
}
)");
    EXPECT_EQ(loadDocument(path("saved.json")).unit, 2);
}

TEST_F(DocumentRoundTripTest, LeavesTheEarlierFileWhenItCantSave) {
    Document document;
    Object& cube = document.appendObject(createObject(Ocube));
    cube.name = "Broken";
    saveDocument(document, path("kept.json"));
    const std::string earlier = readText(path("kept.json"));
    for (const float value :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        cube.data.SetReal(1, value);
        EXPECT_EQ(errorOf([&] { saveDocument(document, path("kept.json")); }),
                  "kept.json: the object \"Broken\" can't be saved: it holds a number that isn't finite");
    }
    EXPECT_EQ(readText(path("kept.json")), earlier);
    EXPECT_EQ(errorOf([&] { saveDocument(Document(), path("no/such/folder.json")); }),
              "no/such/folder.json: the file can't be written: No such file or directory");
}

} // namespace

} // namespace headless
