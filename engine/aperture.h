// SPDX-License-Identifier: MIT
#pragma once

#include "engine/image_cache.h"
#include "engine/notices.h"
#include "engine/random.h"
#include "engine/sampling.h"

#include "scene/aperture_shape.h"

namespace engine {

/// The opening of the lens, on a square of twice the aperture radius.
class Aperture {
public:
    /// Round for null, and for shapes that let no light through, of which the user is told.
    Aperture(const Quenza::ApertureShape* shape, ImageCache& images, Notices& notices);

    /// Uniform over the opening, or by the image's brightness: x to the right and y up, each in -1 to 1.
    Vec sample(Random& random) const;

private:
    static constexpr Quenza::u32 CELLS = 256; ///< A side.

    void addCells(const Quenza::ApertureGenerated& shape);
    void addCells(const FloatImage& image);

    bool round_ = true;
    Distribution cells_; ///< Rows from the top.
};

} // namespace engine
