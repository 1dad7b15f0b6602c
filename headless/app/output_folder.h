// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <vector>

namespace headless {

/// The folder of what a command writes. Those folders that were missing for it are made, and go again at the
/// end if nothing came into them.
class [[nodiscard]] OutputFolder {
public:
    /// Throws HostError when it can't be made.
    explicit OutputFolder(const std::filesystem::path& folder);
    OutputFolder(OutputFolder&&) noexcept = default;
    OutputFolder& operator=(OutputFolder&&) = delete;
    OutputFolder(const OutputFolder&) = delete;
    OutputFolder& operator=(const OutputFolder&) = delete;
    ~OutputFolder();

private:
    void removeEmpty() const;

    /// From the innermost.
    std::vector<std::filesystem::path> made_;
};

} // namespace headless
