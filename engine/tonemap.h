// SPDX-License-Identifier: MIT
#pragma once

#include "engine/camera_response.h"
#include "engine/images/image_file.h"
#include "foundation/types.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_tonemapping.h"

#include <array>
#include <string>
#include <vector>

namespace engine {

/// Makes the display image of the layers.
///
/// The layers are weighted (`gain` times `xyz`, the latter component by component in CIE XYZ) and added; the
/// sum is adapted from the white point to the display's D65 (Bradford), so that a surface lit by that white
/// is neutral. Then comes one of three methods:
///
/// - Linear: the colour times `scale` times 0.1 / L. The 0.1 lies between the two defaults that occur, the
/// scene
///   node's 1 and the camera page's 3: the typical luminance goes to a darker and to a lighter middle grey.
/// - Reinhard (Reinhard et al., "Photographic Tone Reproduction for Digital Images", SIGGRAPH 2002, equations
/// 1
///   to 4): luminance Y = key / L * world luminance, key = 0.1 * `pre_scale`; display luminance
///   `post_scale` * Y (1 + Y / `burn`^2) / (1 + Y). The camera page's default pre_scale of 3 so gives a key
///   of 0.3, between the paper's 0.18 for ordinary and 0.36 for bright scenes: a document lit by sun and sky,
///   whose surfaces mostly are near white, gets them as light greys, far from clipping.
/// - Camera: the exposed colour goes through a film's or camera's response curves, channel by channel;
/// without curves of its own its luminance through a default one. A relative exposure of 0.18 is
///   middle grey. The camera's settings (f-number, shutter, film speed at `film_iso`) give an exposure by the
///   light meter's equation N^2 / t = L S / K, K = 12.5. Scenes seldom have real light levels - a plain light
///   of the plug-in is a billionth of a lamp - so a meter corrects it: s stops away from middle grey at L
///   become 1.25 s / (1.25 + |s|) stops. Of `film_iso` (in stops from 200) and `ev_adjust` together, a stops,
///   2 a / (2 + |a|) act behind the meter; the rest counts as the camera's, so that an adjustment made for
///   real light levels, such as -6.5 stops under lamps as bright as the sun, meets the meter that has seen to
///   them already. Without an exposure all of it acts. More exposure is always brighter, and no picture is
///   black or white.
///
/// A colour that doesn't fit keeps its luminance and hue, and pales; measured response curves do as they do.
///
/// L is the log-average luminance of the pixels that aren't black. Reinhard takes it from the weighted sum of
/// the layers, which is what the paper's adaptation sees. Linear and camera take it from the plain sum, so
/// that a layer's gain shows: twice the gain is twice as bright.
class ToneMapper {
public:
    /// `tonemapping` may be null: Reinhard with the camera page's defaults. `exposure` is the camera's
    /// exposure time in seconds over its squared f-number; 0 leaves it to the meter. The camera's response is
    /// looked for below `data_folder`, the renderer's own folder.
    ToneMapper(const Quenza::SceneNodeTonemapping* tonemapping,
               const Quenza::SceneNodeRenderSettings& settings, double exposure,
               const std::string& data_folder);

    /// The weighted and adapted sum of layers of one size; layers without a setting count with weight 1. It
    /// is linear, in the layers' unit.
    FloatImage combine(const std::vector<FloatImage>& layers) const;
    /// The display image of the layers, linear, from 0 to 1.
    FloatImage display(const std::vector<FloatImage>& layers) const;
    /// The display image in sRGB, three bytes a pixel.
    std::vector<unsigned char> toneMap(const std::vector<FloatImage>& layers) const;

    /// What couldn't be done as the scene asks; empty when all is well.
    const std::string& warning() const { return warning_; }

private:
    void mapLinear(FloatImage& image, double meter) const;
    void mapReinhard(FloatImage& image, double meter) const;
    void mapCamera(FloatImage& image, double meter) const;
    double cameraScale(double meter) const;

    Quenza::u32 method_;
    double scale_, pre_scale_, post_scale_, burn_, film_iso_, ev_adjust_, exposure_;
    /// From a layer to its part of the sum, row by row.
    std::vector<std::array<float, 9>> layer_matrices_;
    std::array<float, 9> default_matrix_;
    CameraResponse response_;
    std::string warning_;
};

/// The log-average luminance of the pixels above zero; 0 when there are none.
double logAverageLuminance(const FloatImage& image);

} // namespace engine
