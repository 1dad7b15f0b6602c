// SPDX-License-Identifier: MIT
#pragma once

namespace Quenza {

/// Of a program's `main`: while it lives, a console shows UTF-8 and follows control sequences where it can;
/// afterwards it is as before. Terminals of other systems are so by themselves.
class ConsoleOutput {
public:
#ifdef _WIN32
    ConsoleOutput();
    ~ConsoleOutput() {
        restore();
    }
    /// Also for an end of the process that runs no destructors; any thread.
    static void restore();
#else
    ConsoleOutput() {}
    ~ConsoleOutput() {}
#endif
    ConsoleOutput(const ConsoleOutput&) = delete;
    ConsoleOutput& operator=(const ConsoleOutput&) = delete;
};

} // namespace Quenza
