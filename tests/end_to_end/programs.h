// SPDX-License-Identifier: MIT
#pragma once

#include "end_to_end/session.h"

/// Runs the programs of this build, each as a process of its own, in the test's folder.
class Programs : public Session {
protected:
    /// Exit status of quenza-headless; what it prints goes to `out` and `errors`. Words with blanks stand in
    /// single quotes.
    int headless(const std::string& words);
    int sceneTool(const std::string& words);
    /// Exports a document of the test's folder and gives the scene's path; "" after a failure.
    std::filesystem::path exportDocument(const std::string& document);
    /// Writes a document of the materials and objects given.
    void writeDocument(const std::string& name, const std::string& materials,
                       const std::string& objects) const;

    std::string out;
    std::string errors;

private:
    int run(const std::string& command);
};

/// The materials and media of a scene, a line for each of their elements: what differs between two runs of
/// one document, the UIDs and the numbers in names of baked files, is taken out, and `folder` is called
/// FOLDER.
std::string materialOutline(const std::filesystem::path& scene, const std::filesystem::path& folder);
