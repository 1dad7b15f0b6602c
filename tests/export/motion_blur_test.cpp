// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "export/motion_blur.h"
#include "headless/model/handles.h"
#include "headless/model/object.h"
#include "headless/model/track.h"
#include "headless/tables/host_table.h"
#include "host/ids.h"
#include "host/tables.h"
#include "scene/scene_node_sphere.h"
#include "scene/transform_path.h"
#include "shared/scene_space.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr float PI = std::numbers::pi_v<float>;
constexpr int32_t FPS = 30;

using Keyframes = Quenza::Vector<Quenza::KeyFrame>;

int32_t animateCalls = 0;

class MotionBlurTest : public ExporterTest {
protected:
    MotionBlurTest() { document()->SetFps(FPS); }

    /// From the first vector to the second between two frames.
    static void animate(BaseObject* object, headless::Channel channel, const Vector& from, const Vector& to,
                        int32_t firstFrame, int32_t lastFrame) {
        headless::Track track;
        track.channel = channel;
        track.keys = {{double(firstFrame) / FPS, GeData(from)}, {double(lastFrame) / FPS, GeData(to)}};
        headless::Object& target = *headless::fromHost(object);
        if (!target.animation) {
            target.animation = std::make_unique<headless::Animation>();
        }
        target.animation->tracks.push_back(std::move(track));
    }
    /// One unit along X each frame, from the document's start to frame 1,000,000.
    static void walkAlongX(BaseObject* object) {
        animate(object, headless::Channel::position, {}, {1'000'000.0f, 0, 0}, 0, 1'000'000);
    }
    void blur(BaseObject* object, float strength = 1.0f) {
        addTag(object, Tmotionblur)->GetDataInstance()->SetReal(MOTIONBLUR_STRENGTH, strength);
    }
    void goTo(int32_t frame) {
        options.frame = frame;
        document()->SetTime(BaseTime(frame, FPS));
        document()->AnimateDocument(nullptr, false);
    }
    /// What moving the whole document to the time gives, with the document moved back.
    Matrix productAt(const std::vector<BaseObject*>& chain, double frame) {
        const auto moveTo = [this](double time) {
            for (BaseObject* o = document()->GetFirstObject(); o; o = o->GetNext()) {
                document()->AnimateObject(o, BaseTime(time, FPS), 0);
            }
        };
        moveTo(frame);
        Matrix product;
        for (const BaseObject* const object : chain) {
            product = product * object->GetMl();
        }
        moveTo(options.frame);
        return product;
    }
    /// Of an object at the document's top, with an exposure in frames.
    Keyframes path(BaseObject* object, float frames, const Vector& shift = Vector()) {
        makeContext().exposureDuration = frames / FPS;
        Keyframes keys;
        EXPECT_TRUE(exportMotionBlur(keys, object, object->GetMg(), context(), {object}, shift));
        return keys;
    }
    static std::string text(const Keyframes& keys) {
        std::string line;
        for (const Quenza::KeyFrame& key : keys) {
            char part[64];
            std::snprintf(part, sizeof part, "%s%.4g@%.10g", line.empty() ? "" : " ", key.time, key.pos.x);
            line += part;
        }
        return line;
    }
    /// Has the host count how often objects are moved.
    void countAnimations() {
        documentTable_ = *headless::hostTable()->document;
        documentTable_.AnimateObject = [](BaseDocument* doc, BaseObject* object, const BaseTime& time,
                                          int32_t flags) {
            ++animateCalls;
            headless::hostTable()->document->AnimateObject(doc, object, time, flags);
        };
        hostTable_ = *headless::hostTable();
        hostTable_.document = &documentTable_;
        animateCalls = 0;
        SetHostTables(&hostTable_);
    }
    ~MotionBlurTest() override { SetHostTables(headless::hostTable()); }

private:
    DocumentTable documentTable_{};
    HostTable hostTable_{};
};

/// The matrix by which a point of the model's geometry is turned and scaled at a key.
Quenza::Matrix3d linearPart(const Quenza::KeyFrame& key, const Quenza::Matrix3d& rotation) {
    const Quenza::Matrix3d turn = Quenza::axisAngleMatrix(key.rotation_axis, key.rotation_angle);
    Quenza::Matrix3d product{};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            for (int k = 0; k < 3; ++k) {
                product.e[3 * row + column] += turn.e[3 * row + k] * rotation.e[3 * k + column];
            }
        }
    }
    return product;
}

} // namespace

