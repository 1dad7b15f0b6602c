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

namespace {

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
