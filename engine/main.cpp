// SPDX-License-Identifier: MIT
#include "engine/options.h"
#include "engine/render_job.h"
#include "engine/report.h"
#include "foundation/console_output.h"
#include "foundation/platform.h"
#include "foundation/safe_file.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace {

std::atomic<bool> stop{false};
static_assert(std::atomic<bool>::is_always_lock_free, "a signal's handler sets it");

/// The first Ctrl-C ends the render with what there is; a second one ends the program as usual.
void stopRendering(int signal) {
    stop = true;
    std::signal(signal, SIG_DFL);
}

/// Every picture is tried, also behind one that fails.
bool renderAll(const engine::Options& options) {
    std::signal(SIGINT, stopRendering);
    std::signal(SIGTERM, stopRendering);
#ifdef SIGBREAK // Ctrl-Break, which unlike Ctrl-C can be sent to one program of a console alone
    std::signal(SIGBREAK, stopRendering);
#endif
    const auto isNetwork = [](const auto& entry) { return entry.first == "-n" || entry.first == "-p"; };
    if (std::any_of(options.switches.begin(), options.switches.end(), isNetwork)) {
        std::printf("Note: Rendering over a network is not known; this machine renders alone.\n");
    }
    const std::string folder = Quenza::PlatformUtils::getProgramDirectory().toStdString();
    bool all = true;
    for (const engine::RenderJob& job : engine::makeJobs(options)) {
        if (stop) {
            return all;
        }
        all = engine::render(job, options, folder, stop) && all;
    }
    return all;
}

int run(std::vector<std::string> words, const std::string& commandLine) {
    const std::string program = words.empty() ? "quenza.exe" : words.front();
    engine::Options options;
    options.commandLine = commandLine;
    std::string fault;
    if (!words.empty()) {
        words.erase(words.begin());
    }
    if (!engine::parseOptions(words, options, fault)) {
        std::fprintf(stderr, "%s: %s\n\n%s", program.c_str(), fault.c_str(), engine::usage(program).c_str());
        return 2;
    }
    if (options.help) {
        std::fputs(engine::usage(program).c_str(), stdout);
        return 0;
    }
    const engine::Report report = engine::makeReport(options);
    std::fputs(report.text.c_str(), stdout);
    const std::string path = engine::reportPath(options.input);
    Quenza::SafeFile file(path, Quenza::SafeFile::Mode::TEXT);
    file.write(report.text.data(), report.text.size());
    if (!file.commit()) {
        std::fprintf(stderr, "%s: can't write the report '%s': %s\n", program.c_str(), path.c_str(),
                     file.failureReason().toStdString().c_str());
        return 1;
    }
    const std::pair<std::string, std::string> low("--thread_priority", "belownormal");
    if (std::find(options.switches.begin(), options.switches.end(), low) != options.switches.end()) {
        Quenza::PlatformUtils::lowerPriority();
    }
    std::fflush(stdout);
    const bool rendered = renderAll(options);
    return rendered && report.faults.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const Quenza::ConsoleOutput console;
    try {
        return run(Quenza::PlatformUtils::commandLineWords(argc, argv),
                   Quenza::PlatformUtils::commandLine(argc, argv).toStdString());
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "quenza: %s\n", exception.what());
        return 1;
    }
}
