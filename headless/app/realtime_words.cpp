// SPDX-License-Identifier: MIT
#include "headless/app/realtime_words.h"

#include "foundation/native_path.h"
#include "headless/app/time_text.h"
#include "headless/resources/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace headless {

namespace {

constexpr int32_t LARGEST_SIDE = 8192;

[[noreturn]] void fail(const std::string& option, const std::string& text, const char* reading) {
    throw UsageError(option + " takes " + reading + ", not \"" + text + "\"");
}

std::optional<int32_t> parseSide(std::string_view text) {
    const std::optional<int32_t> side = resources::parseInteger(text);
    return side && *side >= 1 && *side <= LARGEST_SIDE ? side : std::nullopt;
}

std::pair<int32_t, int32_t> parseSize(const std::string& text) {
    const size_t cross = std::min(text.find('x'), text.size());
    const std::optional<int32_t> width = parseSide(std::string_view(text).substr(0, cross));
    const std::optional<int32_t> height =
        cross < text.size() ? parseSide(std::string_view(text).substr(cross + 1)) : std::nullopt;
    if (!width || !height) {
        fail("--size", text, "WIDTHxHEIGHT in pixels, each from 1 to 8192");
    }
    return {*width, *height};
}

CameraMove parseMove(const std::string& text) {
    constexpr const char* READING = "x,y,z or x,y,z@SECONDS";
    const size_t at = std::min(text.find('@'), text.size());
    std::array<float, 3> place{};
    std::string_view rest = std::string_view(text).substr(0, at);
    for (size_t i = 0; i < place.size(); ++i) {
        const size_t comma = rest.find(',');
        const std::optional<double> number = resources::parseReal(rest.substr(0, comma));
        const bool isLast = i + 1 == place.size();
        if (!number || !std::isfinite(static_cast<float>(*number)) ||
            (comma == std::string_view::npos) != isLast) {
            fail("--move-camera", text, READING);
        }
        place[i] = static_cast<float>(*number);
        rest = isLast ? std::string_view() : rest.substr(comma + 1);
    }
    return {{place[0], place[1], place[2]},
            at < text.size() ? parseTime(std::string_view(text).substr(at + 1))
                             : std::chrono::milliseconds(0)};
}

} // namespace

RealtimeWishes readRealtimeWishes(const Arguments& arguments) {
    const std::optional<std::string> image = arguments.value("--image");
    const std::optional<std::string> seconds = arguments.value("--seconds");
    if (!image || !seconds) {
        throw UsageError(std::string("realtime needs ") + (image ? "--seconds N" : "--image OUT.png"));
    }
    RealtimeWishes wishes;
    wishes.image = std::filesystem::absolute(Quenza::nativePath(*image)).lexically_normal();
    if (wishes.image.extension() != ".png") {
        throw UsageError("--image takes a file with the suffix .png, not \"" + *image + "\"");
    }
    wishes.length = parseTime(*seconds);
    if (const std::optional<std::string> size = arguments.value("--size")) {
        wishes.size = parseSize(*size);
    }
    for (const std::string& move : arguments.values("--move-camera")) {
        wishes.moves.push_back(parseMove(move));
    }
    return wishes;
}

} // namespace headless
