// SPDX-License-Identifier: MIT
#include "engine/aperture.h"

#include "engine/colour.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

using Quenza::u32;

/// Each blade's edge is an arc that bulges outwards: a point is in the opening when it lies within the
/// circles of all arcs, and within the full aperture. At its middle an edge is `blade_offset` away from the
/// centre.
bool isOpen(const Quenza::ApertureGenerated& shape, double x, double y) {
    if (x * x + y * y > 1.0) {
        return false;
    }
    const double back = shape.blade_curvature_radius - shape.blade_offset;
    for (int i = 0; i < shape.num_blades; ++i) {
        const double angle = shape.start_angle + 2 * double(PI) * i / shape.num_blades;
        const double dx = x + back * std::cos(angle);
        const double dy = y + back * std::sin(angle);
        if (dx * dx + dy * dy > shape.blade_curvature_radius * shape.blade_curvature_radius) {
            return false;
        }
    }
    return true;
}

} // namespace

Aperture::Aperture(const Quenza::ApertureShape* shape, ImageCache& images, Notices& notices) {
    if (const auto* generated = dynamic_cast<const Quenza::ApertureGenerated*>(shape)) {
        addCells(*generated);
    } else if (const auto* pictured = dynamic_cast<const Quenza::ApertureImage*>(shape)) {
        const auto image = images.load(pictured->path);
        if (!image) {
            return;
        }
        addCells(*image);
    } else {
        return;
    }
    round_ = !cells_.canSample();
    if (round_) {
        notices.tell("The camera's aperture lets no light through; it is taken as round.");
    }
}

void Aperture::addCells(const Quenza::ApertureGenerated& shape) {
    const int blades = std::clamp(shape.num_blades, 3, 1000);
    Quenza::ApertureGenerated limited = shape;
    limited.num_blades = blades;
    for (u32 row = 0; row < CELLS; ++row) {
        for (u32 column = 0; column < CELLS; ++column) {
            const double x = 2 * (column + 0.5) / CELLS - 1;
            const double y = 1 - 2 * (row + 0.5) / CELLS;
            cells_.add(isOpen(limited, x, y) ? 1 : 0);
        }
    }
}

void Aperture::addCells(const FloatImage& image) {
    for (u32 row = 0; row < CELLS; ++row) {
        for (u32 column = 0; column < CELLS; ++column) {
            const float* const p = image.pixel(u32(Quenza::u64(column) * image.width / CELLS),
                                               u32(Quenza::u64(row) * image.height / CELLS));
            cells_.add(double(luminance({p[0], p[1], p[2]})));
        }
    }
}

Vec Aperture::sample(Random& random) const {
    if (round_) {
        return sampleDisc(random);
    }
    const Quenza::u64 cell = cells_.sample(random.next());
    const Quenza::u64 row = cell / CELLS;
    const Quenza::u64 column = cell % CELLS;
    return {2.0f * (float(column) + random.next()) / CELLS - 1.0f,
            1.0f - 2.0f * (float(row) + random.next()) / CELLS, 0.0f};
}

} // namespace engine
