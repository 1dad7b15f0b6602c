// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/model/node_types.h"
#include "headless/model/track.h"
#include "support/system_texts.h"

#include <cmath>
#include <limits>

namespace headless {

namespace {

using DocumentRoundTripTest = DocumentsTest;

std::filesystem::path examples() {
    return std::filesystem::path(QUENZA_SOURCE_DIR) / "examples";
}

TEST_F(DocumentRoundTripTest, KeepsTheExamples) {
    loadPlugin();
#ifdef _WIN32 // without Assimp
    const bool hasModels = false;
#else
    const bool hasModels = std::filesystem::exists("/usr/share/assimp/models");
#endif
    size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(examples())) {
        if (entry.path().extension() != ".json" ||
            (entry.path().filename() == "real-model.json" && !hasModels)) {
            continue;
        }
        SCOPED_TRACE(entry.path().filename());
        LoadedDocument loaded = loadDocument(entry.path().string());
        EXPECT_EQ(loaded.warnings, std::vector<std::string>());
        const std::unique_ptr<Document> copy = saveAndLoad(*loaded.document);
        const std::string text = readText(path("saved.json"));
        saveDocument(*copy, path("again.json"));
        EXPECT_EQ(readText(path("again.json")), text);
        ++count;
    }
    EXPECT_GE(count, 2u);
}

/// The text holds a value of each kind, and of all kinds of nodes what differs from their defaults.
TEST_F(DocumentRoundTripTest, KeepsTheWholeTextOfADocument) {
    const std::string text = readText(QUENZA_SOURCE_DIR "/tests/headless/golden/document.json");
    saveDocument(*loadDocument(write("in.json", text)).document, path("out.json"), 3);
    EXPECT_EQ(readText(path("out.json")), text);
}

TEST_F(DocumentRoundTripTest, KeepsMatricesAndKeysToTheLastBit) {
    Document document;
    document.setFps(24);
    const auto add = [&document](const Matrix& matrix) {
        document.appendObject(createObject(Onull)).matrix = matrix;
    };
    add(Matrix({0.1f, -0.0f, 1e7f}, {2, 0, 0}, {0, -3, 0}, {0, 0, 0.001f}));
    add(Matrix({}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}));
    add(Matrix({1, 2, 3}, {0.5f, 0.25f, 0}, {0, 1, 0.125f}, {-3, 0, 1}));
    Track angles;
    angles.channel = Channel::rotation;
    angles.component = 1;
    for (int i = 0; i < 200; ++i) {
        const auto a = static_cast<float>(i);
        add(Matrix({a, -a, 0}, {std::cos(a), 0, std::sin(a)}, {0, 1, 0}, {-std::sin(a), 0, std::cos(a)}));
        angles.keys.push_back({i / 24.0, GeData(std::sin(a) * 3.0f)});
    }
    Object& first = *document.objects().first();
    first.animation = std::make_unique<Animation>();
    first.animation->tracks = {angles};
    const std::unique_ptr<Document> copy = saveAndLoad(document);
    const Object* kept = copy->objects().first();
    for (const Object* object = &first; object; object = object->next, kept = kept->next) {
        ASSERT_NE(kept, nullptr);
        EXPECT_EQ(kept->matrix, object->matrix);
    }
    const std::vector<Key>& keys = copy->objects().first()->animation->tracks.at(0).keys;
    ASSERT_EQ(keys.size(), angles.keys.size());
    for (size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(keys[i].time, angles.keys[i].time);
        EXPECT_EQ(keys[i].value, angles.keys[i].value);
    }
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
              Quenza::nativeText("no/such/folder.json") +
                  ": the file can't be written: " + Quenza::noSuchFolder());
}

} // namespace

} // namespace headless
