// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/library.h"
#include "host/tables.h"

#include <filesystem>
#include <optional>

namespace headless {

/// The plug-in's library and its one entry. Main thread only.
class Plugin {
public:
    /// Loads the library and hands it the root table and its folder. Throws HostError: no such file, not
    /// loadable, no entry, or it refused this host.
    Plugin(std::filesystem::path file, const HostTable& table);
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    /// Closes the library: nothing of the plug-in may be alive.
    ~Plugin();

    const std::filesystem::path& file() const { return file_; }
    std::filesystem::path folder() const { return file_.parent_path(); }

    // These call the entry, and throw HostError when it ends with an exception.
    bool loadResources();
    /// Lets the plug-in register. False when it could not; what it registered until then stays.
    bool start();
    bool buildMenus();
    void end();

private:
    int32_t call(int32_t action, void* p1 = nullptr, void* p2 = nullptr, void* p3 = nullptr);
    bool message(int32_t id);

    std::filesystem::path file_;
    Filename hostFolder_;
    std::optional<Library> library_;
    PluginEntry entry_ = nullptr;
};

} // namespace headless
