// SPDX-License-Identifier: MIT
#include "headless/app/arguments.h"

#include "headless/app/closest_names.h"

#include <algorithm>

namespace headless {

namespace {

/// The one value that may be empty: a node of that name can be meant.
constexpr std::string_view NODE_NAME = "NAME";
constexpr OptionSpec HELP_OPTION{"--help", "", "Show this text"};

class Parser {
public:
    Parser(const ProgramSpec& program, std::span<const std::string> words)
        : program_(program), words_(words) {}

    Arguments parse() {
        while (next_ < words_.size()) {
            const std::string& word = words_[next_++];
            if (!optionsEnded_ && word == "--") {
                optionsEnded_ = true;
            } else if (!optionsEnded_ && word.size() > 1 && word.front() == '-') {
                readOption(word);
            } else if (!result_.command) {
                readCommand(group_.empty() ? word : group_ + " " + word);
            } else {
                readOperand(word);
            }
        }
        if (!result_.wantsHelp) {
            requireWhole();
        }
        return std::move(result_);
    }

private:
    void readOption(const std::string& word) {
        const size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const OptionSpec& option = findOption(name);
        if (option.name == HELP_OPTION.name) {
            result_.wantsHelp = true;
            return;
        }
        std::string value;
        if (equals != std::string::npos) {
            if (option.value.empty()) {
                throw UsageError(name + " takes no value");
            }
            value = word.substr(equals + 1);
        } else if (!option.value.empty()) {
            if (next_ == words_.size()) {
                throwMissing(option);
            }
            value = words_[next_++];
        }
        if (value.empty() && !option.value.empty() && option.value != NODE_NAME) {
            throwMissing(option);
        }
        while (option.takesWords && next_ < words_.size() && !words_[next_].starts_with("--")) {
            value += ' ' + words_[next_++];
        }
        std::vector<std::string>& values = result_.options[name];
        if (!values.empty() && !option.repeatable) {
            throw UsageError(name + " was given twice");
        }
        values.push_back(std::move(value));
    }

    [[noreturn]] static void throwMissing(const OptionSpec& option) {
        const std::string name(option.name);
        throw UsageError(name + " needs a value: " + name + " " + std::string(option.value));
    }

    const OptionSpec& findOption(const std::string& name) const {
        std::vector<std::string> known;
        const auto search = [&](const std::vector<OptionSpec>& options) -> const OptionSpec* {
            for (const OptionSpec& option : options) {
                if (option.name == name) {
                    return &option;
                }
                known.emplace_back(option.name);
            }
            return nullptr;
        };
        if (name == HELP_OPTION.name || name == "-h") {
            return HELP_OPTION;
        }
        if (const OptionSpec* const found = search(program_.options)) {
            return *found;
        }
        if (const OptionSpec* const found = result_.command ? search(result_.command->options) : nullptr) {
            return *found;
        }
        const std::string where = result_.command ? " of " + std::string(result_.command->name) : "";
        throw UsageError("There is no option " + name + where + suggestion(name, known));
    }

    void readCommand(const std::string& words) {
        std::vector<std::string> known;
        for (const CommandSpec& command : program_.commands) {
            if (command.name == words) {
                result_.command = &command;
                return;
            }
            known.emplace_back(command.name);
        }
        if (group_.empty() && !secondWords(words).empty()) {
            group_ = words;
            return;
        }
        throw UsageError("There is no command " + words + suggestion(words, known));
    }

    /// What may stand behind `word` for a command of two words: "convert, bake or import".
    std::string secondWords(const std::string& word) const {
        std::vector<std::string_view> choices;
        for (const CommandSpec& command : program_.commands) {
            if (command.name.starts_with(word + " ")) {
                choices.push_back(command.name.substr(word.size() + 1));
            }
        }
        std::string text;
        for (const std::string_view choice : choices) {
            text += (text.empty() ? "" : choice == choices.back() ? " or " : ", ") + std::string(choice);
        }
        return text;
    }

    void readOperand(const std::string& word) {
        const std::vector<OperandSpec>& expected = result_.command->operands;
        if (result_.operands.size() == expected.size()) {
            throw UsageError("One word too many: " + word);
        }
        const OperandSpec& operand = expected[result_.operands.size()];
        if (!operand.choices.empty() && std::ranges::find(operand.choices, word) == operand.choices.end()) {
            std::string choices;
            for (const std::string_view choice : operand.choices) {
                choices += (choices.empty() ? "" : " or ") + std::string(choice);
            }
            throw UsageError(std::string(result_.command->name) + " takes " + choices + ", not " + word);
        }
        if (word.empty() && !operand.isOptional) {
            throwMissing(operand);
        }
        result_.operands.push_back(word);
    }

