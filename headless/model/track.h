// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/rotation.h"
#include "host/gedata.h"

#include <optional>
#include <vector>

namespace headless {

class Node;

enum class Interpolation : uint8_t {
    /// The earlier key's value holds until the next key.
    step,
    linear,
    /// A cubic through the keys, whose slope at a key is that between its neighbours.
    spline
};

enum class Channel : uint8_t {
    /// Vector: offset of the local matrix.
    position,
    /// Vector: heading, pitch, bank in radians, see rotation.h.
    rotation,
    /// Vector: lengths of the local matrix's axes, signed.
    scale,
    /// Matrix, of which the axes' directions count: rotation on the shortest way, free of angles' jumps.
    orientation,
    /// Matrix: the whole local matrix. Position and scale as vectors, rotation as `orientation`.
    transform,
    /// A parameter of the container: real, long, vector, or any type, which then steps.
    parameter
};

struct Key {
    /// Seconds.
    double time = 0.0;
    GeData value;
};

/// The animation of one channel. Before the first key and behind the last their values hold.
struct Track {
    Channel channel = Channel::parameter;
    /// Number of the parameter, for that channel.
    int32_t parameter = 0;
    /// -1: keys hold the whole value. 0 to 2: keys hold reals for the x, y or z of a vector alone (heading,
    /// pitch or bank of a rotation).
    int8_t component = -1;
    Interpolation interpolation = Interpolation::linear;
    /// By rising time.
    std::vector<Key> keys;
};

/// What a local matrix was made from. It tells what the matrix alone doesn't: the rotation behind a scale of
/// zero, which of the axes is the mirrored one, and angles that don't drift from one time to the next.
struct AppliedTransform {
    MatrixParts parts;
    /// Heading, pitch and bank of the rotation.
    Vector angles;
};

struct Animation {
    std::vector<Track> tracks;
    /// From which the tracks last made the local matrix.
    std::optional<AppliedTransform> applied;
};

/// The track's value at a time in seconds; empty without keys. Whole numbers move along the line and are
/// rounded towards the earlier key's value, so that a flag changes at its key.
GeData valueAt(const Track& track, double seconds);

/// Gives the node its values of a time in seconds. Channels other than parameters act on objects only; of the
/// local matrix only what is animated changes.
void applyTracks(Node& node, double seconds);

} // namespace headless
