// SPDX-License-Identifier: MIT
#include "engine/options.h"
#include "engine/report.h"
#include "foundation/safe_file.h"

#include <cstdio>
#include <exception>

namespace {

int run(int argc, char** argv) {
    const std::string program = argc > 0 ? argv[0] : "quenza.exe";
    engine::Options options;
    std::string fault;
    if (!engine::parseOptions(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc), options,
                              fault)) {
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
    return report.faults.empty() ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "quenza: %s\n", exception.what());
        return 1;
    }
}
