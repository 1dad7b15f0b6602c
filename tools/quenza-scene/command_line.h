// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace scene_tool {

/// How the program ends. `diff` uses DIFFERENT as other tools of that name do.
enum class ExitStatus { DONE = 0, FAILED = 1, DIFFERENT = 1, USAGE = 2 };

/// A wrong command line; the text says what is wrong with it.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What stands behind the name of a command.
struct Arguments {
    std::vector<std::string> operands;
    std::set<std::string, std::less<>> flags;

    bool has(std::string_view flag) const { return flags.contains(flag); }
};

struct Flag {
    std::string_view name;
    std::string_view help;
};

struct Command {
    std::string_view name;
    std::string_view operands; ///< As the usage line names them.
    std::size_t min_operands;
    std::size_t max_operands;
    std::string_view summary; ///< One line.
    std::vector<Flag> flags;
    std::string_view help; ///< Paragraphs, with line ends.
    ExitStatus (*run)(const Arguments&);
};

/// Reads the words behind the command's name; "--" ends the flags. Throws UsageError.
Arguments parseArguments(const Command& command, std::span<const std::string> words);

/// "--help" of one command.
std::string helpText(const Command& command);

/// "--help" of the program.
std::string helpText(std::span<const Command> commands);

} // namespace scene_tool
