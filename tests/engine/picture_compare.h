// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"

#include <string>

/// How much noise a comparison forgives, in levels of 0 to 1.
struct PictureTolerance {
    double mean = 0.01;  ///< Of the picture's mean, in each channel.
    double block = 0.05; ///< Of the mean of a block of 4 x 4 pixels, in each channel.
};

/// Compares two renders of one scene, which differ by their noise: means over blocks, so that a moved,
/// missing or turned detail shows and noise doesn't. Returns "" or what differs most.
std::string comparePictures(const engine::FloatImage& picture, const engine::FloatImage& reference,
                            const PictureTolerance& tolerance = {});
