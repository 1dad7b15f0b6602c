// SPDX-License-Identifier: MIT
#include "foundation/console_output.h"
#include "foundation/platform.h"
#include "headless/app/program.h"
#include "headless/runtime/platform.h"

#include <span>
#include <string>
#include <vector>

int main(int count, char** words) {
    headless::platform::refuseErrorBoxes();
    const Quenza::ConsoleOutput console;
    const std::vector<std::string> arguments = Quenza::PlatformUtils::commandLineWords(count, words);
    return headless::runProgram(std::span(arguments).subspan(arguments.empty() ? 0 : 1));
}
