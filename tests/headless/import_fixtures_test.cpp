// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/import/aims_3ds.h"
#include "headless/import/import_model.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"
#include "headless/model/track.h"

#include <array>
#include <cmath>
#include <map>

// Cameras and lights of models.

namespace headless {

namespace {

class FixtureImportTest : public DocumentsTest {
protected:
    static Object* find(const Document& document, int32_t type, const std::string& name) {
        for (Object* top = document.objects().first(); top; top = top->next) {
            for (Object* object = top; object; object = object->nextInBranch(*top)) {
                if (object->type() == type && object->name == name) {
                    return object;
                }
            }
        }
        throw std::runtime_error("no object " + name);
    }
    static double degrees(float radians) { return static_cast<double>(radians) * 180.0 / M_PI; }

    std::vector<std::string> warnings_;
};

/// Two lights below a triangle, one of which is scaled and a parent itself, in the format whose powers have a
/// unit.
constexpr const char* GLTF_LIGHTS = R"({
  "asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
  "extensionsUsed": ["KHR_lights_punctual"],
  "extensions": {"KHR_lights_punctual": {"lights": [
    {"type": "spot", "color": [0.5, 1, 0.25], "intensity": 800,
     "spot": {"innerConeAngle": 0.25, "outerConeAngle": 0.5}},
    {"type": "directional", "color": [0.5, 0.5, 0.5], "intensity": 3}]}},
  "nodes": [
    {"name": "Stand", "translation": [1, 0, 0], "children": [1, 2], "mesh": 0},
    {"name": "Spot", "translation": [0, 1, 0], "scale": [2, 2, 2], "extensions": {"KHR_lights_punctual": {"light": 0}}, "children": [3]},
    {"name": "Moon", "extensions": {"KHR_lights_punctual": {"light": 1}}},
    {"name": "Shade", "mesh": 0}],
  "meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}],
  "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3",
                 "min": [0, 0, 0], "max": [1, 1, 0]}],
  "bufferViews": [{"buffer": 0, "byteLength": 36}],
  "buffers": [{"byteLength": 36,
    "uri": "data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}]
})";

TEST_F(FixtureImportTest, CandelaComeInALightTag) {
    constexpr int32_t LIGHT_TAG = 1020892;
    const std::string file = write("lights.gltf", GLTF_LIGHTS);
    const auto without = importModel(file, warnings_);
    EXPECT_EQ(find(*without, Olight, "Spot")->tag(LIGHT_TAG), nullptr) << "the plug-in isn't loaded";

    loadPlugin();
    const auto document = importModel(file, warnings_);
    EXPECT_EQ(warnings_, std::vector<std::string>());
    const Object& spot = *find(*document, Olight, "Spot");
    EXPECT_NEAR(degrees(spot.data.GetReal(LIGHT_DETAILS_OUTERANGLE)), 57.2958, 1e-3)
        << "the format has half angles";
    ASSERT_NE(spot.tag(LIGHT_TAG), nullptr);
    const BaseContainer& tag = spot.tag(LIGHT_TAG)->data;
    const auto number = [](const char* name) { return findParameter(LIGHT_TAG, name)->id; };
    EXPECT_TRUE(tag.GetBool(number("LIGHT_USE_EMISSION_SCALE")));
    EXPECT_EQ(tag.GetLong(number("LIGHT_EMISSION_SCALE_MEASURE")), 1304);
    EXPECT_EQ(tag.GetReal(number("LIGHT_EMISSION_SCALE_VALUE")), 800.0f);
    EXPECT_EQ(tag.GetVector(number("LIGHT_RGB_COLOUR")), Vector(0.5f, 1, 0.25f));
    EXPECT_EQ(tag.GetReal(number("LIGHT_RGB_GAMMA")), 1.0f);
    EXPECT_EQ(spot.data.GetReal(LIGHT_BRIGHTNESS), 1.0f);

    const Object& moon = *find(*document, Olight, "Moon");
    EXPECT_EQ(moon.tag(LIGHT_TAG), nullptr) << "lux are no candela";
    EXPECT_EQ(moon.data.GetReal(LIGHT_BRIGHTNESS), 1.5f);
}