    void requireWhole() const {
        if (!result_.command) {
            throw UsageError(group_.empty() ? "A command is missing"
                                            : group_ + " needs " + secondWords(group_));
        }
        const std::vector<OperandSpec>& expected = result_.command->operands;
        const size_t given = result_.operands.size();
        if (given < expected.size() && !expected[given].isOptional) {
            throwMissing(expected[given]);
        }
    }

    [[noreturn]] void throwMissing(const OperandSpec& operand) const {
        throw UsageError(std::string(result_.command->name) + " needs " + std::string(operand.name));
    }

    const ProgramSpec& program_;
    std::span<const std::string> words_;
    size_t next_ = 0;
    bool optionsEnded_ = false;
    /// First word of a command of two.
    std::string group_;
    Arguments result_;
};

constexpr size_t HELP_COLUMN = 30;

/// Two columns; lines of a longer help stand below each other in the second.
void appendRow(std::string& text, std::string left, std::string_view help) {
    left.insert(0, "  ");
    while (!help.empty()) {
        const size_t end = help.find('\n');
        left.resize(std::max(left.size() + 2, HELP_COLUMN), ' ');
        text += left;
        text += help.substr(0, end);
        text += '\n';
        left.clear();
        left.resize(HELP_COLUMN - 2, ' ');
        help = end == std::string_view::npos ? "" : help.substr(end + 1);
    }
}

void appendOptions(std::string& text, std::string_view heading, std::vector<OptionSpec> options,
                   bool withHelp) {
    if (withHelp) {
        options.push_back(HELP_OPTION);
    }
    if (options.empty()) {
        return;
    }
    text += '\n';
    text += heading;
    text += '\n';
    for (const OptionSpec& option : options) {
        appendRow(text,
                  std::string(option.name) + (option.value.empty() ? "" : " ") + std::string(option.value),
                  option.help);
    }
}

void appendNotes(std::string& text, std::string_view notes) {
    if (!notes.empty()) {
        text += '\n';
        text += notes;
        text += '\n';
    }
}

std::string operandList(const CommandSpec& command) {
    std::string list;
    for (const OperandSpec& operand : command.operands) {
        const std::string name(operand.name);
        list += operand.isOptional ? " [" + name + "]" : " " + name;
    }
    return list;
}

std::string programHelp(const ProgramSpec& program) {
    const std::string name(program.name);
    std::string text =
        std::string(program.summary) + "\n\nUsage: " + name + " [OPTION...] COMMAND ...\n\nCommands:\n";
    for (const CommandSpec& command : program.commands) {
        appendRow(text, std::string(command.name) + operandList(command), command.summary);
    }
    text += "\n\"" + name + " COMMAND --help\" tells more of each.\n";
    appendOptions(text, "Options, before or behind the command:", program.options, true);
    appendNotes(text, program.notes);
    return text;
}

std::string commandHelp(const ProgramSpec& program, const CommandSpec& command) {
    std::string text = std::string(command.summary) + "\n\nUsage: " + std::string(program.name) + " " +
                       std::string(command.name) + operandList(command) + " [OPTION...]\n\n";
    for (const OperandSpec& operand : command.operands) {
        appendRow(text, std::string(operand.name), operand.help);
    }
    appendOptions(text, "Options:", command.options, false);
    appendOptions(text, "Options of all commands:", program.options, true);
    appendNotes(text, command.notes);
    return text;
}

} // namespace

std::optional<std::string> Arguments::value(std::string_view option) const {
    const auto found = options.find(option);
    return found == options.end() ? std::nullopt : std::optional(found->second.back());
}

std::vector<std::string> Arguments::values(std::string_view option) const {
    const auto found = options.find(option);
    return found == options.end() ? std::vector<std::string>() : found->second;
}

Arguments parseArguments(const ProgramSpec& program, std::span<const std::string> words) {
    return Parser(program, words).parse();
}

std::string helpText(const ProgramSpec& program, const CommandSpec* command) {
    return command ? commandHelp(program, *command) : programHelp(program);
}

} // namespace headless
