// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"

#include "headless/documents/load_document.h"
#include "host/ids.h"
#include "support/loaded_library.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <thread>
#include <utility>

namespace fs = std::filesystem;

namespace {

#ifdef _WIN32
constexpr const char* TEMPORARY_FOLDER = "TMP";
#else
constexpr const char* TEMPORARY_FOLDER = "TMPDIR";
#endif

fs::path makeFolder() {
    std::random_device random;
    fs::path folder;
    do {
        folder = fs::temp_directory_path() / ("quenza-test-" + std::to_string(random()));
    } while (!fs::create_directory(folder));
    fs::create_directory(folder / "config");
    fs::create_directory(folder / "temp");
    return folder;
}

} // namespace

Session::Session()
    : folder_(makeFolder()), profile_(folder_ / "config"),
      temporary_(TEMPORARY_FOLDER, (folder_ / "temp").string()) {
    install(QUENZA_RENDERER_DIR);
}

Session::~Session() {
    host_.reset();
#ifdef _WIN32
    // What a thread has still to destroy for a library keeps it there. Windows ends such a library last, when
    // the other threads are gone at whatever they held, so that the process may stand still for ever.
    EXPECT_FALSE(Quenza::isLoaded(Quenza::PLUGIN_NAME));
    EXPECT_FALSE(Quenza::isLoaded(Quenza::REALTIME_PLUGIN_NAME));
#endif
    Quenza::removeTree(folder_);
}

headless::Host& Session::start() {
    startHost().loadPlugin(Quenza::PLUGIN_PATH);
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

void Session::install(const fs::path& rendererFolder, const std::string& edition) {
    profile_.install(rendererFolder, edition);
}

fs::path Session::makeRenderer(const std::string& name, [[maybe_unused]] const std::string& script) {
    const fs::path renderer = folder_ / name;
    fs::create_directory(renderer);
    for (const char* const program : {"quenza.exe", "quenza_console.exe"}) {
#ifdef _WIN32
        fs::copy_file(fs::path(QUENZA_BIN_DIR) / "child_program.exe", renderer / program);
#else
        writeFile(renderer / program, "#!/bin/sh\n" + script);
        fs::permissions(renderer / program, fs::perms::owner_all);
#endif
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
    while (!std::ifstream(file).good()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

std::string jsonPath(const fs::path& path) {
    return replaceAll(path.string(), "\\", "\\\\");
}

std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in.good()) << file;
    std::ostringstream text;
    text << in.rdbuf();
#ifdef _WIN32 // whose texts have other line ends
    return replaceAll(text.str(), "\r\n", "\n");
#else
    return text.str();
#endif
}

std::string readScene(const fs::path& file) {
#ifdef _WIN32
    return replaceAll(readFile(file), "\\", "/");
#else
    return readFile(file);
#endif
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
            files.push_back(fs::relative(entry.path(), folder).generic_string());
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
