// SPDX-License-Identifier: MIT
#include "engine/transform.h"

#include "foundation/types.h"
#include "scene/rotation.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace engine {

namespace {

using Quenza::KeyFrame;
using Quenza::Matrix3d;
using Quenza::u64;

/// Embree takes no more steps.
constexpr u64 MAX_STEPS = 129;
/// Between two steps of a turning object its points move on a line, 0.02% of the radius off the circle.
constexpr double MAX_TURN = 0.035;

using Quaternion = std::array<double, 4>;

Quaternion toQuaternion(const KeyFrame& key) {
    const Quenza::Vec3d& a = key.rotation_axis;
    const double norm = std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
    if (norm == 0.0) {
        return {1, 0, 0, 0};
    }
    const double s = std::sin(key.rotation_angle / 2) / norm;
    return {std::cos(key.rotation_angle / 2), a.x * s, a.y * s, a.z * s};
}

double dotOf(const Quaternion& a, const Quaternion& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

/// The shorter way round.
double turnBetween(const KeyFrame& a, const KeyFrame& b) {
    return 2 * std::acos(std::min(1.0, std::abs(dotOf(toQuaternion(a), toQuaternion(b)))));
}

Quaternion interpolate(const Quaternion& a, Quaternion b, double f) {
    double cosine = dotOf(a, b);
    if (cosine < 0) {
        cosine = -cosine;
        for (double& v : b) {
            v = -v;
        }
    }
    const double angle = std::acos(std::min(1.0, cosine));
    double fa = 1 - f;
    double fb = f;
    if (angle > 1e-6) {
        fa = std::sin((1 - f) * angle) / std::sin(angle);
        fb = std::sin(f * angle) / std::sin(angle);
    }
    Quaternion r;
    for (u64 i = 0; i < 4; ++i) {
        r[i] = fa * a[i] + fb * b[i];
    }
    const double norm = std::sqrt(dotOf(r, r));
    for (double& v : r) {
        v /= norm;
    }
    return r;
}

Matrix3d toMatrix(const Quaternion& q) {
    const auto [w, x, y, z] = q;
    return {{1 - 2 * (y * y + z * z), 2 * (x * y - w * z), 2 * (x * z + w * y), 2 * (x * y + w * z),
             1 - 2 * (x * x + z * z), 2 * (y * z - w * x), 2 * (x * z - w * y), 2 * (y * z + w * x),
             1 - 2 * (x * x + y * y)}};
}

Affine compose(const Matrix3d& turn, const Matrix3d& linear, const Quenza::Vec3d& pos) {
    const auto column = [&](u64 c) {
        std::array<double, 3> v{};
        for (u64 r = 0; r < 3; ++r) {
            for (u64 k = 0; k < 3; ++k) {
                v[r] += turn.e[r * 3 + k] * linear.e[k * 3 + c];
            }
        }
        return Vec{float(v[0]), float(v[1]), float(v[2])};
    };
    return {column(0), column(1), column(2), toVec(pos)};
}

/// 0 when no number of even steps meets the keyframes' times.
u64 evenIntervals(const Quenza::Vector<KeyFrame>& keyframes) {
    const u64 intervals = keyframes.size() - 1;
    for (u64 i = 0; i <= intervals; ++i) {
        if (std::abs(keyframes[i].time - double(i) / double(intervals)) > 1e-6) {
            return 0;
        }
    }
    return intervals;
}

u64 countSteps(const Quenza::Vector<KeyFrame>& keyframes) {
    if (keyframes.size() < 2) {
        return 1;
    }
    const u64 intervals = evenIntervals(keyframes);
    if (intervals == 0 || intervals >= MAX_STEPS) {
        return MAX_STEPS;
    }
    double turn = 0;
    for (u64 i = 0; i < intervals; ++i) {
        turn = std::max(turn, turnBetween(keyframes[i], keyframes[i + 1]));
    }
    const auto pieces = u64(std::ceil(std::max(1.0, turn / MAX_TURN)));
    return std::min(MAX_STEPS - 1, intervals * pieces) + 1;
}

Affine poseAt(const Matrix3d& linear, const Quenza::Vector<KeyFrame>& keyframes, double time) {
    u64 next = 1;
    while (next + 1 < keyframes.size() && keyframes[next].time < time) {
        ++next;
    }
    const KeyFrame& a = keyframes[next - 1];
    const KeyFrame& b = keyframes[next];
    const double span = b.time - a.time;
    const double f = span > 0 ? std::clamp((time - a.time) / span, 0.0, 1.0) : 0.0;
    const Quenza::Vec3d pos{a.pos.x + (b.pos.x - a.pos.x) * f, a.pos.y + (b.pos.y - a.pos.y) * f,
                            a.pos.z + (b.pos.z - a.pos.z) * f};
    return compose(toMatrix(interpolate(toQuaternion(a), toQuaternion(b), f)), linear, pos);
}

} // namespace

MotionTransform::MotionTransform(const Matrix3d& linear, const Quenza::Vector<KeyFrame>& keyframes) {
    const u64 count = countSteps(keyframes);
    if (count == 1) {
        const KeyFrame still{{0, 0, 0}, 0, {0, 0, 1}, 0};
        const KeyFrame& key = keyframes.empty() ? still : keyframes[0];
        steps_ = {compose(toMatrix(toQuaternion(key)), linear, key.pos)};
        return;
    }
    for (u64 i = 0; i < count; ++i) {
        steps_.push_back(poseAt(linear, keyframes, double(i) / double(count - 1)));
    }
}

Affine MotionTransform::at(float time) const {
    if (steps_.size() == 1) {
        return steps_[0];
    }
    const float scaled = std::clamp(time, 0.0f, 1.0f) * float(steps_.size() - 1);
    const u64 index = std::min(u64(scaled), u64(steps_.size() - 2));
    const float f = scaled - float(index);
    const Affine& a = steps_[index];
    const Affine& b = steps_[index + 1];
    return {a.x + (b.x - a.x) * f, a.y + (b.y - a.y) * f, a.z + (b.z - a.z) * f,
            a.origin + (b.origin - a.origin) * f};
}

} // namespace engine
