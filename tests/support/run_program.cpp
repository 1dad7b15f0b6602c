// SPDX-License-Identifier: MIT
#include "support/run_program.h"

#include "support/temp_dir.h"

#ifdef _WIN32
#include <mutex>

#include <windows.h>
#else
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace Quenza {

namespace {

#ifdef _WIN32

std::wstring wide(const std::string& utf8) {
    return nativePath(utf8).wstring();
}

/// As the C runtime's start takes a command line apart: backslashes count only before a quote.
std::string quoted(const std::string& word) {
    std::string text = "\"";
    size_t backslashes = 0;
    for (const char character : word) {
        text.append(character == '"' ? backslashes + 1 : 0, '\\');
        backslashes = character == '\\' ? backslashes + 1 : 0;
        text += character;
    }
    return text.append(backslashes, '\\') + '"';
}

HANDLE openForChild(const String& file) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileW(wide(file.toStdString()).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                       CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

int start(const std::string& program, const std::vector<std::string>& words,
          const std::filesystem::path& folder, const String& out, const String& errors) {
    std::string line = quoted(program);
    for (const std::string& word : words)
        line += ' ' + quoted(word);
    std::wstring writableLine = wide(line);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = INVALID_HANDLE_VALUE;
    PROCESS_INFORMATION process = {};
    {
        // A child inherits all that is open for any child, and would hold the others' files.
        static std::mutex starting;
        const std::lock_guard lock(starting);
        startup.hStdOutput = openForChild(out);
        startup.hStdError = openForChild(errors);
        bool isStarted = false;
        DWORD error = ERROR_INTERNAL_ERROR;
        // So Wine ends about one of a thousand starts, when the new process doesn't come up.
        for (int attempt = 0; attempt < 3 && error == ERROR_INTERNAL_ERROR && !isStarted; ++attempt) {
            isStarted =
                CreateProcessW(wide(program + ".exe").c_str(), writableLine.data(), nullptr, nullptr, TRUE, 0,
                               nullptr, folder.empty() ? nullptr : folder.c_str(), &startup, &process);
            error = GetLastError();
        }
        if (!isStarted) {
            const std::string reason =
                program + " can't start: " + PlatformUtils::errorText(int(error)).toStdString();
            WriteFile(startup.hStdError, reason.data(), DWORD(reason.size()), nullptr, nullptr);
        }
        CloseHandle(startup.hStdOutput);
        CloseHandle(startup.hStdError);
    }
    if (!process.hProcess)
        return -1;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return int(status);
}

#else

int start(const std::string& program, const std::vector<std::string>& words,
          const std::filesystem::path& folder, const String& out, const String& errors) {
    std::vector<std::string> all = {program};
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char*> arguments;
    for (std::string& word : all)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.toStdString().c_str(), O_WRONLY | O_CREAT,
                                     0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.toStdString().c_str(),
                                     O_WRONLY | O_CREAT, 0600);
    if (!folder.empty())
        posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    pid_t child = 0;
    int status = 0;
    const bool ended = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0 &&
                       waitpid(child, &status, 0) == child && WIFEXITED(status);
    posix_spawn_file_actions_destroy(&actions);
    return ended ? WEXITSTATUS(status) : -1;
}

#endif

} // namespace

Outcome runProgram(const std::string& program, const std::vector<std::string>& words,
                   const std::filesystem::path& folder) {
    const TempDir streams;
    const int status = start(program, words, folder, streams / "out", streams / "errors");
    return {status, unixLines(fileBytes(streams / "out")), unixLines(fileBytes(streams / "errors"))};
}

} // namespace Quenza
