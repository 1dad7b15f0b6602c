// SPDX-License-Identifier: MIT
#include "headless/app/picture_file.h"

#include <algorithm>

#include "foundation/native_path.h"
#include "foundation/string_utils.h"
#include "headless/app/arguments.h"
#include "headless/app/image_output.h"

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
    const std::string suffix = Quenza::toLowerCase(Quenza::utf8Path(path.extension()));
    const auto format = std::ranges::find(FORMATS, suffix, [](const Format& entry) { return entry.suffix; });
    if (format == std::end(FORMATS)) {
        throw UsageError("--image writes an image: " + Quenza::utf8Path(path.filename()) +
                         " should end with .png, .jpg, .tif, .bmp or .tga");
    }
    if (!canWrite(format->filter)) {
        throw UsageError("--image can't be " + Quenza::utf8Path(path.filename()) +
                         ": this program writes no " + suffix);
    }
    return format->filter;
}

} // namespace

PictureFile::PictureFile(const std::string& file)
    : path_(fs::absolute(Quenza::nativePath(file)).lexically_normal()), filter_(filterOf(path_)) {}

OutputFolder PictureFile::prepare() const {
    OutputFolder folder(path_.parent_path());
    requireWritable(path_);
    return folder;
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
    return Quenza::utf8Path(path_);
}

} // namespace headless
