// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"
#include "headless/runtime/host.h"
#include "headless_plugin/numbers.h"
#include "support/built_files.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace headless {

/// A silent host, with one of the test plug-ins when a test loads it.
class RuntimeTest : public ::testing::Test {
protected:
    static std::filesystem::path testPlugin(const std::string& name) {
        return std::filesystem::absolute(QUENZA_BIN_DIR "/test_plugins/test_plugin_" + name + ".plugin");
    }

    Host& start(HostOptions options = {}) {
        const auto silent = [](const std::string&) {};
        options.consoleSink = silent;
        options.errorSink = silent;
        options.statusSink = silent;
        host_ = std::make_unique<Host>(std::move(options));
        linesSeen_ = 0;
        return *host_;
    }
    Host& startWorking() {
        start().loadPlugin(testPlugin("working"));
        host().open(std::make_unique<Document>());
        linesSeen_ = host().console().lines().size();
        return host();
    }
    Host& host() { return *host_; }
    void stop() { host_.reset(); }

    /// The console's lines since the plug-in was loaded, or since the last call.
    std::vector<std::string> newLines() {
        std::vector<std::string> lines = host().console().lines();
        lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(linesSeen_));
        linesSeen_ += lines.size();
        return lines;
    }

private:
    std::unique_ptr<Host> host_;
    size_t linesSeen_ = 0;
};

using Lines = std::vector<std::string>;

} // namespace headless
