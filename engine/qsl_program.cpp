// SPDX-License-Identifier: MIT
#include "engine/qsl_program.h"

#include "engine/qsl_machine.h"
#include "engine/qsl_parser.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace engine {

namespace {

float finite(float value) {
    return std::isfinite(value) ? value : 0.0f;
}

} // namespace

QSLProgram::QSLProgram(const std::vector<QSLText>& texts, const QSLEntry& entry,
                       std::vector<std::shared_ptr<const TextureMap>> textures)
    : code_(compileQSL(parseQSL(texts), entry, textures.size())), textures_(std::move(textures)),
      components_(sizeOf(entry.result)), average_(computeAverage()) {}

Vec QSLProgram::at(const SurfacePoint& point, const Vec& position, const Quenza::Vec2f& uv_shift) const {
    const auto valueIn = [this](const float* value) -> Vec {
        return components_ == 3 ? Vec{finite(value[0]), finite(value[1]), finite(value[2])}
                                : Vec{finite(value[0]), 0, 0};
    };
    if (code_.is_constant) {
        return valueIn(code_.constants.data() + code_.result);
    }
    float frame[QSLCode::MAX_FRAME];
    float* const next = std::copy(code_.constants.begin(), code_.constants.end(), frame);
    if (code_.takes_position) {
        next[0] = position.x;
        next[1] = position.y;
        next[2] = position.z;
    }
    runQSL(code_.steps.data(), code_.steps.size(), frame, {point, uv_shift, textures_});
    return valueIn(frame + code_.result);
}

Vec QSLProgram::computeAverage() const {
    SurfacePoint point;
    point.shading_normal = point.normal = {0, 0, 1};
    point.ray_direction = {0, 0, -1};
    point.position = {0, 1, 0};
    if (code_.is_constant) {
        return at(point);
    }
    constexpr int SIDE = 8;
    Vec sum;
    for (int row = 0; row < SIDE; ++row) {
        for (int column = 0; column < SIDE; ++column) {
            const float u = (float(column) + 0.5f) / SIDE;
            const float v = (float(row) + 0.5f) / SIDE;
            const float w = (float((row + 3 * column) % SIDE) + 0.5f) / SIDE;
            // The texture coordinates of a direction straight ahead are those of the middle.
            sum += at(point, {u, v, w}, {u - 0.5f, v - 0.5f});
        }
    }
    return sum / float(SIDE * SIDE);
}

} // namespace engine
