// SPDX-License-Identifier: MIT
#ifndef _WIN32

#include "foundation/platform.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <pthread.h>
#include <sched.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace Quenza::PlatformUtils {

namespace {

constexpr int LOW_PRIORITY_NICE = 10;
/// The number of Windows for threads that only take what no other wants.
constexpr int IDLE_THREAD_PRIORITY = -15;

/// Splits at blanks outside of double quotes, which are dropped; nothing else is special.
std::vector<std::string> splitCommandLine(const std::string& line) {
    std::vector<std::string> arguments;
    bool inside = false;
    bool quoted = false;
    for (const char c : line) {
        if (c == ' ' && !quoted) {
            inside = false;
            continue;
        }
        if (!inside)
            arguments.emplace_back();
        inside = true;
        if (c == '"')
            quoted = !quoted;
        else
            arguments.back() += c;
    }
    return arguments;
}

/// `keep` is above the standard descriptors.
void closeDescriptorsExceptStandardAnd(int keep) {
#ifdef __linux__
    const unsigned kept = unsigned(keep);
    if ((kept == 3 || close_range(3, kept - 1, 0) == 0) && close_range(kept + 1, ~0u, 0) == 0)
        return;
#endif
    const long limit = sysconf(_SC_OPEN_MAX);
    for (int fd = 3; fd < limit; ++fd)
        if (fd != keep)
            close(fd);
}

/// The rest of a child's life, between fork and exec: only calls that are safe there. `status_pipe` closes by
/// itself when the program starts, and carries errno when it doesn't.
[[noreturn]] void runDetached(const char* path, char* const* arguments, bool lowPriority, int status_pipe) {
    const int null_device = open("/dev/null", O_RDWR);
    for (int fd = 0; null_device >= 0 && fd <= 2; ++fd)
        dup2(null_device, fd);
    closeDescriptorsExceptStandardAnd(status_pipe);
    if (lowPriority)
        setpriority(PRIO_PROCESS, 0, getpriority(PRIO_PROCESS, 0) + LOW_PRIORITY_NICE);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    execve(path, arguments, environ);
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(status_pipe, &error, sizeof error);
    _exit(127);
}

/// Makes a pipe whose ends lie above the standard descriptors, so that redirecting those leaves it alone.
bool openStatusPipe(int ends[2]) {
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    for (int i = 0; i < 2; ++i)
        if (ends[i] <= 2) {
            const int moved = fcntl(ends[i], F_DUPFD_CLOEXEC, 3);
            close(ends[i]);
            ends[i] = moved;
        }
    return ends[0] >= 0 && ends[1] >= 0;
}

} // namespace

bool createProcess(const String& executablePath, const String& commandLine, bool lowPriority) {
    const std::string path = executablePath.toStdString();
    std::vector<std::string> arguments = splitCommandLine(commandLine.toStdString());
    if (arguments.empty())
        arguments.push_back(path);
    std::vector<char*> argument_pointers;
    for (std::string& argument : arguments)
        argument_pointers.push_back(argument.data());
    argument_pointers.push_back(nullptr);

    int status[2];
    if (!openStatusPipe(status))
        return false;
    // Two forks: the program becomes a child of init, and so leaves no zombie in a host that never waits for
    // it.
    const pid_t middle = fork();
    if (middle == 0) {
        setsid();
        const pid_t last = fork();
        if (last == 0)
            runDetached(path.c_str(), argument_pointers.data(), lowPriority, status[1]);
        _exit(last < 0 ? 1 : 0);
    }
    close(status[1]);
    bool started = middle > 0;
    if (middle > 0) {
        int middle_status = 0;
        while (waitpid(middle, &middle_status, 0) < 0 && errno == EINTR) {
        }
        started = WIFEXITED(middle_status) && WEXITSTATUS(middle_status) == 0;
        int error = 0;
        ssize_t got;
        while ((got = read(status[0], &error, sizeof error)) < 0 && errno == EINTR) {
        }
        started = started && got == 0;
    }
    close(status[0]);
    return started;
}

std::vector<std::string> commandLineWords(int count, char** words) {
    return std::vector<std::string>(words, words + count);
}

String commandLine(int count, char** words) {
    std::string line;
    for (int i = 0; i < count; ++i)
        line += std::string(i == 0 ? "" : " ") + words[i];
    return line;
}

String getProgramDirectory() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? String() : String(program.parent_path().string());
}

int setThreadPriority(std::thread& thread, int value) {
    if (!thread.joinable())
        return ESRCH;
    sched_param parameters{};
    parameters.sched_priority = std::max(value, 0); // ordinary threads have none, so that the system refuses
    int policy = SCHED_OTHER;
#ifdef __linux__
    if (value < 0)
        policy = value <= IDLE_THREAD_PRIORITY ? SCHED_IDLE : SCHED_BATCH;
#endif
    return pthread_setschedparam(thread.native_handle(), policy, &parameters);
}

bool lowerPriority() {
    return setpriority(PRIO_PROCESS, 0, LOW_PRIORITY_NICE) == 0;
}

} // namespace Quenza::PlatformUtils

#endif
