// SPDX-License-Identifier: MIT
#include "headless/model/rotation.h"
#include "headless/model/track.h"
#include "headless/model_fixture.h"

#include <numbers>

namespace headless {

namespace {

constexpr float pi = std::numbers::pi_v<float>;

class ModelAnimation : public ModelTest {
protected:
    static void addTrack(BaseList2D* node, Track track) {
        Node& target = *fromHost(node);
        if (!target.animation) {
            target.animation = std::make_unique<Animation>();
        }
        target.animation->tracks.push_back(std::move(track));
    }
    static Track vectorTrack(Channel channel, const Vector& from, const Vector& to) {
        Track track;
        track.channel = channel;
        track.keys = {{0.0, GeData(from)}, {1.0, GeData(to)}};
        return track;
    }
};

TEST_F(ModelAnimation, givesTheValueBetweenKeys) {
    Track track;
    track.keys = {{0.0, GeData(0.0)}, {1.0, GeData(10.0)}, {2.0, GeData(10.0)}, {4.0, GeData(-6.0)}};
    const struct {
        Interpolation interpolation;
        double time, expected;
    } cases[] = {
        {Interpolation::linear, -1.0, 0.0},
        {Interpolation::spline, 9.0, -6.0},
        {Interpolation::spline, 1.0, 10.0},
        {Interpolation::linear, 0.25, 2.5},
        {Interpolation::linear, 2.5, 6.0},
        {Interpolation::step, 0.999, 0.0},
        // Slopes of the first span: 10 at its start, (10 - 0) / 2 at its end.
        {Interpolation::spline, 0.5, 5.625},
        // Slopes of the second: 5 at its start, (-6 - 10) / 3 at its end.
        {Interpolation::spline, 1.5, 11.29166667},
    };
    for (const auto& test : cases) {
        track.interpolation = test.interpolation;
        EXPECT_NEAR(static_cast<double>(valueAt(track, test.time).GetReal()), test.expected, 1e-5)
            << test.time;
    }
}

TEST_F(ModelAnimation, movesABranchToFractionalFrames) {
    BaseObject* const parent = add(Onull);
    BaseObject* const child = addCube(parent);
    addTrack(parent, vectorTrack(Channel::position, {0, 0, 0}, {30, 0, 0}));
    addTrack(child, vectorTrack(Channel::scale, {1, 1, 1}, {1, 2, 1}));
    Track radius;
    radius.parameter = PRIM_CUBE_SIZE;
    radius.component = 1;
    radius.keys = {{0.0, GeData(200.0)}, {1.0, GeData(400.0)}};
    addTrack(child, radius);
    BaseTag* const tag = child->MakeTag(Tmotionblur);
    Track strength;
    strength.parameter = MOTIONBLUR_STRENGTH;
    strength.keys = {{0.0, GeData(0.0)}, {1.0, GeData(1.0)}};
    addTrack(tag, strength);

    doc()->AnimateObject(parent, BaseTime(7.5, 30.0), 8);

    EXPECT_TRUE(isNear(parent->GetMl().off, {7.5f, 0, 0}));
    EXPECT_TRUE(isNear(child->GetMl().axisY, {0, 1.25f, 0}));
    EXPECT_EQ(child->GetDataInstance()->GetVector(PRIM_CUBE_SIZE), Vector(200, 250, 200));
    EXPECT_EQ(tag->GetDataInstance()->GetReal(MOTIONBLUR_STRENGTH), 0.25f);
    EXPECT_EQ(doc()->GetTime(), BaseTime(0.0)) << "the document's time stays";
    build();
    EXPECT_TRUE(isNear(child->GetRad(), {100, 125, 100}));
}

/// One angle is animated, the others aren't: they must not be worn down by thousands of samples.
TEST_F(ModelAnimation, givesTheSameStateWhereverItWas) {
    BaseObject* const parent = add(Onull);
    parent->SetMl(rotationFromHPB({0.1f, 1.2f, -0.7f}));
    BaseObject* const child = addCube(parent);
    Track heading, position = vectorTrack(Channel::position, {0, 0, 0}, {100, 7, -3});
    heading.channel = Channel::rotation;
    heading.component = 0;
    heading.keys = {{0.0, GeData(-4.0)}, {0.4, GeData(1.0)}, {1.0, GeData(5.0)}};
    position.interpolation = Interpolation::spline;
    Track turn;
    turn.channel = Channel::orientation;
    turn.keys = {{0.0, GeData(rotationFromHPB({0, 0, 0}))}, {1.0, GeData(rotationFromHPB({2, 1, 0.5f}))}};
    addTrack(parent, heading);
    addTrack(parent, vectorTrack(Channel::scale, {1, 1, 1}, {1, 3, 1}));
    addTrack(child, turn);
    addTrack(child, position);

    const auto stateAt = [&](double frame) {
        doc()->AnimateObject(parent, BaseTime(frame, 30.0), 8);
        return std::pair(parent->GetMl(), child->GetMl());
    };
    const double frames[] = {0.0, 0.05, 7.25, 12.0, 12.5, 29.999, 30.0};
    std::vector<std::pair<Matrix, Matrix>> first;
    for (const double frame : frames) {
        first.push_back(stateAt(frame));
    }
    for (int i = 0; i < 5000; ++i) {
        stateAt(i * 0.613 - 30.0 * (i % 37));
    }
    for (size_t i = 0; i < first.size(); ++i) {
        EXPECT_EQ(stateAt(frames[i]), first[i]) << "frame " << frames[i];
    }
    EXPECT_EQ(stateAt(30.0).second.off, Vector(100, 7, -3)) << "on a key it is the key's value";
    EXPECT_TRUE(isNear(stateAt(12.0).first.axisX, rotationFromHPB({1, 1.2f, -0.7f}).axisX, 1e-6f));
}

struct HPBCase {
    Vector hpb;
    /// Where the axes X and Z go.
    Vector axisX;
    Vector axisZ;
};

TEST_F(ModelAnimation, turnsByHeadingPitchAndBank) {
    const float half = pi / 2;
    const HPBCase cases[] = {
        {{half, 0, 0}, {0, 0, 1}, {-1, 0, 0}},
        {{0, half, 0}, {1, 0, 0}, {0, 1, 0}},
        {{0, 0, half}, {0, -1, 0}, {0, 0, 1}},
        {{half, half, 0}, {0, 0, 1}, {0, 1, 0}},
    };
    for (const HPBCase& turn : cases) {
        const Matrix rotation = rotationFromHPB(turn.hpb);
        EXPECT_TRUE(isNear(rotation.axisX, turn.axisX, 1e-6f)) << ::testing::PrintToString(turn.hpb);
        EXPECT_TRUE(isNear(rotation.axisZ, turn.axisZ, 1e-6f)) << ::testing::PrintToString(turn.hpb);
        EXPECT_NEAR(rotation.GetDeterminant(), 1.0f, 1e-6f);
    }
    for (float h = -3; h <= 3; h += 1.5f) {
        for (float p = -1.5f; p <= 1.5f; p += 0.5f) {
            const Vector hpb(h, p, h * 0.5f);
            EXPECT_TRUE(isNear(hpbFromRotation(rotationFromHPB(hpb)), hpb, 1e-4f));
        }
    }
}

} // namespace

} // namespace headless