TEST_F(FixtureImportTest, AModelWithoutACameraIsSeenWhole) {
    for (const float size : {0.001f, 1.0f, 5e5f}) {
        const std::string s = std::to_string(size);
        const auto document = importModel(
            write("a.obj", "v 0 0 0\nv " + s + " 0 0\nv 0 " + s + " " + s + "\nf 1 2 3\n"), warnings_);
        const Object& camera = *document->view().sceneCamera(document.get());
        const Vector middle = Vector(size, size, -size) * 0.5f;
        const Matrix toCamera = camera.globalMatrix().GetInverse();
        const Vector seen = toCamera * middle;
        EXPECT_NEAR(std::hypot(seen.x, seen.y) / size, 0.0f, 1e-4f) << "in the middle of the picture";
        EXPECT_NEAR(camera.data.GetReal(CAMERA_TARGET_DISTANCE) / seen.z, 1.0f, 1e-4f);
        EXPECT_GT(camera.globalMatrix().axisY.y, 0.9f);
        for (const Vector& corner : {Vector(0, 0, 0), Vector(size, 0, 0), Vector(0, size, -size)}) {
            const Vector p = toCamera * corner;
            const float half = std::tan(camera.data.GetReal(CAMERA_FOV) / 2);
            EXPECT_LT(std::fabs(p.x), half * p.z) << size;
            EXPECT_LT(std::fabs(p.y), half * 0.75f * p.z) << size;
        }
    }
}

/// A chunk of a 3DS file.
std::string chunk(uint16_t kind, const std::string& content) {
    const size_t length = content.size() + 6;
    std::string head;
    for (const size_t part :
         {size_t{kind} & 255, size_t{kind} >> 8, length & 255, length >> 8, size_t{0}, size_t{0}}) {
        head += static_cast<char>(part);
    }
    return head + content;
}

std::string floats(std::initializer_list<float> numbers) {
    std::string bytes;
    for (const float number : numbers) {
        std::array<char, sizeof number> raw;
        std::memcpy(raw.data(), &number, sizeof number);
        bytes.append(raw.data(), raw.size());
    }
    return bytes;
}

TEST_F(FixtureImportTest, AimsOf3DSFilesAreReadAtAnyLength) {
    const std::string zero(1, '\0');
    const std::string objects =
        chunk(0x4000, "Cam" + zero + chunk(0x4700, floats({1, 2, 3, 1, 2, 8, 0, 48}))) +
        chunk(0x4000, "Same place" + zero + chunk(0x4700, floats({1, 2, 3, 1, 2, 3, 0, 48}))) +
        chunk(0x4000,
              "Spot" + zero + chunk(0x4600, floats({1, 1, 1}) + chunk(0x4610, floats({1, 1, -1, 30, 40}))));
    const std::string whole = chunk(0x4D4D, chunk(0x0002, "....") + chunk(0x3D3D, objects));

    const std::map<std::string, Aim> aims = readAims3DS(write("aims.3ds", whole));
    ASSERT_EQ(aims.size(), 2u);
    EXPECT_EQ(aims.at("Cam").toTarget, aiVector3D(0, 0, 5));
    EXPECT_EQ(aims.at("Cam").lens, 48.0f);
    EXPECT_EQ(aims.at("Spot").toTarget, aiVector3D(0, 0, -2));

    for (size_t length = 0; length < whole.size(); ++length) {
        EXPECT_TRUE(readAims3DS(write("cut.3ds", whole.substr(0, length))).empty()) << length;
        std::string broken = whole;
        broken[length] = static_cast<char>(0xFF);
        EXPECT_LE(readAims3DS(write("broken.3ds", broken)).size(), 3u) << length;
    }
}

} // namespace

} // namespace headless
