// SPDX-License-Identifier: MIT
#include "headless/app/program.h"
#include "headless/runtime/platform.h"

int main(int count, char** words) {
    const std::vector<std::string> arguments = headless::platform::commandLineWords(count, words);
    return headless::runProgram(std::span(arguments).subspan(arguments.empty() ? 0 : 1));
}
