// SPDX-License-Identifier: MIT
#include "foundation/image_blur.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>

using namespace Quenza;

namespace {

Image point(u32 width, u32 height, u32 x, u32 y) {
    Image image(width, height);
    image.pixel(x, y)[0] = 1;
    image.pixel(x, y)[2] = 0.5f;
    return image;
}

TEST(ImageBlur, SpreadsAPointAsAGaussianInBothDirections) {
    TaskManager manager(3);
    Image image = point(21, 17, 10, 8);
    blur(image, 1.5f, manager);
    double total = 0;
    for (u32 y = 0; y < 17; ++y)
        for (u32 x = 0; x < 21; ++x) {
            const f32* pixel = image.pixel(x, y);
            total += double(pixel[0]);
            EXPECT_EQ(pixel[1], 0);
            EXPECT_NEAR(pixel[2], pixel[0] / 2, 1e-7);
        }
    EXPECT_NEAR(total, 1, 1e-5);
    const f32 centre = image.pixel(10, 8)[0];
    EXPECT_NEAR(double(centre), 1 / (2 * std::numbers::pi * 1.5 * 1.5), 1e-3);
    for (const auto& [dx, dy] : {std::pair(1, 0), {0, 1}, {2, 1}, {-1, -2}, {-3, 3}, {4, 0}}) {
        const double expected = std::exp(-(dx * dx + dy * dy) / (2 * 1.5 * 1.5));
        EXPECT_NEAR(double(image.pixel(u32(10 + dx), u32(8 + dy))[0] / centre), expected, 1e-4)
            << dx << ", " << dy;
    }
}

TEST(ImageBlur, GivesTheSameFromAnyNumberOfThreadsAtEverySize) {
    TaskManager one(1);
    TaskManager four(4);
    for (const auto& [width, height] : {std::pair(1u, 1u), {1u, 9u}, {40u, 1u}, {33u, 50u}}) {
        Image a = point(width, height, width / 2, height - 1);
        Image b = a;
        blur(a, 4, one);
        blur(b, 4, four);
        EXPECT_TRUE(std::equal(a.pixels().begin(), a.pixels().end(), b.pixels().begin()))
            << width << " x " << height;
    }
}

TEST(ImageBlur, KeepsEvenImagesAndWhatItCantBlur) {
    TaskManager manager(2);
    Image even(7, 5);
    for (f32& value : even.pixels())
        value = 0.25f;
    blur(even, 100, manager); // far beyond the edges
    for (const f32 value : even.pixels())
        EXPECT_NEAR(value, 0.25f, 1e-6);

    Image empty;
    blur(empty, 2, manager);
    EXPECT_EQ(empty.getWidth(), 0u);
    for (const f32 deviation : {0.0f, -1.0f, std::numeric_limits<f32>::quiet_NaN()}) {
        Image image = point(5, 5, 2, 2);
        blur(image, deviation, manager);
        EXPECT_EQ(image.pixel(2, 2)[0], 1);
    }
}

} // namespace
