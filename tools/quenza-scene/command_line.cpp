// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/command_line.h"

#include <algorithm>

namespace scene_tool {

namespace {

std::string usageLine(const Command& command) {
    std::string line = "quenza-scene " + std::string(command.name);
    for (const Flag& flag : command.flags)
        line += " [" + std::string(flag.name) + "]";
    return line + " " + std::string(command.operands);
}

std::string padded(std::string_view text, std::size_t width) {
    std::string cell(text);
    cell.resize(std::max(width, cell.size()), ' ');
    return cell;
}

} // namespace

Arguments parseArguments(const Command& command, std::span<const std::string> words) {
    Arguments arguments;
    bool only_operands = false;
    for (const std::string& word : words) {
        if (only_operands || word.size() < 2 || word[0] != '-') {
            arguments.operands.push_back(word);
        } else if (word == "--") {
            only_operands = true;
        } else {
            const auto known = [&](const Flag& flag) { return flag.name == word; };
            if (std::none_of(command.flags.begin(), command.flags.end(), known))
                throw UsageError("unknown option '" + word + "'");
            arguments.flags.insert(word);
        }
    }
    const std::size_t count = arguments.operands.size();
    if (count < command.min_operands || count > command.max_operands)
        throw UsageError("expected: " + usageLine(command));
    return arguments;
}

std::string helpText(const Command& command) {
    std::string text = "Usage: " + usageLine(command) + "\n\n" + std::string(command.help) + "\nOptions:\n";
    for (const Flag& flag : command.flags)
        text += "  " + padded(flag.name, 14) + std::string(flag.help) + "\n";
    return text + "  " + padded("--help", 14) + "This text\n";
}

std::string helpText(std::span<const Command> commands) {
    std::string text = "Usage: quenza-scene COMMAND ...\n\nCommands:\n";
    for (const Command& command : commands)
        text += "  " + padded(std::string(command.name) + " " + std::string(command.operands), 28) +
                std::string(command.summary) + "\n";
    return text + "\nExit status: 0 done, 1 not done, or faults or differences found, 2 wrong usage; of "
                  "diff, 2 also\n"
                  "when a scene can't be read. \"quenza-scene COMMAND --help\" tells more.\n";
}

} // namespace scene_tool
