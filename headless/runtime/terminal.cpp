// SPDX-License-Identifier: MIT
#include "headless/runtime/terminal.h"

#include "headless/runtime/platform.h"

#include <cstdio>

namespace headless {

namespace {

/// One write, so that lines of several processes on one pipe stay whole as well.
void writeLine(std::FILE* stream, std::string_view line) {
    std::string text(line);
    text += '\n';
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

std::string padded(long long number) {
    const std::string digits = std::to_string(number);
    return number < 10 ? '0' + digits : digits;
}

} // namespace

Terminal::Terminal() : showsStatus_(platform::takesSequences(stderr)) {}

Terminal::~Terminal() {
    erase();
}

void Terminal::print(std::string_view line) {
    const std::lock_guard lock(mutex_);
    erase();
    writeLine(stdout, line);
    draw();
}

void Terminal::printError(std::string_view line) {
    const std::lock_guard lock(mutex_);
    erase();
    writeLine(stderr, line);
    draw();
}

void Terminal::showStatus(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (!showsStatus_ || text == status_) {
        return;
    }
    erase();
    status_ = text;
    draw();
}

void Terminal::erase() {
    if (!status_.empty()) {
        // Back to the first column, and clear what follows.
        std::fputs("\r\x1b[K", stderr);
        std::fflush(stderr);
    }
}

void Terminal::draw() {
    if (!status_.empty()) {
        const auto columns = static_cast<size_t>(platform::terminalWidth(stderr));
        // A full last column would wrap the line on some terminals.
        const std::string text = cutToColumns(status_, columns - 1);
        std::fwrite(text.data(), 1, text.size(), stderr);
        std::fflush(stderr);
    }
}

std::string cutToColumns(std::string_view text, size_t columns) {
    size_t seen = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool continues = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
        if (!continues && ++seen > columns) {
            return std::string(text.substr(0, i));
        }
    }
    return std::string(text);
}

std::string elapsedText(long long seconds) {
    const long long minutes = seconds / 60;
    if (minutes < 60) {
        return std::to_string(minutes) + ":" + padded(seconds % 60);
    }
    return std::to_string(minutes / 60) + ":" + padded(minutes % 60) + ":" + padded(seconds % 60);
}

} // namespace headless
