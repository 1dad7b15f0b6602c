// SPDX-License-Identifier: MIT
#pragma once

#include "host/basetime.h"
#include "host/vector.h"

#include <optional>

// What documents write in other units than the model keeps, back and forth without loss.

namespace headless {

float radiansOf(double degrees);
/// The number of the fewest digits that `radiansOf` makes the same angle of.
double degreesOf(float radians);

/// The frame of a time: the quotient of the two is `seconds` again, but for the last bit of times that fall
/// between frames.
double frameOf(double seconds, int32_t fps);

/// A local matrix in the parts that documents write.
struct LocalTransform {
    Vector position;
    /// Heading, pitch and bank in radians.
    Vector rotation;
    Vector scale{1.0f, 1.0f, 1.0f};

    Matrix matrix() const;
};
/// The parts of a matrix that exactly gives it again; nothing when there are none of few digits.
std::optional<LocalTransform> partsOf(const Matrix& matrix);

} // namespace headless
