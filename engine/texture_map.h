// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "engine/geometry.h"
#include "engine/images/image_file.h"
#include "engine/vec.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "scene/texture.h"

#include <array>
#include <memory>

namespace engine {

/// An image as a parameter reads it: the value of a texel t, raised to the texture's exponent, is
/// a * t * t + b * t + c. The image repeats in both directions.
class TextureMap {
public:
    /// A null image stands for one that couldn't be read: it is grey all over.
    TextureMap(const Quenza::Texture& texture, std::shared_ptr<const TexelImage> image);

    bool isReadable() const { return image_ != nullptr; }
    RGB at(const SurfacePoint& point) const;
    /// At the image's own coordinates: u runs to the right, v upwards from the bottom row.
    RGB lookUp(float u, float v) const;
    /// Mean over the image.
    RGB average() const { return average_; }

    /// Change of the luminance along u and v of the surface's first UV set, over a texel.
    struct Slope {
        float along_u, along_v;
    };
    Slope slopeAt(const SurfacePoint& point) const;

private:
    enum class Mapping { UV, SPHERICAL, PANORAMA };

    void setMapping(const Quenza::TexCoordGenerator* generator);
    Quenza::Vec2f placeOf(const SurfacePoint& point) const;
    Slope slopeAlongPlace(const Quenza::Vec2f& place) const;
    RGB texel(Quenza::i64 x, Quenza::i64 y) const;
    float convert(float texel) const;
    RGB smoothed(Quenza::i64 x, Quenza::i64 y, float fx, float fy) const;

    std::shared_ptr<const TexelImage> image_;
    double a_, b_, c_, exponent_;
    Quenza::u32 uv_set_;
    bool smooth_;
    Mapping mapping_ = Mapping::UV;
    std::array<float, 4> uv_matrix_{1, 0, 0, 1}; ///< Row by row.
    Quenza::Vec2f uv_offset_{0, 0};
    std::array<Vec, 3> rotation_{Vec{1, 0, 0}, Vec{0, 1, 0}, Vec{0, 0, 1}}; ///< Row by row.
    std::array<float, 256> values_{};                                       ///< Of each byte.
    RGB average_;
};

} // namespace engine
