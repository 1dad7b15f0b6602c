// SPDX-License-Identifier: MIT
#include "headless/documents/document_units.h"

#include "headless/model/rotation.h"

#include <charconv>
#include <cmath>
#include <numbers>

namespace headless {

namespace {

double withDigits(double value, int digits) {
    char buffer[40];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, digits).ptr;
    double result = value;
    std::from_chars(buffer, end, result);
    return result;
}

/// Angles that somebody wrote have few decimals; four are kept.
Vector roundedDegrees(const Vector& radians) {
    const auto round = [](float angle) {
        const double degrees = static_cast<double>(angle) * 180.0 / std::numbers::pi;
        return radiansOf(std::round(degrees * 1e4) / 1e4);
    };
    return {round(radians.x), round(radians.y), round(radians.z)};
}

} // namespace

float radiansOf(double degrees) {
    return static_cast<float>(degrees * (std::numbers::pi / 180.0));
}

double degreesOf(float radians) {
    const double degrees = static_cast<double>(radians) * (180.0 / std::numbers::pi);
    for (int digits = 1; digits < 17; ++digits) {
        const double shorter = withDigits(degrees, digits);
        if (radiansOf(shorter) == radians) {
            return shorter;
        }
    }
    return degrees;
}

double frameOf(double seconds, int32_t fps) {
    const double frame = seconds * fps;
    for (const double candidate :
         {std::round(frame), frame, std::nextafter(frame, INFINITY), std::nextafter(frame, -INFINITY)}) {
        if (candidate / fps == seconds) {
            return candidate;
        }
    }
    return frame;
}

Matrix LocalTransform::matrix() const {
    if (rotation == Vector()) {
        return {position, {scale.x, 0.0f, 0.0f}, {0.0f, scale.y, 0.0f}, {0.0f, 0.0f, scale.z}};
    }
    // Joined by hand: each axis keeps the sign of its own scale.
    const Matrix turned = rotationFromHPB(rotation);
    return {position, turned.axisX * scale.x, turned.axisY * scale.y, turned.axisZ * scale.z};
}

std::optional<LocalTransform> partsOf(const Matrix& matrix) {
    LocalTransform parts;
    parts.position = matrix.off;
    parts.scale = {matrix.axisX.x, matrix.axisY.y, matrix.axisZ.z};
    if (parts.matrix() == matrix) {
        return parts;
    }
    const MatrixParts split = splitMatrix(matrix);
    parts.rotation = roundedDegrees(hpbFromRotation(split.rotation));
    parts.scale = {1.0f, 1.0f, 1.0f};
    if (parts.matrix() == matrix) {
        return parts;
    }
    parts.scale = split.scale;
    return parts.matrix() == matrix ? std::optional(parts) : std::nullopt;
}

} // namespace headless
