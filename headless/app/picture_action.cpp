// SPDX-License-Identifier: MIT
#include "headless/app/picture_action.h"

#include "headless/app/arguments.h"
#include "headless/app/closest_names.h"
#include "headless/app/plugin_numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <span>

namespace headless {

namespace {

using Kind = PictureAction::Kind;
using Words = std::vector<std::string>;

struct Verb {
    const char* word;
    Kind kind;
    /// What may stand behind it; null for nothing.
    const char* usage;
};
constexpr Verb VERBS[] = {
    {"pause", Kind::pause, nullptr},
    {"resume", Kind::resume, nullptr},
    {"update", Kind::update, nullptr},
    {"stop", Kind::stop, nullptr},
    {"tonemap", Kind::tonemap, "tonemap takes reinhard, linear or camera"},
    {"whitepoint", Kind::whitePoint, "whitepoint takes a name or X,Y"},
    {"layer", Kind::layer, "layer takes its index, and gain=N, on, off or color=R,G,B"},
};

struct NumberWord {
    int32_t method;
    const char* word;
    int32_t gadget;
};
constexpr NumberWord NUMBERS[] = {
    {TONEMAP_REINHARD, "burn", TONEMAP_BURN},
    {TONEMAP_REINHARD, "prescale", TONEMAP_PRE_SCALE},
    {TONEMAP_REINHARD, "postscale", TONEMAP_POST_SCALE},
    {TONEMAP_LINEAR, "scale", TONEMAP_SCALE},
    {TONEMAP_CAMERA, "iso", TONEMAP_FILM_ISO},
    {TONEMAP_CAMERA, "ev", TONEMAP_EV_ADJUST},
};
constexpr const char* RESPONSE = "response";

Words wordsOf(std::string_view text) {
    Words words;
    constexpr std::string_view SPACE = " \t";
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(SPACE), text.size()));
        if (text.empty()) {
            return words;
        }
        const size_t end = std::min(text.find_first_of(SPACE), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

template <class Entry>
const Entry& find(const Entry* begin, const Entry* end, const std::string& word, const std::string& what) {
    const auto entries = std::span(begin, end);
    const auto found = std::ranges::find(entries, word, &Entry::word);
    if (found == entries.end()) {
        Words known;
        std::ranges::transform(entries, std::back_inserter(known), &Entry::word);
        throw UsageError("There is no " + what + " " + word + suggestion(word, known));
    }
    return *found;
}

std::optional<float> readNumber(std::string_view text) {
    float number = 0.0f;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && std::isfinite(number) ? std::optional(number)
                                                                        : std::nullopt;
}

float parseNumber(const std::string& word, std::string_view text) {
    const std::optional<float> number = readNumber(text);
    if (!number) {
        throw UsageError(word + " can't be \"" + std::string(text) + "\": it takes a number");
    }
    return *number;
}

/// "0.5,1,2" as its numbers; nothing when it isn't `count` of them.
std::optional<std::vector<float>> readNumbers(std::string_view text, size_t count) {
    std::vector<float> numbers;
    while (true) {
        const size_t comma = text.find(',');
        const std::optional<float> number = readNumber(text.substr(0, comma));
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
        if (comma == std::string_view::npos) {
            return numbers.size() == count ? std::optional(numbers) : std::nullopt;
        }
        text.remove_prefix(comma + 1);
    }
}

/// "name=value" in its two halves; the second is "" without the sign.
std::pair<std::string, std::string> halves(const std::string& word) {
    const size_t equals = std::min(word.find('='), word.size());
    return {word.substr(0, equals), word.substr(std::min(equals + 1, word.size()))};
}

void readTonemap(PictureAction& action, std::span<const std::string> words) {
    const std::string& methodWord = words.front();
    action.method =
        find(std::begin(TONEMAP_METHODS), std::end(TONEMAP_METHODS), methodWord, "tone mapping").value;
    for (const std::string& word : words.subspan(1)) {
        const auto [name, value] = halves(word);
        if (action.method == TONEMAP_CAMERA && name == RESPONSE) {
            action.name = value;
            continue;
        }
        std::vector<NumberWord> known;
        std::ranges::copy_if(NUMBERS, std::back_inserter(known),
                             [&](const NumberWord& number) { return number.method == action.method; });
        const NumberWord number = find(known.data(), known.data() + known.size(), name,
                                       "number of tonemap " + methodWord + " called");
        action.numbers.push_back({name, number.gadget, parseNumber(name, value)});
    }
}

void readWhitePoint(PictureAction& action, std::span<const std::string> words) {
    for (const std::string& word : words) {
        action.name += (action.name.empty() ? "" : " ") + word;
    }
    if (const std::optional<std::vector<float>> numbers = readNumbers(action.name, 2)) {
        action.numbers = {{"The white point's x", WHITE_POINT_X, (*numbers)[0]},
                          {"The white point's y", WHITE_POINT_Y, (*numbers)[1]}};
        action.name.clear();
    }
}

void readLayer(PictureAction& action, std::span<const std::string> words) {
    const std::string& index = words.front();
    const char* const end = index.data() + index.size();
    const auto [stop, error] = std::from_chars(index.data(), end, action.layer);
    if (error != std::errc() || stop != end || action.layer < 0 || action.layer > MOST_LAYERS) {
        throw UsageError("\"" + index + "\" is no index of a layer: the first is 0");
    }
    if (words.size() < 2) {
        throw UsageError(VERBS[std::size(VERBS) - 1].usage);
    }
    for (const std::string& word : words.subspan(1)) {
        const auto [name, value] = halves(word);
        if (word == "on" || word == "off") {
            action.isOn = word == "on";
        } else if (name == "gain") {
            action.gain = parseNumber(name, value);
        } else if (name == "color" || name == "colour") {
            const std::optional<std::vector<float>> rgb = readNumbers(value, 3);
            if (!rgb || std::ranges::any_of(*rgb, [](float part) { return part < 0.0f || part > 1.0f; })) {
                throw UsageError(name + " can't be \"" + value + "\": it takes R,G,B from 0 to 1");
            }
            action.colour = Vector((*rgb)[0], (*rgb)[1], (*rgb)[2]);
        } else {
            throw UsageError("A layer has no " + word + suggestion(name, {"gain", "on", "off", "color"}));
        }
    }
}

} // namespace

PictureAction parsePictureAction(std::string_view text) {
    const Words words = wordsOf(text);
    if (words.empty()) {
        throw UsageError("An action is missing");
    }
    const Verb& verb = find(std::begin(VERBS), std::end(VERBS), words.front(), "action");
    const auto rest = std::span(words).subspan(1);
    if (!verb.usage && !rest.empty()) {
        throw UsageError(words.front() + " takes nothing, not " + rest.front());
    }
    if (verb.usage && rest.empty()) {
        throw UsageError(verb.usage);
    }
    PictureAction action;
    action.kind = verb.kind;
    action.text = text;
    switch (verb.kind) {
    case Kind::tonemap:
        readTonemap(action, rest);
        break;
    case Kind::whitePoint:
        readWhitePoint(action, rest);
        break;
    case Kind::layer:
        readLayer(action, rest);
        break;
    default:
        break;
    }
    return action;
}

} // namespace headless
