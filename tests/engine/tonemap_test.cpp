// SPDX-License-Identifier: MIT
#include "engine/tonemap.h"

#include "engine/cie1931.h"
#include "engine/colour.h"
#include "engine/srgb.h"
#include "support/system_texts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace engine;
using Quenza::SceneNodeRenderSettings;
using Quenza::SceneNodeTonemapping;
using Quenza::TempDir;

namespace {

FloatImage row(std::initializer_list<RGB> pixels) {
    FloatImage image(Quenza::u32(pixels.size()), 1);
    size_t i = 0;
    for (const RGB& c : pixels) {
        image.rgb[i++] = c.r;
        image.rgb[i++] = c.g;
        image.rgb[i++] = c.b;
    }
    return image;
}

/// The settings' own white point of a third each is not the display's; this one leaves colours alone.
Quenza::Ref<SceneNodeRenderSettings> neutralSettings() {
    Quenza::Ref<SceneNodeRenderSettings> settings = new SceneNodeRenderSettings;
    settings->setWhitePoint(new Quenza::WhitePoint(0.31271, 0.32902));
    return settings;
}

Quenza::Ref<SceneNodeTonemapping> node(Quenza::u32 type) {
    Quenza::Ref<SceneNodeTonemapping> result = new SceneNodeTonemapping;
    result->tonemap_type = type;
    result->response_function_path = "";
    return result;
}

ToneMapper mapper(const SceneNodeTonemapping* tonemapping, double exposure = 0) {
    return ToneMapper(tonemapping, *neutralSettings(), exposure, "");
}

float green(const FloatImage& image, Quenza::u32 x) {
    return image.pixel(x, 0)[1];
}

} // namespace

TEST(Tonemap, ReinhardFollowsThePublishedFormula) {
    const auto reinhard = node(SceneNodeTonemapping::REINHARD);
    const struct { double pre, post, burn; } cases[] = {{3, 1, 10}, {4, 1, 6}, {3, 0.5, 1}, {3, 1, 0}};
    for (const auto& c : cases) {
        reinhard->pre_scale = c.pre;
        reinhard->post_scale = c.post;
        reinhard->burn = c.burn;
        // Log-average luminance 1000; black is left out of it.
        const FloatImage out =
            mapper(reinhard.getPointer()).display({row({RGB(100), RGB(10000), RGB(0), RGB(1000)})});
        for (const auto& [x, luminance] :
             {std::pair(0u, 100.0), std::pair(1u, 10000.0), std::pair(3u, 1000.0)}) {
            const double y = 0.1 * c.pre * luminance / 1000;
            const double white = c.burn > 0 ? y / (c.burn * c.burn) : 0;
            EXPECT_NEAR(green(out, x), std::min(c.post * y * (1 + white) / (1 + y), 1.0), 1e-3) << luminance;
        }
        EXPECT_EQ(green(out, 2), 0.0f);
    }
    const FloatImage colour = mapper(reinhard.getPointer()).display({row({RGB(1, 2, 4)})});
    EXPECT_NEAR(colour.rgb[2] / colour.rgb[0], 4.0f, 0.02f);
}

TEST(Tonemap, LayersAreWeightedInXYZ) {
    const auto settings = neutralSettings();
    settings->ensureLayers(2);
    settings->layer_settings[0]->gain = 0.5;
    settings->layer_settings[1]->xyz = {1, 2, 0};
    const ToneMapper tone_mapper(nullptr, *settings, 0, "");
    const RGB a(1, 0.5f, 0.25f), b(0.2f, 0.4f, 0.6f), c(3);
    // A third layer, without a setting, counts as it is.
    const FloatImage sum = tone_mapper.combine({row({a}), row({b}), row({c})});
    const Triple xyz = transformed(RGB_TO_XYZ, {double(b.r), double(b.g), double(b.b)});
    const Triple weighted = transformed(XYZ_TO_RGB, {xyz[0], xyz[1] * 2, 0});
    EXPECT_NEAR(sum.rgb[0], 0.5f + float(weighted[0]) + 3, 2e-3f);
    EXPECT_NEAR(sum.rgb[1], 0.25f + float(weighted[1]) + 3, 2e-3f);
    EXPECT_NEAR(sum.rgb[2], 0.125f + float(weighted[2]) + 3, 2e-3f);
    EXPECT_TRUE(tone_mapper.combine({}).rgb.empty());
}

