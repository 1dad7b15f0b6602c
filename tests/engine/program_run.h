// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

/// The console renderer, started on arguments; what it prints is read from a pipe.
class ProgramRun {
public:
    explicit ProgramRun(const std::vector<std::string>& arguments);
    ~ProgramRun();
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    /// False when the program ended without printing it.
    bool waitForText(const std::string& wanted);
    /// As Ctrl-C does. False where nothing can: on Windows a program without a console.
    bool interrupt() const;
    /// Waits for the end.
    int exitCode();
    /// What it has printed as far as it was read.
    const std::string& text() const { return text_; }

private:
    struct Process;
    /// Reads on; false at the end.
    bool readLine(std::string& line);

    std::unique_ptr<Process> process_;
    std::string text_;
};