TEST_F(MotionBlurTest, KeysStandAtWholeFramesAndAtBothEnds) {
    const struct {
        int32_t frame;
        float exposure;
        float strength;
        const char* expected;
    } cases[] = {
        {0, 3.0f, 1.0f, "0@0 0.3333@1 0.6667@2 1@3"},
        {0, 1.5f, 2.0f, "0@0 0.3333@1 0.6667@2 1@3"},
        // The count is rounded, and an inner key never comes closer to the end than half a frame.
        {0, 2.5f, 1.0f, "0@0 0.3333@1 1@2.5"},
        {0, 2.25f, 1.0f, "0@0 0.5@1 1@2.25"},
        {0, 1.5f, 1.0f, "0@0 1@1.5"},
        // Less than half a frame: the count is zero.
        {0, 0.25f, 1.0f, "0@0 1@0.25"},
        {7, 2.0f, 0.0f, "0@7 1@7"},
        // The path may run backwards.
        {7, 2.0f, -1.0f, "0@7 1@5"},
        // Frames far from the start are as exact.
        {500'000, 3.0f, 1.0f, "0@500000 0.3333@500001 0.6667@500002 1@500003"},
    };
    BaseObject* const object = add(Onull, "walker");
    walkAlongX(object);
    BaseTag* const tag = addTag(object, Tmotionblur);
    for (const auto& test : cases) {
        tag->GetDataInstance()->SetReal(MOTIONBLUR_STRENGTH, test.strength);
        goTo(test.frame);
        EXPECT_EQ(text(path(object, test.exposure)), test.expected) << test.exposure;
    }
}

TEST_F(MotionBlurTest, EveryExposureGivesTimesThatAReaderTakes) {
    BaseObject* const object = add(Onull, "walker");
    blur(object);
    for (int32_t i = 0; i <= 600; ++i) {
        const Keyframes keys = path(object, float(i) * 0.01f);
        EXPECT_NO_THROW(Quenza::TransformPath(Quenza::Matrix3d::identity(), 1.0, keys)) << i;
        EXPECT_EQ(keys[0].time, 0.0);
        EXPECT_EQ(keys.back().time, 1.0);
    }
}

TEST_F(MotionBlurTest, ExposuresThatAreNoneLeaveTheObjectStill) {
    BaseObject* const object = add(Onull, "walker");
    blur(object);
    for (const float exposure : {INFINITY, NAN, 1e9f}) {
        makeContext().exposureDuration = exposure;
        Keyframes keys;
        EXPECT_FALSE(exportMotionBlur(keys, object, Matrix(), context(), {object}, Vector()));
        EXPECT_EQ(keys.size(), 0u);
    }
}

TEST_F(MotionBlurTest, PositionsAreMetresInSceneSpaceAndTheLastGoesWithoutTheShift) {
    BaseObject* const object = add(Onull, "lens");
    animate(object, headless::Channel::position, {100, 200, 300}, {102, 200, 300}, 0, 2);
    blur(object);
    goTo(0);
    makeContext().exposureDuration = 2.0f / FPS;
    context().sceneScale = 0.5f;
    Keyframes keys;
    ASSERT_TRUE(exportMotionBlur(keys, object, object->GetMg(), context(), {object}, Vector(1, 2, 3)));
    ASSERT_EQ(keys.size(), 3u);
    EXPECT_EQ(keys[0].pos, (Quenza::Vec3d{49, 147, 98}));
    EXPECT_EQ(keys[1].pos, (Quenza::Vec3d{49.5, 147, 98}));
    EXPECT_EQ(keys[2].pos, (Quenza::Vec3d{51, 150, 100}));
}

TEST_F(MotionBlurTest, TurnsAreThoseOfTheObjectAtTheirTimes) {
    const Vector turns[] = {{0, 0, 0}, {PI / 2, 0, 0}, {0, 1, 0}, {0, 0, -2},
                            {1, 2, 3}, {PI, 0, 0},     {0, PI, 0}};
    PolygonObject* const quad = addQuad("quad");
    scale(quad, {2, 3, 4});
    blur(quad);
    for (const Vector& turn : turns) {
        headless::fromHost(quad)->animation.reset();
        animate(quad, headless::Channel::rotation, turn, {0.3f, 0.2f, 0.1f}, 0, 1);
        goTo(0);
        exportScene();
        const Quenza::SceneNodeModel& blurred = *model("quad");
        ASSERT_EQ(blurred.keyframes.size(), 2u);
        const Quenza::Matrix3d scaling = blurred.rotation->getMatrix();
        EXPECT_NEAR(scaling.e[0], 2.0, 1e-5);
        EXPECT_NEAR(scaling.e[4], 4.0, 1e-5) << "the scene's Y is the host's Z";
        EXPECT_NEAR(scaling.e[8], 3.0, 1e-5);
        const double ends[] = {0.0, double(context().exposureDuration) * FPS};
        for (size_t i = 0; i < 2; ++i) {
            const Quenza::Matrix3d expected = toSceneSpace(productAt({quad}, ends[i]));
            const Quenza::Matrix3d actual = linearPart(blurred.keyframes[i], scaling);
            for (int e = 0; e < 9; ++e) {
                EXPECT_NEAR(actual.e[e], expected.e[e], 2e-5) << turn.x << " " << turn.y << " " << turn.z;
            }
        }
    }
}

TEST_F(MotionBlurTest, ATagAboveBlursWhatIsBelowAndInCaches) {
    BaseObject* const carrier = add(Onull, "carrier");
    blur(carrier);
    animate(carrier, headless::Channel::position, {}, {0, 8, 0}, 0, 8);
    animate(carrier, headless::Channel::rotation, {}, {1, 0, 0}, 0, 8);
    BaseObject* const cube = addCube("cube", carrier);
    animate(cube, headless::Channel::position, {4, 0, 0}, {4, 0, 16}, 0, 8);
    addQuad("still");
    goTo(2);
    const Matrix carrierBefore = carrier->GetMl();
    const Matrix cubeBefore = cube->GetMl();
    exportScene();

    EXPECT_EQ(model("still")->keyframes.size(), 1u);
    const Keyframes& keys = model("cube")->keyframes;
    // 0.05 seconds are a frame and a half.
    ASSERT_EQ(keys.size(), 2u);
    const double ends[] = {2.0, 2.0 + double(context().exposureDuration * FPS)};
    for (size_t i = 0; i < 2; ++i) {
        const Quenza::Vec3d expected = toSceneSpaceDouble(productAt({carrier, cube}, ends[i]).off);
        EXPECT_EQ(keys[i].pos, expected) << i;
    }
    EXPECT_NE(keys[0].pos, keys[1].pos);

    EXPECT_EQ(carrier->GetMl(), carrierBefore);
    EXPECT_EQ(cube->GetMl(), cubeBefore);
    EXPECT_EQ(document()->GetTime(), BaseTime(2, FPS));
}

TEST_F(MotionBlurTest, SpheresFollowTheirPath) {
    BaseObject* const ball = add(Osphere, "ball");
    ball->GetDataInstance()->SetReal(PRIM_SPHERE_RAD, 2.0f);
    ball->GetDataInstance()->SetBool(PRIM_SPHERE_PERFECT, true);
    walkAlongX(ball);
    blur(ball, 2.0f);
    goTo(5);
    exportScene();
    const auto spheres = nodes<Quenza::SceneNodeSphere>(Quenza::NODE_SPHERE);
    ASSERT_EQ(spheres.size(), 1u);
    EXPECT_EQ(text(spheres[0]->keyframes), "0@5 0.3333@6 0.6667@7 1@8");
}

TEST_F(MotionBlurTest, TheDocumentMovesOnceForEachTimeHoweverManyObjectsAreBlurred) {
    BaseObject* const group = add(Onull, "group");
    blur(group, 4.0f);
    std::vector<int32_t> calls;
    for (int32_t count : {10, 990}) {
        while (count-- > 0) {
            walkAlongX(addQuad("quad", group));
        }
        goTo(1);
        countAnimations();
        exportScene();
        calls.push_back(animateCalls);
        // Six frames: the times of five inner keys and of the end, and the way back.
        EXPECT_EQ(models().back()->keyframes.size(), 7u);
    }
    EXPECT_EQ(models().size(), 1000u);
    EXPECT_EQ(calls[0], calls[1]);
    EXPECT_LE(calls[0], 8);
}
