// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/host.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

/// A stand-in host with the plug-in loaded, in a folder of its own: application data, temporary files,
/// documents and exports of a test lie there and go with it. The clock stands still.
class Session : public ::testing::Test {
protected:
    static constexpr int32_t RENDER_COMMAND = 1023920;

    Session();
    ~Session() override;

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path userFolder() const { return folder_ / "config" / "Quenza for Cinema 4D"; }

    /// Starts the host and the plug-in; without it tests can first prepare the folder.
    headless::Host& start();
    /// Starts the host alone; with a driven clock timers and sleeps follow Host::advance. `statusTextSink`
    /// gets each new text of the status bar.
    headless::Host& startHost(bool hasDrivenClock = false, headless::LineSink statusTextSink = {});
    headless::Host& host() { return *host_; }
    void stop() { host_.reset(); }

    /// Puts the renderer's folder into the registry.
    void install(const std::filesystem::path& rendererFolder);
    /// Makes a renderer of a shell script, in a folder of its own.
    std::filesystem::path makeRenderer(const std::string& name, const std::string& script);

    /// Writes a JSON document of the objects and settings given and opens it. `settings` are parameters of
    /// the render settings video post; with "" the document has none.
    void openDocument(const std::string& objects, const std::string& settings = "",
                      const std::string& more = "");
    void openFile(const std::filesystem::path& file);
    /// Runs "Render with Quenza"; false when its dialog didn't open.
    bool render() { return host_->executeCommand(RENDER_COMMAND); }

    /// Console lines since the last call.
    std::vector<std::string> newLines();
    /// True when one of all console lines is this one.
    bool printed(const std::string& line) const;
    /// Waits for a file that another process writes.
    static bool waitFor(const std::filesystem::path& file);

private:
    std::filesystem::path folder_;
    std::vector<std::string> oldFolders_;
    std::unique_ptr<headless::Host> host_;
    size_t linesSeen_ = 0;
};

std::string readFile(const std::filesystem::path& file);
void writeFile(const std::filesystem::path& file, const std::string& text);
/// Files below a folder, relative, in order.
std::vector<std::string> listFiles(const std::filesystem::path& folder);
/// `text` with every `from` replaced.
std::string replaceAll(std::string text, const std::string& from, const std::string& to);
