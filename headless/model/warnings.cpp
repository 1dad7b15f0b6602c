// SPDX-License-Identifier: MIT
#include "headless/model/warnings.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace headless {

namespace {

std::mutex sinkMutex;
std::function<void(const std::string&)> currentSink;
std::atomic<bool> tellsTextures{true};
std::atomic<size_t> lostImageCount{0};

} // namespace

void warn(const std::string& text) {
    std::function<void(const std::string&)> sink;
    {
        const std::lock_guard lock(sinkMutex);
        sink = currentSink;
    }
    if (sink) {
        sink(text);
    } else {
        std::fprintf(stderr, "%s\n", text.c_str());
    }
}

void warnOfTexture(const std::string& text) {
    if (tellsTextures) {
        warn(text);
    }
}

void warnOfLostImage(const std::string& file) {
    ++lostImageCount;
    warn("the image " + file + " can't be written");
}

size_t lostImages() {
    return lostImageCount;
}

TextureWarningsHeld::TextureWarningsHeld() {
    tellsTextures = false;
}

TextureWarningsHeld::~TextureWarningsHeld() {
    tellsTextures = true;
}

void setWarningSink(std::function<void(const std::string&)> sink) {
    const std::lock_guard lock(sinkMutex);
    currentSink = std::move(sink);
}

} // namespace headless
