// SPDX-License-Identifier: MIT
#include "end_to_end/scene_numbers.h"
#include "end_to_end/session.h"
#include "reading/scene_report.h"

#include <algorithm>
#include <array>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <cmath>
#include <iterator>

// Models with cameras, lights and animation, from the file through the plug-in to the scene.

namespace {

namespace fs = std::filesystem;

using Vec = std::array<double, 3>;

/// From Assimp's space, right-handed with Y up, to the scene's with Z up.
Vec toScene(const aiVector3D& v, double metres) {
    return {double(v.x) * metres, double(-v.z) * metres, double(v.y) * metres};
}

void expectNear(const Vec& actual, const Vec& expected, double tolerance, const std::string& where) {
    for (size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(actual[axis], expected[axis], tolerance) << where << ", axis " << axis;
    }
}

Vec vectorOf(const TiXmlElement* element) {
    const std::vector<double> numbers = numbersOf(element);
    EXPECT_EQ(numbers.size(), 3u);
    return numbers.size() == 3 ? Vec{numbers[0], numbers[1], numbers[2]} : Vec{};
}

/// One key of a path as the scene file has it.
struct PathKey {
    double time = 0.0;
    Vec position{};
    Vec axis{};
    double angle = 0.0;

    /// Counter-clockwise when the axis points at the viewer (Rodrigues' formula).
    Vec turned(const Vec& v) const {
        const double c = std::cos(angle), s = std::sin(angle);
        const double along = (axis[0] * v[0] + axis[1] * v[1] + axis[2] * v[2]) * (1.0 - c);
        return {v[0] * c + (axis[1] * v[2] - axis[2] * v[1]) * s + axis[0] * along,
                v[1] * c + (axis[2] * v[0] - axis[0] * v[2]) * s + axis[1] * along,
                v[2] * c + (axis[0] * v[1] - axis[1] * v[0]) * s + axis[2] * along};
    }
};

std::vector<PathKey> pathOf(const TiXmlElement& node) {
    std::vector<PathKey> path;
    for (const TiXmlElement* key = node.FirstChildElement("keyframe"); key;
         key = key->NextSiblingElement("keyframe")) {
        const TiXmlElement* const turn = key->FirstChildElement("rotation_quaternion");
        path.push_back({numbersOf(key->FirstChildElement("time")).at(0),
                        vectorOf(key->FirstChildElement("pos")), vectorOf(turn->FirstChildElement("axis")),
                        numbersOf(turn->FirstChildElement("angle")).at(0)});
    }
    return path;
}

const aiNodeAnim* channelOf(const aiScene& model, const aiNode& node) {
    for (unsigned i = 0; model.mNumAnimations > 0 && i < model.mAnimations[0]->mNumChannels; ++i) {
        if (model.mAnimations[0]->mChannels[i]->mNodeName == node.mName) {
            return model.mAnimations[0]->mChannels[i];
        }
    }
    return nullptr;
}

/// The keys around a time, and where between them it lies.
template <class Key>
std::pair<const Key*, float> keyBefore(const Key* keys, unsigned count, double time) {
    unsigned i = 0;
    while (i + 2 < count && keys[i + 1].mTime <= time) {
        ++i;
    }
    if (count < 2) {
        return {keys, 0.0f};
    }
    const double t = (time - keys[i].mTime) / (keys[i + 1].mTime - keys[i].mTime);
    return {keys + i, float(std::clamp(t, 0.0, 1.0))};
}

/// A node's transform in the world at a time in ticks, with the animation where there is one.
aiMatrix4x4 worldAt(const aiScene& model, const aiNode* node, double ticks) {
    aiMatrix4x4 world;
    for (; node; node = node->mParent) {
        aiMatrix4x4 local = node->mTransformation;
        if (const aiNodeAnim* const channel = channelOf(model, *node)) {
            const auto [position, s] = keyBefore(channel->mPositionKeys, channel->mNumPositionKeys, ticks);
            const auto [rotation, t] = keyBefore(channel->mRotationKeys, channel->mNumRotationKeys, ticks);
            aiVector3D place = position->mValue;
            place += s > 0.0f ? (position[1].mValue - place) * s : aiVector3D();
            aiQuaternion turn = rotation->mValue;
            if (t > 0.0f) {
                aiQuaternion::Interpolate(turn, rotation[0].mValue, rotation[1].mValue, t);
            }
            local = aiMatrix4x4(aiVector3D(1, 1, 1), turn, place);
        }
        world = local * world;
    }
    return world;
}

class RealScene : public Session {
protected:
    static fs::path models() { return "/usr/share/assimp/models"; }
    void SetUp() override {
        if (!fs::exists(models())) {
            GTEST_SKIP() << "the package assimp-testmodels isn't installed";
        }
        install(makeRenderer("none", ""));
    }

    const aiScene& read(const std::string& file) {
        const aiScene* const model = importer_.ReadFile((models() / file).string(), 0);
        EXPECT_NE(model, nullptr) << importer_.GetErrorString();
        return *model;
    }

