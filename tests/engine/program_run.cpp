// SPDX-License-Identifier: MIT
#include "engine/program_run.h"

#include <cstdio>
#include <gtest/gtest.h>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>

#include <windows.h>
#else
#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace {

constexpr const char* PROGRAM = QUENZA_RENDERER_DIR "/quenza_console.exe";

} // namespace

#ifdef _WIN32

struct ProgramRun::Process {
    HANDLE handle = nullptr;
    DWORD id = 0;
    std::FILE* output = nullptr;
};

ProgramRun::ProgramRun(const std::vector<std::string>& arguments) : process_(std::make_unique<Process>()) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    EXPECT_TRUE(CreatePipe(&readEnd, &writeEnd, &inherited, 0));
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    std::string line = "quenza_console.exe";
    for (const std::string& argument : arguments) {
        line += " \"" + argument + "\"";
    }
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = writeEnd;
    PROCESS_INFORMATION started = {};
    // A group of its own, so that it alone is interrupted.
    EXPECT_TRUE(CreateProcessA(PROGRAM, line.data(), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP,
                               nullptr, nullptr, &startup, &started));
    CloseHandle(writeEnd);
    CloseHandle(started.hThread);
    process_->handle = started.hProcess;
    process_->id = started.dwProcessId;
    process_->output =
        _fdopen(_open_osfhandle(reinterpret_cast<intptr_t>(readEnd), _O_RDONLY | _O_TEXT), "rt");
}

ProgramRun::~ProgramRun() {
    TerminateProcess(process_->handle, 1); // of no effect on one that has ended
    std::fclose(process_->output);
    CloseHandle(process_->handle);
}

bool ProgramRun::interrupt() const {
    return GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, process_->id);
}

int ProgramRun::exitCode() {
    for (std::string line; readLine(line);) {
    }
    WaitForSingleObject(process_->handle, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process_->handle, &code);
    return static_cast<int>(code);
}

#else

struct ProgramRun::Process {
    pid_t id = -1;
    std::FILE* output = nullptr;
};

ProgramRun::ProgramRun(const std::vector<std::string>& arguments) : process_(std::make_unique<Process>()) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    std::vector<std::string> line = arguments;
    line.insert(line.begin(), PROGRAM);
    std::vector<char*> pointers;
    for (std::string& argument : line) {
        pointers.push_back(argument.data());
    }
    pointers.push_back(nullptr);
    process_->id = fork();
    if (process_->id == 0) {
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    close(ends[1]);
    process_->output = fdopen(ends[0], "r");
}

ProgramRun::~ProgramRun() {
    std::fclose(process_->output);
}

bool ProgramRun::interrupt() const {
    return kill(process_->id, SIGINT) == 0;
}

int ProgramRun::exitCode() {
    for (std::string line; readLine(line);) {
    }
    int status = 0;
    while (waitpid(process_->id, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

#endif

bool ProgramRun::readLine(std::string& line) {
    char buffer[4096];
    if (!std::fgets(buffer, sizeof buffer, process_->output)) {
        return false;
    }
    line = buffer;
    text_ += line;
    return true;
}

bool ProgramRun::waitForText(const std::string& wanted) {
    for (std::string line; readLine(line);) {
        if (line.find(wanted) != std::string::npos) {
            return true;
        }
    }
    return false;
}
