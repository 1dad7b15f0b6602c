// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/output_folder.h"
#include "headless/app/picture_session.h"

#include <filesystem>

namespace headless {

/// The file that shows a render while it grows: each image is written whole or not at all.
class PictureFile {
public:
    /// The format follows from the suffix: .png, .jpg, .tif, .bmp or .tga. Throws UsageError for another one,
    /// and for one that this build doesn't write.
    explicit PictureFile(const std::string& file);

    /// Before the render: makes the folders that aren't there, to be kept until the render's end. Throws
    /// HostError when they can't be made or the file can't be written.
    OutputFolder prepare() const;
    /// Writes the session's image when it has changed since the last call. Throws HostError when it can't be
    /// written.
    void update(const PictureSession& session);
    /// The full path.
    std::string path() const;

private:
    std::filesystem::path path_;
    int32_t filter_ = FILTER_PNG;
    uint64_t written_ = 0;
};

} // namespace headless
