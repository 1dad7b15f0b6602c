// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vec.h"

namespace Quenza {

/// Chromaticity (CIE 1931 x, y) that the image shows as white.
class WhitePoint : public RefCounted {
public:
    WhitePoint() = default;
    WhitePoint(double chromaticity_x, double chromaticity_y) : x(chromaticity_x), y(chromaticity_y) {}

    double x = 1.0 / 3.0;
    double y = 1.0 / 3.0;
};

/// The rectangle of the image that is rendered, in pixels from the top left corner.
class RenderRegion : public RefCounted {
public:
    i32 x1 = 0;
    i32 x2 = 0;
    i32 y1 = 0;
    i32 y2 = 0;
};

/// A light layer: an image of its own that is added to the others with this weight.
class LayerSetting : public RefCounted {
public:
    LayerSetting() = default;
    explicit LayerSetting(const String& layer_name) : name(layer_name) {}

    String name;
    Vec3d xyz{1, 1, 1};
    double gain = 1;
};

/// The graphics card to render on.
class GPUDeviceSettings : public RefCounted {
public:
    /// Values of `subsystem`.
    enum Subsystem : u32 {
        OPENCL = 1,
        CUDA = 2,
    };

    String device_name;
    u32 subsystem = OPENCL;
};

} // namespace Quenza
