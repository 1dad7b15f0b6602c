// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"
#include "engine/qsl_compiler.h"
#include "engine/qsl_tree.h"
#include "engine/texture_map.h"
#include "engine/vec.h"
#include "foundation/vec.h"

#include <cstddef>
#include <memory>
#include <set>
#include <vector>

namespace engine {

/// A shader's program, ready to be asked for its value, by many threads at once.
class QSLProgram {
public:
    /// The definitions of all texts together. Throws QSLFault when they don't compile.
    QSLProgram(const std::vector<QSLText>& texts, const QSLEntry& entry,
               std::vector<std::shared_ptr<const TextureMap>> textures);

    /// The value at the point: a number in x alone. What isn't finite is 0.
    Vec at(const SurfacePoint& point) const { return at(point, point.position, {0, 0}); }
    /// The value at the point moved to `position`, with `uv_shift` added to its texture coordinates.
    Vec at(const SurfacePoint& point, const Vec& position, const Quenza::Vec2f& uv_shift) const;
    /// Mean over a grid of texture coordinates and positions of 0 to 1.
    Vec average() const { return average_; }
    /// The indices of the textures that the program is known to look at.
    const std::set<size_t>& texturesUsed() const { return code_.textures; }

private:
    Vec computeAverage() const;

    QSLCode code_;
    std::vector<std::shared_ptr<const TextureMap>> textures_;
    unsigned components_;
    Vec average_;
};

} // namespace engine