/// Hue as the order of the channels and the place of the middle one between the others.
TEST(Tonemap, WhatIsTooBrightKeepsItsHueAndItsLuminance) {
    const RGB colours[] = {{8, 4, 0.1f}, {0.1f, 0.3f, 9}, {30, 1, 1}, {0, 4, 2}, {2000, 500, 100}};
    for (const Quenza::u32 type :
         {SceneNodeTonemapping::LINEAR, SceneNodeTonemapping::REINHARD, SceneNodeTonemapping::CAMERA})
        for (const RGB& c : colours) {
            const auto method = node(type);
            method->scale = method->pre_scale = 3;
            method->burn = 2;
            FloatImage image(64, 1);
            std::fill(image.rgb.begin(), image.rgb.end(), 1.0f);
            std::copy_n(&c.r, 3, image.rgb.begin());
            const FloatImage out = mapper(method.getPointer()).display({image});
            const RGB shown(out.rgb[0], out.rgb[1], out.rgb[2]);
            EXPECT_LE(maxComponent(shown), 1.0f);
            if (luminance(shown) > 0.995f)
                continue; // White has no hue.
            const auto place = [](const RGB& x) {
                const float low = std::min({x.r, x.g, x.b}), high = maxComponent(x);
                return std::array{(x.r - low) / (high - low), (x.g - low) / (high - low),
                                  (x.b - low) / (high - low)};
            };
            for (size_t i = 0; i < 3; ++i)
                EXPECT_NEAR(place(shown)[i], place(c)[i], 0.01f) << type << ": " << c.r << " " << c.b;
            const float grey_luminance = green(mapper(method.getPointer()).display({[&] {
                std::fill_n(image.rgb.begin(), 3, luminance(c));
                return image;
            }()}),
                                               0);
            EXPECT_NEAR(luminance(shown), grey_luminance, 0.005f);
        }
}

TEST(Tonemap, CameraExposureSpeedAndAdjustment) {
    const auto camera = node(SceneNodeTonemapping::CAMERA);
    const FloatImage day = row({RGB(4000)});
    const auto value = [&](double exposure) {
        return green(mapper(camera.getPointer(), exposure).display({day}), 0);
    };
    const float metered = value(0);
    EXPECT_NEAR(metered, 0.18f, 1e-3f);
    // The light meter's equation: what it asks for is what the meter alone gives.
    EXPECT_NEAR(value(12.5 / (4000 * 200.0)), metered, 1e-3f);
    float previous = 0;
    for (double exposure = 1e-9; exposure < 1; exposure *= 2) {
        EXPECT_GT(value(exposure), previous);
        previous = value(exposure);
    }
    // A stop: the default curve is close to linear in the dark.
    camera->ev_adjust = -3;
    const float dark = value(0);
    camera->ev_adjust = -4;
    EXPECT_NEAR(dark / value(0), 2.0f, 0.05f);
    camera->ev_adjust = 0;
    camera->film_iso = 25;
    EXPECT_NEAR(value(0), dark, 1e-4f);
    // Lamps like the sun: what the camera was adjusted for isn't taken away twice.
    camera->film_iso = 200;
    const double dazzling = std::exp2(8) * 12.5 / (4000 * 200.0);
    previous = 0;
    for (double ev = -16; ev <= 2; ev += 0.5) {
        camera->ev_adjust = ev;
        EXPECT_GT(value(dazzling), previous) << ev;
        previous = value(dazzling);
    }
    camera->ev_adjust = -7;
    EXPECT_GT(value(dazzling), 0.4f * metered);
}

