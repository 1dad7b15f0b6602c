// SPDX-License-Identifier: MIT
#include "headless/watch/state_json.h"

#include <nlohmann/json.hpp>

namespace headless {

namespace {

using nlohmann::json;

const char* wordOf(WatchedState::Phase phase) {
    switch (phase) {
    case WatchedState::Phase::rendering:
        return "rendering";
    case WatchedState::Phase::paused:
        return "paused";
    case WatchedState::Phase::ended:
        return "ended";
    }
    return "";
}

json choices(const std::vector<WatchedChoice>& list) {
    json made = json::array();
    for (const WatchedChoice& choice : list) {
        made.push_back({{"value", choice.value}, {"label", choice.label}});
    }
    return made;
}

json numbers(const std::vector<WatchedNumber>& list) {
    json made = json::array();
    for (const WatchedNumber& number : list) {
        made.push_back({{"name", number.name},
                        {"label", number.label},
                        {"value", number.value},
                        {"minimum", number.minimum},
                        {"maximum", number.maximum},
                        {"step", number.step}});
    }
    return made;
}

json layers(const std::vector<WatchedLayer>& list) {
    json made = json::array();
    for (const WatchedLayer& layer : list) {
        made.push_back(
            {{"index", layer.index}, {"name", layer.name}, {"enabled", layer.enabled}, {"gain", layer.gain}});
    }
    return made;
}

} // namespace

std::string stateJson(const WatchedState& state) {
    const json made = {{"document", state.document},     {"phase", wordOf(state.phase)},
                       {"status", state.status},         {"percent", state.percent},
                       {"samples", state.samples},       {"seconds", state.seconds},
                       {"image", state.image},           {"width", state.width},
                       {"height", state.height},         {"failure", state.failure},
                       {"method", state.method},         {"numbers", numbers(state.numbers)},
                       {"response", state.response},     {"responses", choices(state.responses)},
                       {"whitePoint", state.whitePoint}, {"whitePoints", choices(state.whitePoints)},
                       {"layers", layers(state.layers)}};
    // Names of documents and layers may hold any bytes.
    return made.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace headless
