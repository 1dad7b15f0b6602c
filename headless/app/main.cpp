// SPDX-License-Identifier: MIT
#include "foundation/platform.h"
#include "headless/app/program.h"

#include <span>
#include <string>
#include <vector>

int main(int count, char** words) {
    const std::vector<std::string> arguments = Quenza::PlatformUtils::commandLineWords(count, words);
    return headless::runProgram(std::span(arguments).subspan(arguments.empty() ? 0 : 1));
}
