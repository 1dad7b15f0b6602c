// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"
#include "foundation/image_buffers.h"

namespace engine::library {

/// How linear values from 0 to 1 become those of a display of some gamma. A display of gamma 2.2 is taken for
/// an sRGB one, whose curve is that power but for a straight foot: so an image has the bytes of the
/// renderer's PNG file. Any other gamma is a plain power.
class DisplayCurve {
public:
    /// Throws QuenzaException for a gamma that isn't above 0.
    explicit DisplayCurve(float gamma);

    float operator()(float linear) const;

private:
    float inverse_gamma_; ///< 0 stands for sRGB.
};

/// Writes the image's bytes; a fourth byte a pixel is 255. A buffer of another size, or of neither three nor
/// four bytes a pixel, is first resized, to three unless it has four.
void writeBytes(const FloatImage& image, const DisplayCurve& curve, Quenza::UInt8Buffer& buffer);

/// Likewise the linear floats; a fourth channel is 1. An empty buffer stays so.
void writeFloats(const FloatImage& image, Quenza::FloatBuffer& buffer);

} // namespace engine::library
