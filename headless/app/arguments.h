// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// A command line that doesn't make sense: what is wrong with it.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// "--name", with a value when `value` names one ("N", "FILE").
struct OptionSpec {
    std::string_view name;
    std::string_view value;
    std::string_view help;
    bool repeatable = false;
    /// The value is all words up to the next option, with spaces between them.
    bool takesWords = false;
};

/// A word that a command needs, one of `choices` when there are any.
struct OperandSpec {
    std::string_view name;
    std::string_view help;
    std::vector<std::string_view> choices;
    /// May be left out; only the last ones of a command.
    bool isOptional = false;
};

struct CommandSpec {
    /// One word, or two for the commands of a group: "materials bake".
    std::string_view name;
    std::string_view summary;
    std::vector<OperandSpec> operands;
    std::vector<OptionSpec> options;
    /// What --help of the command tells below its lists; may be empty.
    std::string_view notes;
};

/// A program with commands: `NAME [OPTION...] COMMAND ...`. Its own options stand anywhere on the line.
struct ProgramSpec {
    std::string_view name;
    std::string_view summary;
    std::vector<OptionSpec> options;
    std::vector<CommandSpec> commands;
    std::string_view notes;
};

/// A command line that was understood.
class Arguments {
public:
    /// Null when only help was asked for.
    const CommandSpec* command = nullptr;
    bool wantsHelp = false;
    /// As many as the command has, but for optional ones.
    std::vector<std::string> operands;
    /// The values of each option that was given, in their order; one empty value for each flag.
    std::map<std::string, std::vector<std::string>, std::less<>> options;

    bool has(std::string_view option) const { return options.contains(option); }
    /// Nothing when the option was not given.
    std::optional<std::string> value(std::string_view option) const;
    std::vector<std::string> values(std::string_view option) const;
};

/// Reads the words behind the program's name. "--name=value" is "--name value"; "--" ends the options. No
/// operand that is needed is empty, and no option's value but a NAME. Throws UsageError.
Arguments parseArguments(const ProgramSpec& program, std::span<const std::string> words);

/// The text of --help: of the program, or of one command.
std::string helpText(const ProgramSpec& program, const CommandSpec* command = nullptr);

} // namespace headless
