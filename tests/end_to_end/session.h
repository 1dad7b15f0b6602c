// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/host.h"
#include "support/built_files.h"
#include "support/user_profile.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

/// The objects of a small document.
inline constexpr const char* CUBE = R"({"type": "Cube", "name": "Cube"})";

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

    /// Puts the renderer's folder into the registry, for one edition alone.
    void install(const std::filesystem::path& rendererFolder, const std::string& edition = "Quenza Renderer");
    /// Makes a renderer of a shell script, in a folder of its own. On Windows, which starts no scripts, it's
    /// a program that writes how it was started into the file "done" beside it.
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
    /// Waits until a file that another process writes can be read: Windows gives a file its name before its
    /// writer lets go of it.
    static bool waitFor(const std::filesystem::path& file);

private:
    const std::filesystem::path folder_;
    const Quenza::UserProfile profile_;
    const Quenza::Variable temporary_;
    std::unique_ptr<headless::Host> host_;
    size_t linesSeen_ = 0;
};

/// A path within a text of JSON.
std::string jsonPath(const std::filesystem::path& path);
/// With the line ends of Linux.
std::string readFile(const std::filesystem::path& file);
/// With the separators of Linux, too.
std::string readScene(const std::filesystem::path& file);
void writeFile(const std::filesystem::path& file, const std::string& text);
/// Files below a folder, relative, in order.
std::vector<std::string> listFiles(const std::filesystem::path& folder);
/// `text` with every `from` replaced.
std::string replaceAll(std::string text, const std::string& from, const std::string& to);
