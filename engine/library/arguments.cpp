// SPDX-License-Identifier: MIT
#include "engine/library/arguments.h"

#include "engine/library/edition.h"
#include "engine/options.h"

#include <string>

namespace engine::library {

using Quenza::String;
using Quenza::u64;

namespace {

bool isSwitch(const String& word) {
    return !word.empty() && word[0] == '-';
}

void readSwitch(const std::string& name, const std::string& value, Arguments& arguments, MessageLog& log) {
    if (name == "-seed") {
        const auto seed = parseSeed(value);
        if (!seed) {
            log.inform("The seed '" + value + "' is no number; it is 1 instead.");
        }
        arguments.seed = seed.value_or(1);
    } else if (!isRealtimeEdition() && (name == "-n" || name == "-p")) {
        log.inform("Rendering over a network is not known; this machine renders alone.");
    } else {
        log.inform("The argument '" + name + "' is not known.");
    }
}

} // namespace

Arguments parseArguments(const Quenza::Vector<String>& words, MessageLog& log) {
    Arguments arguments;
    u64 i = 0;
    if (!words.empty() && !isSwitch(words[0])) {
        arguments.scene_path = words[0];
        ++i;
    }
    while (i < words.size()) {
        const std::string name = words[i++].toStdString();
        // A seed may be negative.
        const bool has_value = i < words.size() && (name == "-seed" || !isSwitch(words[i]));
        readSwitch(name, has_value ? words[i++].toStdString() : std::string(), arguments, log);
    }
    return arguments;
}

} // namespace engine::library