    /// Exports the open document; the scene must be without fault.
    void exportScene() {
        ASSERT_TRUE(render());
        const fs::path scene = userFolder() / "quickrender" / "quickrender.qzs";
        summary_ = Quenza::summariseScene(scene.string());
        EXPECT_EQ(summary_.faults, std::vector<std::string>{});
        ASSERT_TRUE(scene_.LoadFile(scene.string()));
    }
    /// Opens a document that shows the model with motion blur across `frames` frames of its own rate, through
    /// a camera of the model. Without a camera tag the shutter is open for a twentieth of a second.
    void exportBlurred(const std::string& file, double frames, int fps, const std::string& camera) {
        openDocument(R"({"id": "m", "model": ")" + (models() / file).string() +
                         R"(", "tags": [{"type": "Motion Blur", "parameters": {"MOTIONBLUR_STRENGTH": )" +
                         std::to_string(frames / fps * 20.0) + "}}]}",
                     "",
                     "\"fps\": " + std::to_string(fps) +
                         (camera.empty() ? "" : R"(, "camera": "m/)" + camera + "\""));
        exportScene();
    }
    /// The first node of a kind with a name; with "" of any.
    const TiXmlElement* sceneNode(const char* kind, const std::string& name = "") {
        const TiXmlElement* node = scene_.RootElement()->FirstChildElement(kind);
        while (node && !name.empty() && node->FirstChildElement("name")->GetText() != name) {
            node = node->NextSiblingElement(kind);
        }
        EXPECT_NE(node, nullptr) << kind << " " << name;
        return node;
    }
    size_t count(const char* kind) const {
        const auto found = summary_.nodes.find(kind);
        return found == summary_.nodes.end() ? 0 : size_t(found->second);
    }

private:
    Assimp::Importer importer_;
    Quenza::SceneSummary summary_;
    TiXmlDocument scene_;
};

struct LitModel {
    const char* file;
    /// Metres per unit of Assimp's world.
    double metres;
    /// Models of polygons with those of spot and area lights, and spheres of omni lights.
    size_t models;
    size_t spheres;
};

TEST_F(RealScene, CamerasAndLightsOfModelsReachTheScene) {
    const LitModel cases[] = {
        {"Collada/lights.dae", 1.0, 1, 2},        {"Collada/cameras.dae", 1.0, 0, 0},
        {"3DS/TargetCameraAnim.3ds", 0.01, 1, 0}, {"3DS/CameraRollAnim.3ds", 0.01, 1, 0},
        {"3DS/RotatingCube.3DS", 0.01, 1, 0},     {"FBX/spider.fbx", 0.01, 19, 1},
        {"BLEND/AreaLight_269.blend", 1.0, 3, 1},
    };
    for (const LitModel& test : cases) {
        SCOPED_TRACE(test.file);
        const aiScene& model = read(test.file);
        openFile(models() / test.file);
        exportScene();
        EXPECT_EQ(count("model2"), test.models);
        EXPECT_EQ(count("sphere"), test.spheres);
        EXPECT_EQ(count("camera"), 1u);
        if (model.mNumCameras > 0) {
            const aiMatrix4x4 world =
                worldAt(model, model.mRootNode->FindNode(model.mCameras[0]->mName), 0.0);
            expectNear(vectorOf(sceneNode("camera")->FirstChildElement("keyframe")->FirstChildElement("pos")),
                       toScene(world * aiVector3D(), test.metres), 1e-4, test.file);
        }
    }
}

TEST_F(RealScene, TurningModelsKeepToAssimpsPath) {
    const aiScene& model = read("3DS/RotatingCube.3DS");
    const aiNode* const node = model.mRootNode->FindNode("Box01");
    // Frames of another rate than the model's 25 a second lie between its keys.
    exportBlurred("3DS/RotatingCube.3DS", 12.0, 24, "");
    const std::vector<PathKey> path = pathOf(*sceneNode("model2", "Box01"));
    ASSERT_EQ(path.size(), 13u);
    for (size_t i = 0; i < path.size(); ++i) {
        EXPECT_NEAR(path[i].time, double(i) / 12.0, 1e-6);
        const aiMatrix4x4 world = worldAt(model, node, double(i) * 25.0 / 24.0);
        for (const aiVector3D& corner : {aiVector3D(10, 0, 0), aiVector3D(0, 10, 0), aiVector3D(3, -5, 10)}) {
            Vec place = path[i].turned(toScene(corner, 0.01));
            for (size_t axis = 0; axis < 3; ++axis) {
                place[axis] += path[i].position[axis];
            }
            expectNear(place, toScene(world * corner, 0.01), 2e-6, "key " + std::to_string(i));
        }
    }
    const Vec first = path.front().turned({0, 1, 0}), last = path.back().turned({0, 1, 0});
    EXPECT_LT(first[0] * last[0] + first[1] * last[1] + first[2] * last[2], 0.999) << "it turns";
}

TEST_F(RealScene, MovingCamerasKeepToAssimpsPath) {
    const aiScene& model = read("3DS/TargetCameraAnim.3ds");
    const aiNode* const node = model.mRootNode->FindNode("Camera01");
    // To the middle of the span from frame 60 to 90, which goes the other way.
    exportBlurred("3DS/TargetCameraAnim.3ds", 75.0, 25, "Camera01");
    const std::vector<PathKey> path = pathOf(*sceneNode("camera"));
    ASSERT_EQ(path.size(), 76u);
    // From the camera's place to its target, by the file, whose axes are those of the scene.
    const double toTarget[3] = {100.410049 + 65.867706, 28.215897 - 16.121307, 2.425018};
    const double distance = std::hypot(toTarget[0], toTarget[1], toTarget[2]);
    for (size_t i = 0; i < path.size(); ++i) {
        const std::string where = "key " + std::to_string(i);
        EXPECT_NEAR(path[i].time, double(i) / 75.0, 1e-6) << where;
        expectNear(path[i].position, toScene(worldAt(model, node, double(i)) * aiVector3D(), 0.01), 1e-5,
                   where);
        // The renderer's camera looks along Y before it is turned.
        expectNear(path[i].turned({0, 1, 0}),
                   {toTarget[0] / distance, toTarget[1] / distance, toTarget[2] / distance}, 1e-5, where);
    }
}

} // namespace