TEST(Tonemap, ResponseCurvesAreReadFromTheDataFolder) {
    const struct {
        const char* text;
        bool good;
        float red, blue; ///< Display value at half the exposure.
    } cases[] = {
        {"0 0\n0.5 0.8\n1 1\n", true, 0.8f, 0.8f},
        {"# a film\n0 0 0 0\n0.25 0.2 0.5 0.4\n0.75 0.4 0.7 0.8\n1 1 1 1\n", true, 0.3f, 0.6f},
        {"some film graph\nI =\n0 0.5\n1\nB =\n0 0.6 1\n", true, 0.6f, 0.6f},
        {"Red\nI =\n0 1\nB =\n0 0.2\nGreen\nI =\n0 1\nB =\n0 1\nBlue\nI =\n0 1\nB =\n0 0.5\n", true, 0.1f,
         0.25f},
        {"", false, 0, 0},
        {"only words\n", false, 0, 0},
        {"0 0\n0 1\n", false, 0, 0},
        {"1 0\n0.5 1\n", false, 0, 0},
        {"0 0\n1 200\n", false, 0, 0},
        {"I\n0 1\nB\n0 0.5 1\n", false, 0, 0},
        {"0\n", false, 0, 0},
    };
    const TempDir dir;
    for (const auto& c : cases) {
        Quenza::writeBytes(dir / "film.txt", c.text);
        CameraResponse response;
        std::string fault;
        EXPECT_EQ(response.load((dir / "film.txt").toStdString(), fault), c.good) << c.text;
        EXPECT_EQ(fault, c.good ? "" : "it holds no response curves");
        EXPECT_NEAR(response(0, 0.5f), c.good ? c.red : CameraResponse()(0, 0.5f), 1e-5f) << c.text;
        EXPECT_NEAR(response(2, 0.5f), c.good ? c.blue : CameraResponse()(2, 0.5f), 1e-5f) << c.text;
    }
    Quenza::writeBytes(dir / "film.txt", cases[0].text);
    const auto camera = node(SceneNodeTonemapping::CAMERA);
    camera->response_function_path = "film.txt";
    const std::string folder = dir.path().toStdString();
    const ToneMapper found(camera.getPointer(), *neutralSettings(), 0, folder);
    EXPECT_EQ(found.warning(), "");
    EXPECT_EQ(found.toneMap({row({RGB(1)})})[0], std::lround(255 * 0.18f / 0.5f * 0.8f));
    camera->response_function_path = "none.txt";
    EXPECT_EQ(ToneMapper(camera.getPointer(), *neutralSettings(), 0, folder).warning(),
              "The camera response '" + (dir / "none.txt").toStdString() +
                  "' can't be used (CreateFile failed: " + Quenza::noSuchFile() +
                  "); the default curve takes its place.");
}

TEST(Tonemap, AnyPictureAndNumbersGiveBytes) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (const Quenza::u32 type : {1000u, 1001u, 1002u, 7u}) {
        const auto odd = node(type);
        for (const double number : {0.0, -1.0, 1e300, std::nan("")}) {
            odd->scale = odd->pre_scale = odd->post_scale = odd->burn = odd->film_iso = odd->ev_adjust =
                number;
            const ToneMapper tone_mapper = mapper(odd.getPointer(), number);
            EXPECT_EQ(tone_mapper.toneMap({row({RGB(0), RGB(1), RGB(infinity), RGB(std::nanf(""))})}).size(),
                      12u);
            EXPECT_EQ(tone_mapper.toneMap({row({RGB(0)})}), std::vector<unsigned char>(3, 0));
            EXPECT_TRUE(tone_mapper.toneMap({}).empty());
        }
    }
}
