// SPDX-License-Identifier: MIT
#include "headless/app/picture_file.h"

#include <algorithm>

#include "foundation/string_utils.h"
#include "headless/app/arguments.h"
#include "headless/app/image_output.h"
#include "headless/runtime/files.h"
#include "headless/runtime/platform.h"

namespace headless {

namespace {

namespace fs = std::filesystem;

struct Format {
    const char* suffix;
    int32_t filter;
};
constexpr Format FORMATS[] = {{".png", FILTER_PNG}, {".jpg", FILTER_JPG},  {".jpeg", FILTER_JPG},
                              {".tif", FILTER_TIF}, {".tiff", FILTER_TIF}, {".bmp", FILTER_BMP},
                              {".tga", FILTER_TGA}};

int32_t filterOf(const fs::path& path) {
    const std::string suffix = Quenza::toLowerCase(platform::utf8FromPath(path.extension()));
    const auto format = std::ranges::find(FORMATS, suffix, [](const Format& entry) { return entry.suffix; });
    if (format == std::end(FORMATS)) {
        throw UsageError("--image writes an image: " + platform::utf8FromPath(path.filename()) +
                         " should end with .png, .jpg, .tif, .bmp or .tga");
    }
    if (!canWrite(format->filter)) {
        throw UsageError("--image can't be " + platform::utf8FromPath(path.filename()) +
                         ": this program writes no " + suffix);
    }
    return format->filter;
}

} // namespace

PictureFile::PictureFile(const std::string& file)
    : path_(fs::absolute(platform::pathFromUtf8(file)).lexically_normal()), filter_(filterOf(path_)) {}

void PictureFile::prepare() const {
    if (const std::string reason = files::makeFolders(path_.parent_path()); !reason.empty()) {
        throw HostError("The folder " + platform::utf8FromPath(path_.parent_path()) +
                        " can't be made: " + reason);
    }
    requireWritable(path_);
}

void PictureFile::update(const PictureSession& session) {
    if (session.changes() == written_) {
        return;
    }
    Image image;
    written_ = session.copyImage(image);
    ImageSaving saving;
    saving.filter = filter_;
    saveImage(path_, image, saving);
}

std::string PictureFile::path() const {
    return platform::utf8FromPath(path_);
}

} // namespace headless
