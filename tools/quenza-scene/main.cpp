// SPDX-License-Identifier: MIT
#include "foundation/console_output.h"
#include "foundation/platform.h"
#include "reading/model_loader.h"
#include "tools/quenza-scene/command_line.h"
#include "tools/quenza-scene/commands.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>

namespace {

using namespace scene_tool;

void complain(const std::string& text) {
    std::fprintf(stderr, "quenza-scene: %s\n", text.c_str());
}

ExitStatus run(std::span<const std::string> words) {
    const Command commands[] = {infoCommand(), checkCommand(), convertCommand(),
                                packCommand(), diffCommand(),  mergeCommand()};
    if (words.empty())
        throw UsageError("a command is missing");
    if (words[0] == "--help" || words[0] == "-h") {
        std::fputs(helpText(commands).c_str(), stdout);
        return ExitStatus::DONE;
    }
    const auto named = [&](const Command& command) { return command.name == words[0]; };
    const auto* const command = std::find_if(std::begin(commands), std::end(commands), named);
    if (command == std::end(commands))
        throw UsageError("unknown command '" + words[0] + "'");
    const std::span<const std::string> rest = words.subspan(1);
    if (std::find(rest.begin(), rest.end(), "--help") != rest.end()) {
        std::fputs(helpText(*command).c_str(), stdout);
        return ExitStatus::DONE;
    }
    Quenza::installModelLoader();
    return command->run(parseArguments(*command, rest));
}

/// Failures that `diff` must not mix up with a difference.
ExitStatus failureOf(std::span<const std::string> words) {
    return !words.empty() && words[0] == "diff" ? ExitStatus::USAGE : ExitStatus::FAILED;
}

} // namespace

int main(int count, char** arguments) {
    const Quenza::ConsoleOutput console;
    const std::vector<std::string> all = Quenza::PlatformUtils::commandLineWords(count, arguments);
    const std::span<const std::string> words = std::span(all).subspan(all.empty() ? 0 : 1);
    ExitStatus status = failureOf(words);
    try {
        status = run(words);
    } catch (const UsageError& error) {
        complain(error.what());
        std::fputs("Try \"quenza-scene --help\".\n", stderr);
        status = ExitStatus::USAGE;
    } catch (const std::bad_alloc&) {
        complain("out of memory");
    } catch (const std::exception& error) {
        complain(error.what());
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        complain("can't write to standard output");
        status = failureOf(words);
    }
    return static_cast<int>(status);
}
