// SPDX-License-Identifier: MIT
#include "engine/options.h"

#include <algorithm>
#include <charconv>

namespace engine {

namespace {

enum class Value { INTEGER, PORT, PATH, PRIORITY, NETWORK_MODE, TEXT };

struct Switch {
    const char* name;
    Value value;
    const char* placeholder;
    const char* help;
};

constexpr Switch SWITCHES[] = {
    {"-seed", Value::INTEGER, "N", "start of the random numbers"},
    {"--thread_priority", Value::PRIORITY, "normal|belownormal", "priority of the render threads"},
    {"-n", Value::NETWORK_MODE, "wm", "network mode: wm is a working master"},
    {"-p", Value::PORT, "PORT", "port of the network master"},
    {"-o", Value::PATH, "FILE.png", "image"},
    {"-qzio", Value::PATH, "FILE.qzi", "image with its light layers"},
    {"-uexro", Value::PATH, "FILE.exr", "image before tone mapping"},
    {"-texro", Value::PATH, "FILE.exr", "image after tone mapping"},
    {"--settings", Value::TEXT, "XML", "elements that win over the scene's renderer_settings"},
};

const Switch* findSwitch(const std::string& name) {
    for (const Switch& candidate : SWITCHES) {
        if (name == candidate.name) {
            return &candidate;
        }
    }
    return nullptr;
}

bool isIntegerIn(const std::string& text, long long min, long long max) {
    long long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && value >= min && value <= max;
}

bool isValid(Value kind, const std::string& value) {
    switch (kind) {
    case Value::INTEGER:
        return isIntegerIn(value, -2147483648LL, 4294967295LL);
    case Value::PORT:
        return isIntegerIn(value, 1, 65535);
    case Value::PATH:
        return !value.empty();
    case Value::TEXT:
        return true;
    case Value::PRIORITY:
        return value == "normal" || value == "belownormal";
    case Value::NETWORK_MODE:
        return value == "wm";
    }
    return false;
}

} // namespace

std::string usage(const std::string& program) {
    std::string text = "usage: " + program + " [switches] SCENE.qzs|QUEUE.qzq\n\nswitches:\n";
    for (const Switch& entry : SWITCHES) {
        std::string line = std::string("  ") + entry.name + " " + entry.placeholder;
        line.resize(std::max<size_t>(line.size() + 2, 40), ' ');
        text += line + entry.help + "\n";
    }
    return text +
           "  --help                                this text\n\n"
           "Writes a report of the scene to the console and beside it (SCENE.report.txt), then renders it:\n"
           "to the files that the switches name, else to SCENE.png. The image is written anew as it\n"
           "grows. It ends at the halt time or halt samples of the scene or queue, without such limits\n"
           "after 60 seconds or 256 samples per pixel, and by Ctrl-C.\n"
           "Ends with 0, with 1 when the report names faults or an image can't be made, with 2 for a\n"
           "bad command line.\n";
}

bool parseOptions(const std::vector<std::string>& arguments, Options& options, std::string& fault) {
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help") {
            options.help = true;
            return true;
        }
        if (argument.empty() || argument.front() != '-') {
            if (!options.input.empty()) {
                fault = "more than one input: '" + options.input + "' and '" + argument + "'";
                return false;
            }
            options.input = argument;
            continue;
        }
        const Switch* const known = findSwitch(argument);
        if (!known) {
            fault = "unknown switch '" + argument + "'";
            return false;
        }
        if (i + 1 == arguments.size()) {
            fault = "switch '" + argument + "' needs a value: " + known->placeholder;
            return false;
        }
        const std::string& value = arguments[++i];
        if (!isValid(known->value, value)) {
            fault = "bad value '" + value + "' for switch '" + argument + "': " + known->placeholder +
                    " is expected";
            return false;
        }
        options.switches.emplace_back(argument, value);
    }
    if (options.input.empty()) {
        fault = "no scene or render queue is named";
        return false;
    }
    return true;
}

std::optional<Quenza::u64> parseSeed(const std::string& text) {
    long long value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end == text.data()) {
        return std::nullopt;
    }
    return Quenza::u64(value);
}

} // namespace engine
