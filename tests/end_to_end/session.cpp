// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"

#include "headless/documents/load_document.h"
#include "host/ids.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>
#include <utility>

namespace fs = std::filesystem;

namespace {

/// The folders of the environment that a test has to itself, with their names in the test's folder.
constexpr std::pair<const char*, const char*> FOLDERS[] = {{"XDG_CONFIG_HOME", "config"}, {"TMPDIR", "temp"}};

} // namespace

Session::Session() {
    std::string name = (fs::temp_directory_path() / "quenza-test-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    for (const auto& [variable, ownFolder] : FOLDERS) {
        const char* const old = std::getenv(variable);
        oldFolders_.emplace_back(old ? old : "");
        fs::create_directory(folder_ / ownFolder);
        setenv(variable, (folder_ / ownFolder).c_str(), 1);
    }
    install(QUENZA_RENDERER_DIR);
}

Session::~Session() {
    host_.reset();
    for (size_t i = 0; i < oldFolders_.size(); ++i) {
        if (oldFolders_[i].empty()) {
            unsetenv(FOLDERS[i].first);
        } else {
            setenv(FOLDERS[i].first, oldFolders_[i].c_str(), 1);
        }
    }
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

headless::Host& Session::start() {
    startHost().loadPlugin(fs::path(QUENZA_BIN_DIR) / "cquenza.so");
    return *host_;
}

headless::Host& Session::startHost(bool hasDrivenClock, headless::LineSink statusTextSink) {
    headless::HostOptions options;
    const auto silent = [](const std::string&) {};
    options.consoleSink = silent;
    options.errorSink = silent;
    options.statusSink = silent;
    options.statusTextSink = std::move(statusTextSink);
    options.fixedClock = DateTime{2026, 11, 24, 9, 5, 7};
    options.drivenClock = hasDrivenClock;
    host_ = std::make_unique<headless::Host>(options);
    linesSeen_ = 0;
    return *host_;
}

void Session::install(const fs::path& rendererFolder) {
    writeFile(folder_ / "config" / "registry.ini",
              "[Software\\Tessaly Works\\Quenza Renderer]\nInstallDirectory=" + rendererFolder.string() +
                  "\n");
}

fs::path Session::makeRenderer(const std::string& name, const std::string& script) {
    const fs::path renderer = folder_ / name;
    fs::create_directory(renderer);
    for (const char* const program : {"quenza.exe", "quenza_console.exe"}) {
        writeFile(renderer / program, "#!/bin/sh\n" + script);
        fs::permissions(renderer / program, fs::perms::owner_all);
    }
    return renderer;
}

void Session::openDocument(const std::string& objects, const std::string& settings, const std::string& more) {
    std::string text =
        "{\"format\": \"quenza-headless-document\", \"version\": 1,\n\"objects\": [" + objects + "]";
    if (!more.empty()) {
        text += ",\n" + more;
    } else if (!settings.empty()) {
        text += ",\n\"renderData\": [{\"videoPosts\": [{\"type\": 1020896, \"parameters\": {" + settings +
                "}}]}]";
    }
    writeFile(folder_ / "document.json", text + "}\n");
    openFile(folder_ / "document.json");
}

void Session::openFile(const fs::path& file) {
    if (!host_) {
        start();
    }
    const auto takeUnit = [this](int32_t unit) {
        host_->worldPreferences().SetLong(WPREF_UNITS_BASIC, unit);
    };
    host_->open(headless::openDocument(file.string(), takeUnit).document);
}

std::vector<std::string> Session::newLines() {
    std::vector<std::string> lines = host_->console().lines();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(linesSeen_));
    linesSeen_ += lines.size();
    return lines;
}

bool Session::printed(const std::string& line) const {
    const std::vector<std::string> lines = host_->console().lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

bool Session::waitFor(const fs::path& file) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!fs::exists(file)) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in.good()) << file;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void writeFile(const fs::path& file, const std::string& text) {
    std::ofstream out(file, std::ios::binary);
    out << text;
    ASSERT_TRUE(out.good()) << file;
}

std::vector<std::string> listFiles(const fs::path& folder) {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_directory()) {
            files.push_back(fs::relative(entry.path(), folder).string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}
