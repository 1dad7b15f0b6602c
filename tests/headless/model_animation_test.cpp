// SPDX-License-Identifier: MIT
#include "headless/model/rotation.h"
#include "headless/model/track.h"
#include "headless/model_fixture.h"

namespace headless {

namespace {

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

} // namespace

} // namespace headless
