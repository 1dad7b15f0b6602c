// SPDX-License-Identifier: MIT
#include "engine/tonemap.h"

#include "engine/cie1931.h"
#include "engine/colour.h"
#include "engine/srgb.h"
#include "foundation/file_utils.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace engine {

using Quenza::SceneNodeTonemapping;

namespace {

constexpr double LINEAR_KEY = 0.1;
constexpr double REINHARD_KEY_PER_PRE_SCALE = 0.1;
constexpr double MIDDLE_GREY = 0.18;
/// K of the light meter's equation, in cd s/m^2 ISO.
constexpr double METER_CONSTANT = 12.5;
/// The most that the camera's own settings move the picture away from what the meter finds.
constexpr double METER_STOPS = 1.25;
/// The most that film speed and adjustment move it on their own, whatever the meter finds.
constexpr double ADJUSTMENT_STOPS = 2.0;
constexpr double REFERENCE_ISO = 200.0;

constexpr double PAGE_PRE_SCALE = 3.0;
constexpr double PAGE_BURN = 10.0;

double finiteOr(double value, double otherwise) {
    return std::isfinite(value) ? value : otherwise;
}

std::array<float, 9> toFloats(const ColourMatrix& m) {
    std::array<float, 9> result{};
    std::transform(m.begin(), m.end(), result.begin(), [](double v) { return float(finiteOr(v, 0.0)); });
    return result;
}

/// From a layer's XYZ to the display's; nothing changes for a white that is none.
ColourMatrix whiteAdaption(const Quenza::WhitePoint* white) {
    const ColourMatrix none = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    if (!white || !(white->x > 0.0) || !(white->y > 0.0) || !(white->x + white->y <= 1.0))
        return none;
    return bradfordAdaption(xyzOfChromaticity(white->x, white->y), D65_XYZ);
}

/// RGB to RGB: the layer's weight in XYZ, then the adaption.
ColourMatrix layerMatrix(const ColourMatrix& adaption, const Quenza::Vec3d& xyz, double gain) {
    const ColourMatrix weight = {gain * xyz.x, 0, 0, 0, gain * xyz.y, 0, 0, 0, gain * xyz.z};
    return product(product(XYZ_TO_RGB, adaption), product(weight, RGB_TO_XYZ));
}

void addTransformed(const std::array<float, 9>& m, const FloatImage& layer, FloatImage& sum) {
    const size_t count = std::min(layer.rgb.size(), sum.rgb.size());
    for (size_t i = 0; i + 2 < count; i += 3) {
        const float* const in = &layer.rgb[i];
        float* const out = &sum.rgb[i];
        for (size_t row = 0; row < 3; ++row)
            out[row] += m[row * 3] * in[0] + m[row * 3 + 1] * in[1] + m[row * 3 + 2] * in[2];
    }
}

float luminanceOf(const float* pixel) {
    return luminance(RGB(pixel[0], pixel[1], pixel[2]));
}

/// Scales a pixel and takes it into the display's range. A channel alone that is clipped changes the hue (an
/// orange lamp becomes yellow), so a colour that is too strong for its luminance goes towards the grey of
/// that luminance until it fits.
void fit(float* pixel, double factor) {
    const double luminance = double(luminanceOf(pixel)) * factor;
    if (luminance >= 1) {
        std::fill_n(pixel, 3, 1.0f);
        return;
    }
    double colour[3];
    double share = 1;
    for (size_t c = 0; c < 3; ++c) {
        colour[c] = double(pixel[c]) * factor;
        const double bound = colour[c] > 1 ? 1.0 : 0.0;
        if (colour[c] > 1 || colour[c] < 0)
            share = std::min(share, (bound - luminance) / (colour[c] - luminance));
    }
    share = std::max(share, 0.0);
    for (size_t c = 0; c < 3; ++c) {
        const double value = luminance + share * (colour[c] - luminance);
        // What isn't a number is black.
        pixel[c] = value > 0 ? float(std::min(value, 1.0)) : 0.0f;
    }
}

/// Close to `stops` while they are few, never as far as `limit`.
double bounded(double stops, double limit) {
    return limit * stops / (limit + std::abs(stops));
}

} // namespace

double logAverageLuminance(const FloatImage& image) {
    double sum = 0;
    size_t count = 0;
    for (size_t i = 0; i + 2 < image.rgb.size(); i += 3) {
        const float y = luminanceOf(&image.rgb[i]);
        if (y > 0.0f && std::isfinite(y)) {
            sum += std::log(double(y));
            ++count;
        }
    }
    return count > 0 ? std::exp(sum / double(count)) : 0.0;
}

