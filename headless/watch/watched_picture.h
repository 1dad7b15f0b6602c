// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace headless {

/// A number that the page shows as a slider: `name` is its word in an action's text.
struct WatchedNumber {
    std::string name;
    std::string label;
    double value = 0;
    double minimum = 0;
    double maximum = 1;
    double step = 0.01;
};

struct WatchedChoice {
    std::string value;
    std::string label;
};

/// One light layer of the scene.
struct WatchedLayer {
    int index = 0;
    std::string name;
    bool enabled = true;
    double gain = 1;
};

/// What a render looks like at one moment.
struct WatchedState {
    enum class Phase { rendering, paused, ended };

    std::string document;
    Phase phase = Phase::rendering;
    /// The host's status text, and its bar from 0 to 100; -1 without one.
    std::string status;
    int percent = -1;
    /// Samples per pixel; -1 while the plug-in doesn't tell.
    double samples = -1;
    /// Since the start.
    double seconds = 0;
    /// Counts the images that were shown; 0 before the first.
    uint64_t image = 0;
    int width = 0;
    int height = 0;
    /// Why the render ended without success.
    std::string failure;

    /// "reinhard", "linear" or "camera"; its numbers stand in `numbers`, all methods' as "method name".
    std::string method;
    std::vector<WatchedNumber> numbers;
    std::string response;
    std::vector<WatchedChoice> responses;
    std::string whitePoint;
    std::vector<WatchedChoice> whitePoints;
    std::vector<WatchedLayer> layers;
};

/// A render that can be watched and steered. Any thread.
class WatchedPicture {
public:
    virtual ~WatchedPicture() = default;

    virtual WatchedState state() = 0;
    /// The latest image as a PNG file; empty before the first.
    virtual std::string png() = 0;
    /// Does what an action's text says ("pause", "tonemap reinhard burn=4", "layer 0 gain=0.5"). "" or the
    /// reason why it can't be done.
    virtual std::string act(const std::string& action) = 0;
};

} // namespace headless
