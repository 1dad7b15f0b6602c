// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/load_document.h"
#include "headless/documents/save_document.h"
#include "headless/runtime/host.h"
#include "support/built_files.h"
#include "support/temp_dir.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace headless {

inline std::string readText(const std::filesystem::path& file) {
    return Quenza::fileBytes(file.string());
}

/// A silent host, and a folder for files that goes with the test.
class DocumentsTest : public ::testing::Test {
protected:
    DocumentsTest() {
        HostOptions options;
        const auto silent = [](const std::string&) {};
        options.consoleSink = silent;
        options.errorSink = silent;
        options.statusSink = silent;
        host_ = std::make_unique<Host>(options);
    }

    void loadPlugin() { host_->loadPlugin(Quenza::PLUGIN_PATH); }

    std::string path(const std::string& name) const { return (folder_ / name).toStdString(); }
    std::string write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        Quenza::writeBytes(folder_ / name, text);
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
            const std::string prefix = (folder_ / "").toStdString();
            for (size_t at; (at = text.find(prefix)) != std::string::npos;) {
                text.erase(at, prefix.size());
            }
            return text;
        }
        return "no error";
    }

private:
    const Quenza::TempDir folder_;
    std::unique_ptr<Host> host_;
};

} // namespace headless
