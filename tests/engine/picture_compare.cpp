// SPDX-License-Identifier: MIT
#include "engine/picture_compare.h"

#include <algorithm>
#include <cmath>

namespace {

using engine::FloatImage;

constexpr unsigned BLOCK = 4;

double channelMean(const FloatImage& image, unsigned channel, unsigned x0, unsigned y0, unsigned side_x,
                   unsigned side_y) {
    double sum = 0;
    const unsigned x1 = std::min(x0 + side_x, image.width);
    const unsigned y1 = std::min(y0 + side_y, image.height);
    for (unsigned y = y0; y < y1; ++y) {
        for (unsigned x = x0; x < x1; ++x) {
            sum += double(image.pixel(x, y)[channel]);
        }
    }
    return sum / (double(x1 - x0) * double(y1 - y0));
}

std::string sizeOf(const FloatImage& image) {
    return std::to_string(image.width) + " x " + std::to_string(image.height);
}

} // namespace

std::string comparePictures(const FloatImage& picture, const FloatImage& reference,
                            const PictureTolerance& tolerance) {
    if (picture.width != reference.width || picture.height != reference.height) {
        return "the sizes differ: " + sizeOf(picture) + " and " + sizeOf(reference);
    }
    for (unsigned channel = 0; channel < 3; ++channel) {
        const double difference = channelMean(picture, channel, 0, 0, picture.width, picture.height) -
                                  channelMean(reference, channel, 0, 0, picture.width, picture.height);
        if (!(std::abs(difference) <= tolerance.mean)) {
            return "the means of channel " + std::to_string(channel) + " differ by " +
                   std::to_string(difference);
        }
    }
    double worst = 0;
    std::string text;
    for (unsigned y = 0; y < picture.height; y += BLOCK) {
        for (unsigned x = 0; x < picture.width; x += BLOCK) {
            for (unsigned channel = 0; channel < 3; ++channel) {
                const double difference = std::abs(channelMean(picture, channel, x, y, BLOCK, BLOCK) -
                                                   channelMean(reference, channel, x, y, BLOCK, BLOCK));
                if (!(difference <= std::max(worst, tolerance.block))) {
                    worst = difference;
                    text = "channel " + std::to_string(channel) + " differs by " +
                           std::to_string(difference) + " in the block at (" + std::to_string(x) + ", " +
                           std::to_string(y) + ")";
                }
            }
        }
    }
    return text;
}
