// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace Quenza {

/// Gives this process, and those it starts, a variable of the environment while it lives.
class Variable {
public:
    Variable(std::string name, const std::string& value);
    ~Variable();
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const std::string name_;
    std::optional<std::string> old_;
};

/// The user's application data in a folder of a test, and the places of the renderer in the registry, apart
/// from the user's own while it lives. Windows has one registry for all: there a second one, of whatever
/// program, waits until this one is gone.
class UserProfile {
public:
    explicit UserProfile(std::filesystem::path appData);
    ~UserProfile();
    UserProfile(const UserProfile&) = delete;
    UserProfile& operator=(const UserProfile&) = delete;

    /// Puts the folder of an edition into the registry, as the only one; none at all with "".
    void install(const std::filesystem::path& renderer, const std::string& edition = "Quenza Renderer") const;

private:
#ifdef _WIN32
    void* const mutex_;
#endif
    const std::filesystem::path appData_;
    const Variable variable_;
#ifdef _WIN32
    /// Folders of the editions in the user's registry before this.
    const std::map<std::wstring, std::wstring> installed_;
#endif
};

} // namespace Quenza
