// SPDX-License-Identifier: MIT
#include "headless/model/track.h"

#include "headless/model/object.h"
#include "headless/model/rotation.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

/// The keys around a time, and where between them it lies (0 to 1).
struct Span {
    size_t from;
    size_t to;
    double t;
};

Span spanAt(const std::vector<Key>& keys, double seconds) {
    const auto after = std::upper_bound(keys.begin(), keys.end(), seconds,
                                        [](double time, const Key& key) { return time < key.time; });
    const auto to = static_cast<size_t>(after - keys.begin());
    if (to == 0 || to == keys.size()) {
        const size_t end = to == 0 ? 0 : to - 1;
        return {end, end, 0.0};
    }
    return {to - 1, to, (seconds - keys[to - 1].time) / (keys[to].time - keys[to - 1].time)};
}

double asReal(const GeData& value) {
    return static_cast<double>(value.GetReal());
}

double component(const Vector& v, int axis) {
    return static_cast<double>(axis == 0 ? v.x : axis == 1 ? v.y : v.z);
}

/// Interpolates what `read` takes from the keys' values.
template <class Read>
double interpolate(const Track& track, const Span& span, const Read& read) {
    const auto value = [&](size_t key) { return read(track.keys[key].value); };
    const double from = value(span.from), to = value(span.to), t = span.t;
    if (track.interpolation != Interpolation::spline || span.from == span.to) {
        return from + (to - from) * t;
    }
    // Hermite form with the slopes of a cardinal spline; at the ends the slope is that of the segment.
    const double duration = track.keys[span.to].time - track.keys[span.from].time;
    const auto slope = [&](size_t before, size_t after) {
        return (value(after) - value(before)) / (track.keys[after].time - track.keys[before].time) * duration;
    };
    const double slopeFrom = slope(span.from == 0 ? span.from : span.from - 1, span.to);
    const double slopeTo = slope(span.from, span.to + 1 == track.keys.size() ? span.to : span.to + 1);
    return from + t * (slopeFrom + t * (3.0 * (to - from) - 2.0 * slopeFrom - slopeTo +
                                        t * (2.0 * (from - to) + slopeFrom + slopeTo)));
}

template <class Read>
Vector interpolateVector(const Track& track, const Span& span, const Read& read) {
    const auto axis = [&](int which) {
        return static_cast<float>(
            interpolate(track, span, [&](const GeData& value) { return component(read(value), which); }));
    };
    return {axis(0), axis(1), axis(2)};
}

Matrix interpolateMatrix(const Track& track, const Span& span) {
    MatrixParts parts;
    const auto split = [](const GeData& value) { return splitMatrix(value.GetMatrix()); };
    parts.position =
        interpolateVector(track, span, [&split](const GeData& value) { return split(value).position; });
    parts.scale =
        interpolateVector(track, span, [&split](const GeData& value) { return split(value).scale; });
    parts.rotation = interpolateRotation(track.keys[span.from].value.GetMatrix(),
                                         track.keys[span.to].value.GetMatrix(), span.t);
    return joinMatrix(parts);
}

void setComponent(Vector& vector, int axis, float value) {
    (axis == 0 ? vector.x : axis == 1 ? vector.y : vector.z) = value;
}

/// Sets the whole of `vector` or one component from a track's value.
void setFrom(Vector& vector, const Track& track, const GeData& value) {
    if (track.component < 0) {
        vector = value.GetVector();
    } else {
        setComponent(vector, track.component, value.GetReal());
    }
}

void applyParameter(Node& node, const Track& track, const GeData& value) {
    if (track.component < 0) {
        node.setParameter(track.parameter, value);
        return;
    }
    Vector vector = node.data.GetVector(track.parameter);
    setComponent(vector, track.component, value.GetReal());
    node.setParameter(track.parameter, GeData(vector));
}

bool turnsOrScales(const Track& track) {
    return track.channel != Channel::parameter && track.channel != Channel::position && !track.keys.empty();
}

/// What the local matrix was made from, unless its axes were changed since.
AppliedTransform transformOf(const Object& object, const Animation& animation) {
    if (animation.applied) {
        AppliedTransform transform = *animation.applied;
        transform.parts.position = object.matrix.off;
        if (joinMatrix(transform.parts) == object.matrix) {
            return transform;
        }
    }
    const MatrixParts parts = splitMatrix(object.matrix);
    return {parts, hpbFromRotation(parts.rotation)};
}

void applyTrack(AppliedTransform& transform, const Track& track, const GeData& value) {
    MatrixParts& parts = transform.parts;
    switch (track.channel) {
    case Channel::position:
        setFrom(parts.position, track, value);
        break;
    case Channel::rotation:
        setFrom(transform.angles, track, value);
        parts.rotation = rotationFromHPB(transform.angles);
        break;
    case Channel::scale:
        setFrom(parts.scale, track, value);
        break;
    case Channel::orientation:
        parts.rotation = splitMatrix(value.GetMatrix()).rotation;
        transform.angles = hpbFromRotation(parts.rotation);
        break;
    case Channel::transform:
        parts = splitMatrix(value.GetMatrix());
        transform.angles = hpbFromRotation(parts.rotation);
        break;
    case Channel::parameter:
        break;
    }
}

void applyToMatrix(Object& object, Animation& animation, double seconds) {
    const bool rebuild = std::any_of(animation.tracks.begin(), animation.tracks.end(), turnsOrScales);
    AppliedTransform transform;
    transform.parts.position = object.matrix.off;
    if (rebuild) {
        transform = transformOf(object, animation);
    }
    for (const Track& track : animation.tracks) {
        if (track.channel != Channel::parameter && !track.keys.empty()) {
            applyTrack(transform, track, valueAt(track, seconds));
        }
    }
    if (rebuild) {
        animation.applied = transform;
        object.matrix = joinMatrix(transform.parts);
    } else {
        object.matrix.off = transform.parts.position;
    }
}

} // namespace

GeData valueAt(const Track& track, double seconds) {
    if (track.keys.empty()) {
        return GeData();
    }
    const Span span = spanAt(track.keys, seconds);
    const GeData& from = track.keys[span.from].value;
    if (span.t == 0.0 || track.interpolation == Interpolation::step) {
        return from;
    }
    switch (from.GetType()) {
    case DA_REAL:
        return GeData(interpolate(track, span, asReal));
    case DA_LONG: {
        const double whole = interpolate(
            track, span, [](const GeData& value) { return static_cast<double>(value.GetLong()); });
        const double start = static_cast<double>(from.GetLong());
        return GeData(
            static_cast<int32_t>(std::clamp(start + std::trunc(whole - start), static_cast<double>(INT32_MIN),
                                            static_cast<double>(INT32_MAX))));
    }
    case DA_VECTOR:
        return GeData(interpolateVector(track, span, [](const GeData& value) { return value.GetVector(); }));
    case DA_MATRIX:
        return GeData(interpolateMatrix(track, span));
    default:
        return from;
    }
}

void applyTracks(Node& node, double seconds) {
    if (!node.animation) {
        return;
    }
    for (const Track& track : node.animation->tracks) {
        if (track.channel == Channel::parameter && !track.keys.empty()) {
            applyParameter(node, track, valueAt(track, seconds));
        }
    }
    if (node.kind() == NodeKind::object) {
        applyToMatrix(static_cast<Object&>(node), *node.animation, seconds);
    }
}

} // namespace headless
