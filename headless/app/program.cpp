// SPDX-License-Identifier: MIT
#include "headless/app/program.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <new>
#include <system_error>

#include "foundation/native_path.h"
#include "headless/app/command_line.h"
#include "headless/app/commands.h"
#include "headless/app/phase_lines.h"
#include "headless/model/warnings.h"
#include "headless/runtime/platform.h"

namespace headless {

namespace {

void complain(const std::string& text) {
    std::fprintf(stderr, "quenza-headless: %s\n", text.c_str());
}

bool parseYes(const std::string& answer) {
    if (answer != "yes" && answer != "no") {
        throw UsageError("--answer is yes or no, not " + answer);
    }
    return answer == "yes";
}

HostOptions hostOptions(const Arguments& arguments) {
    HostOptions options;
    if (const std::optional<std::string> date = arguments.value("--fixed-clock")) {
        options.fixedClock = Clock::parse(*date);
        if (!options.fixedClock) {
            throw UsageError("--fixed-clock takes a date \"YYYY-MM-DD hh:mm:ss\", not \"" + *date + "\"");
        }
    }
    if (arguments.command->name == "list") {
        // Standard output is the list's alone.
        options.consoleSink = [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };
    }
    if (arguments.command->name == "picture" && !platform::isTerminal(stderr)) {
        options.statusTextSink = PhaseLines();
    }
    return options;
}

void prepareAnswers(Host& host, const Arguments& arguments) {
    for (const std::string& path : arguments.values("--answer-file")) {
        host.user().addFileAnswer(Quenza::utf8Path(std::filesystem::absolute(Quenza::nativePath(path))));
    }
    for (const std::string& answer : arguments.values("--answer")) {
        host.user().addAnswer(parseYes(answer));
    }
}

/// In a build beside this program; in a package in a folder of its own, which goes to the host as it is.
std::filesystem::path pluginFile(const Host& host, const Arguments& arguments) {
    if (const std::optional<std::string> given = arguments.value("--plugin")) {
        return Quenza::nativePath(*given);
    }
    const std::filesystem::path beside = host.startupPath() / platform::PLUGIN_FILE;
    const std::filesystem::path packed = host.startupPath().parent_path() / "quenza" / platform::PLUGIN_FILE;
    std::error_code error;
    for (const std::filesystem::path& file : {beside, packed}) {
        if (std::filesystem::exists(file, error)) {
            return file;
        }
    }
    throw HostError("There is no plug-in " + Quenza::utf8Path(beside) + ", and no " +
                    Quenza::utf8Path(packed) + ": --plugin FILE names one elsewhere");
}

ExitStatus runCommand(Host& host, const Arguments& arguments) {
    using Run = ExitStatus (*)(Host&, const Arguments&);
    static const std::map<std::string_view, Run> RUNS = {{"open", openCommand},
                                                         {"render", renderCommand},
                                                         {"picture", pictureCommand},
                                                         {"list", listCommand},
                                                         {"realtime", realtimeCommand},
                                                         {"materials convert", convertMaterialsCommand},
                                                         {"materials bake", bakeMaterialCommand},
                                                         {"materials import", importMaterialsCommand},
                                                         {"materials preview", previewMaterialsCommand}};
    return RUNS.at(arguments.command->name)(host, arguments);
}

ExitStatus run(const Arguments& arguments) {
    const size_t lostBefore = lostImages();
    Host host(hostOptions(arguments));
    const platform::InterruptWatch watch([&host] { host.interrupt(); });
    prepareAnswers(host, arguments);
    host.loadPlugin(pluginFile(host, arguments));
    const ExitStatus status = runCommand(host, arguments);
    const size_t lost = lostImages() - lostBefore;
    if (status == ExitStatus::done && lost > 0) {
        throw HostError("Not everything was done: " + std::to_string(lost) +
                        (lost == 1 ? " image" : " images") + " could not be written");
    }
    return status;
}

} // namespace

int runProgram(std::span<const std::string> words) {
    try {
        const Arguments arguments = parseArguments(commandLine(), words);
        if (arguments.wantsHelp) {
            std::fputs(helpText(commandLine(), arguments.command).c_str(), stdout);
            return static_cast<int>(ExitStatus::done);
        }
        return static_cast<int>(run(arguments));
    } catch (const UsageError& error) {
        complain(error.what());
        std::fputs("Try \"quenza-headless --help\".\n", stderr);
        return static_cast<int>(ExitStatus::usage);
    } catch (const std::bad_alloc&) {
        complain("Out of memory");
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return static_cast<int>(ExitStatus::failed);
}

} // namespace headless
