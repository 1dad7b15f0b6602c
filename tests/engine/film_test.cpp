// SPDX-License-Identifier: MIT
#include "engine/film.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <thread>

using namespace engine;
using Quenza::Ref;

namespace {

struct NamedSplat {
    const char* name;
    Ref<Quenza::SplatFilter> filter;
};
struct NamedDownsize {
    const char* name;
    Ref<Quenza::DownsizeFilter> filter;
};

std::vector<NamedSplat> splatFilters() {
    return {{"fast box", new Quenza::SplatFilterFastBox},
            {"box", new Quenza::SplatFilterBox},
            {"radial", new Quenza::SplatFilterRadial},
            {"cubic", new Quenza::SplatFilterMNCubic}};
}
std::vector<NamedDownsize> downsizeFilters() {
    auto* const narrow = new Quenza::DownsizeFilterMNCubic;
    narrow->blur = 0;
    narrow->ring = 1;
    narrow->radius = std::nan("");
    return {{"cubic", new Quenza::DownsizeFilterMNCubic},
            {"cubic with odd numbers", narrow},
            {"sharp", new Quenza::DownsizeFilterSharp},
            {"gaussian", new Quenza::DownsizeFilterGaussian}};
}

/// `count` samples at every cell, at places that a seed gives; the colour is a function of the place.
template <class Colour>
void addEvenly(Film& film, unsigned cells_per_pixel, int count, const Colour& colour) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uniform(0, 0.999f);
    const PixelRect& rect = film.rect();
    const float step = 1.0f / float(cells_per_pixel);
    for (unsigned y = rect.y_begin * cells_per_pixel; y < rect.y_end * cells_per_pixel; ++y)
        for (unsigned x = rect.x_begin * cells_per_pixel; x < rect.x_end * cells_per_pixel; ++x)
            for (int i = 0; i < count; ++i) {
                const float px = (float(x) + uniform(random)) * step,
                            py = (float(y) + uniform(random)) * step;
                const RGB c = colour(px, py);
                film.addSample(px, py, &c);
            }
}

double meanOf(const FloatImage& image) {
    double sum = 0;
    for (const float v : image.rgb)
        sum += double(v);
    return sum / double(image.rgb.size());
}

} // namespace

TEST(Film, AFlatImageStaysFlatUpToTheBorder) {
    for (const NamedSplat& splat : splatFilters())
        for (const NamedDownsize& downsize : downsizeFilters())
            for (const unsigned factor : {1u, 2u, 3u}) {
                Film film(5, 4, factor, 1, *splat.filter, *downsize.filter);
                addEvenly(film, factor, 4, [](float, float) { return RGB(1, 2, 3); });
                const FloatImage image = film.layerImages()[0];
                for (size_t i = 0; i < image.rgb.size(); ++i)
                    EXPECT_NEAR(image.rgb[i], float(i % 3 + 1), 1e-4f) << splat.name << ", " << downsize.name;
            }
}

TEST(Film, FilterValuesAreTheirPublishedOnes) {
    Quenza::SplatFilterMNCubic mn;
    mn.blur = 1.0 / 3;
    mn.ring = 1.0 / 3;
    const FilterKernel recommended = splatKernel(mn);
    EXPECT_NEAR(recommended(0.0f), 16.0f / 18, 1e-6f);
    EXPECT_NEAR(recommended(1.0f), 1.0f / 18, 1e-6f);
    EXPECT_NEAR(recommended(-1.5f), -5.0f / 144, 1e-6f);
    EXPECT_EQ(recommended(2.0f), 0.0f);
    // B = 1, C = 0 is the B-spline: 2/3 in the middle, stretched to the radius.
    Quenza::DownsizeFilterMNCubic spline;
    const FilterKernel stretched = downsizeKernel(spline);
    EXPECT_NEAR(stretched(0.0f), 2.0f / 3, 1e-6f);
    EXPECT_NEAR(stretched(0.8f), 1.0f / 6, 1e-6f);
    EXPECT_EQ(stretched(1.61f), 0.0f);
    EXPECT_LT(downsizeKernel(Quenza::DownsizeFilterSharp())(1.3f), 0.0f);
    EXPECT_GT(downsizeKernel(Quenza::DownsizeFilterGaussian())(1.3f), 0.0f);
}

TEST(Film, RegionsAreClippedAndTheRestIsBlack) {
    const struct {
        Quenza::i32 x1, y1, x2, y2;
        PixelRect expected;
    } cases[] = {
        {2, 1, 4, 3, {2, 1, 4, 3}}, {4, 3, 2, 1, {2, 1, 4, 3}}, {-5, -5, 2, 900, {0, 0, 2, 4}},
        {3, 3, 3, 3, {0, 0, 6, 4}}, {7, 0, 9, 4, {0, 0, 6, 4}}, {-2147483647, 0, 2147483647, 1, {0, 0, 6, 1}},
    };
    for (const auto& c : cases) {
        Quenza::RenderRegion region;
        region.x1 = c.x1, region.y1 = c.y1, region.x2 = c.x2, region.y2 = c.y2;
        Film film(6, 4, 2, 1, Quenza::SplatFilterBox(), Quenza::DownsizeFilterMNCubic(), &region);
        const PixelRect& r = film.rect();
        EXPECT_EQ(r.x_begin, c.expected.x_begin);
        EXPECT_EQ(r.y_begin, c.expected.y_begin);
        EXPECT_EQ(r.x_end, c.expected.x_end);
        EXPECT_EQ(r.y_end, c.expected.y_end);
        addEvenly(film, 2, 2, [](float, float) { return RGB(1); });
        const FloatImage image = film.layerImages()[0];
        ASSERT_EQ(image.rgb.size(), 6u * 4 * 3);
        for (unsigned y = 0; y < 4; ++y)
            for (unsigned x = 0; x < 6; ++x) {
                const bool inside = x >= r.x_begin && x < r.x_end && y >= r.y_begin && y < r.y_end;
                EXPECT_NEAR(*image.pixel(x, y), inside ? 1.0f : 0.0f, 1e-4f);
            }
    }
}

TEST(Film, LayersThreadsAndCounts) {
    Film film(8, 8, 1, 3, Quenza::SplatFilterMNCubic(), Quenza::DownsizeFilterSharp());
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&film, t] {
            std::mt19937 random(unsigned(t) + 1u);
            std::uniform_real_distribution<float> uniform(0, 8);
            const RGB colours[3] = {RGB(1), RGB(0, 2, 0), RGB(std::nanf(""), 1, 1)};
            for (int i = 0; i < 4096; ++i)
                film.addSample(std::min(uniform(random), 7.999f), std::min(uniform(random), 7.999f), colours);
            film.addSamples(4096);
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_DOUBLE_EQ(film.samplesPerPixel(), 256.0);
    const std::vector<FloatImage> images = film.layerImages();
    ASSERT_EQ(images.size(), 3u);
    for (size_t i = 0; i < images[0].rgb.size(); i += 3) {
        EXPECT_NEAR(images[0].rgb[i], 1.0f, 1e-3f);
        EXPECT_NEAR(images[1].rgb[i + 1], 2.0f, 1e-3f);
        EXPECT_EQ(images[1].rgb[i], 0.0f);
        EXPECT_EQ(images[2].rgb[i + 1], 0.0f);
    }
    film.clear();
    EXPECT_EQ(meanOf(film.layerImages()[0]), 0.0);
    EXPECT_EQ(film.samplesPerPixel(), 0.0);
}
