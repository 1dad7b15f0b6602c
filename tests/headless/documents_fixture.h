// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/load_document.h"
#include "headless/documents/save_document.h"
#include "headless/runtime/host.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

namespace headless {

inline std::string readText(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// A silent host, and a folder for files that goes with the test.
class DocumentsTest : public ::testing::Test {
protected:
    DocumentsTest() {
        std::string name = (std::filesystem::temp_directory_path() / "quenza-documents-XXXXXX").string();
        folder_ = mkdtemp(name.data());
        HostOptions options;
        const auto silent = [](const std::string&) {};
        options.consoleSink = silent;
        options.errorSink = silent;
        options.statusSink = silent;
        host_ = std::make_unique<Host>(options);
    }
    ~DocumentsTest() override {
        host_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    void loadPlugin() { host_->loadPlugin(std::filesystem::path(QUENZA_BIN_DIR) / "cquenza.so"); }

    std::string path(const std::string& name) const { return (folder_ / name).string(); }
    std::string write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name, std::ios::binary) << text;
        return path(name);
    }

    /// Loads a document whose head is left out of `body`.
    std::unique_ptr<Document> load(const std::string& body) const {
        return loadDocument(write("test.json", withHead(body))).document;
    }
    static std::string withHead(const std::string& body) {
        return "{\"format\": \"quenza-headless-document\", \"version\": 1" +
               (body.empty() ? "" : ",\n" + body) + "}";
    }
    std::unique_ptr<Document> saveAndLoad(const Document& document) const {
        saveDocument(document, path("saved.json"));
        return loadDocument(path("saved.json")).document;
    }

    /// The text of the DocumentError that `action` ends in, with the test's folder taken out.
    template <class Action>
    std::string errorOf(Action&& action) const {
        try {
            action();
        } catch (const DocumentError& error) {
            std::string text = error.what();
            const std::string prefix = folder_.string() + "/";
            for (size_t at; (at = text.find(prefix)) != std::string::npos;) {
                text.erase(at, prefix.size());
            }
            return text;
        }
        return "no error";
    }

private:
    std::filesystem::path folder_;
    std::unique_ptr<Host> host_;
};

} // namespace headless