ToneMapper::ToneMapper(const SceneNodeTonemapping* tonemapping,
                       const Quenza::SceneNodeRenderSettings& settings, double exposure,
                       const std::string& data_folder)
    : method_(SceneNodeTonemapping::REINHARD), scale_(1), pre_scale_(PAGE_PRE_SCALE), post_scale_(1),
      burn_(PAGE_BURN), film_iso_(REFERENCE_ISO), ev_adjust_(0),
      exposure_(std::isfinite(exposure) && exposure > 0 ? exposure : 0) {
    const ColourMatrix adaption = whiteAdaption(settings.white_point.getPointer());
    default_matrix_ = toFloats(layerMatrix(adaption, {1, 1, 1}, 1));
    for (const Quenza::Ref<Quenza::LayerSetting>& layer : settings.layer_settings)
        layer_matrices_.push_back(layer.nonNull() ? toFloats(layerMatrix(adaption, layer->xyz, layer->gain))
                                                  : default_matrix_);
    if (!tonemapping)
        return;
    method_ = tonemapping->tonemap_type;
    scale_ = finiteOr(tonemapping->scale, 1);
    pre_scale_ = finiteOr(tonemapping->pre_scale, PAGE_PRE_SCALE);
    post_scale_ = finiteOr(tonemapping->post_scale, 1);
    burn_ = finiteOr(tonemapping->burn, PAGE_BURN);
    film_iso_ = finiteOr(tonemapping->film_iso, REFERENCE_ISO);
    ev_adjust_ = finiteOr(tonemapping->ev_adjust, 0);
    if (method_ != SceneNodeTonemapping::CAMERA || tonemapping->response_function_path.empty())
        return;
    std::string fault;
    const Quenza::String path = Quenza::FileUtils::join(data_folder, tonemapping->response_function_path);
    if (!response_.load(path.toStdString(), fault))
        warning_ = "The camera response '" + path.toStdString() + "' can't be used (" + fault +
                   "); the default curve takes its place.";
}

FloatImage ToneMapper::combine(const std::vector<FloatImage>& layers) const {
    if (layers.empty())
        return {};
    FloatImage sum(layers.front().width, layers.front().height);
    for (size_t i = 0; i < layers.size(); ++i)
        addTransformed(i < layer_matrices_.size() ? layer_matrices_[i] : default_matrix_, layers[i], sum);
    return sum;
}

FloatImage ToneMapper::display(const std::vector<FloatImage>& layers) const {
    FloatImage image = combine(layers);
    if (layers.empty())
        return image;
    if (method_ == SceneNodeTonemapping::REINHARD) {
        mapReinhard(image, logAverageLuminance(image));
        return image;
    }
    FloatImage plain(image.width, image.height);
    for (const FloatImage& layer : layers)
        addTransformed(default_matrix_, layer, plain);
    const double meter = logAverageLuminance(plain);
    if (method_ == SceneNodeTonemapping::CAMERA)
        mapCamera(image, meter);
    else
        mapLinear(image, meter);
    return image;
}

std::vector<unsigned char> ToneMapper::toneMap(const std::vector<FloatImage>& layers) const {
    const FloatImage image = display(layers);
    std::vector<unsigned char> bytes(image.rgb.size());
    std::transform(image.rgb.begin(), image.rgb.end(), bytes.begin(),
                   [](float v) { return toByte(srgbEncode(v)); });
    return bytes;
}

void ToneMapper::mapLinear(FloatImage& image, double meter) const {
    const double factor = meter > 0 ? scale_ * LINEAR_KEY / meter : 0;
    for (size_t i = 0; i + 2 < image.rgb.size(); i += 3)
        fit(&image.rgb[i], factor);
}

void ToneMapper::mapReinhard(FloatImage& image, double meter) const {
    const double key = meter > 0 ? REINHARD_KEY_PER_PRE_SCALE * pre_scale_ / meter : 0;
    // Without a burn there is no white to burn to: equation 3.
    const double inverse_white = burn_ > 0 ? 1.0 / (burn_ * burn_) : 0.0;
    for (size_t i = 0; i + 2 < image.rgb.size(); i += 3) {
        const double y = key * double(luminanceOf(&image.rgb[i]));
        fit(&image.rgb[i], y > 0 ? key * post_scale_ * (1 + y * inverse_white) / (1 + y) : 0.0);
    }
}

/// From cd/m^2 to relative exposure.
double ToneMapper::cameraScale(double meter) const {
    if (!(meter > 0) || !(film_iso_ > 0))
        return 0;
    const double asked = std::clamp(std::log2(film_iso_ / REFERENCE_ISO) + ev_adjust_, -100.0, 100.0);
    double stops = asked;
    if (exposure_ > 0) {
        const double own = bounded(asked, ADJUSTMENT_STOPS);
        const double away = std::log2(meter * exposure_ * REFERENCE_ISO / METER_CONSTANT) + asked - own;
        stops = bounded(away, METER_STOPS) + own;
    }
    return MIDDLE_GREY / meter * std::exp2(stops);
}

void ToneMapper::mapCamera(FloatImage& image, double meter) const {
    const double scale = cameraScale(meter);
    if (response_.isMeasured()) {
        for (size_t i = 0; i < image.rgb.size(); ++i)
            image.rgb[i] = srgbDecode(response_(int(i % 3), float(double(image.rgb[i]) * scale)));
        return;
    }
    for (size_t i = 0; i + 2 < image.rgb.size(); i += 3) {
        const double exposure = double(luminanceOf(&image.rgb[i])) * scale;
        const double shown = double(srgbDecode(response_(0, float(exposure))));
        fit(&image.rgb[i], exposure > 0 ? scale * shown / exposure : 0.0);
    }
}

} // namespace engine
