// SPDX-License-Identifier: MIT
#include "headless/app/image_output.h"

#include "foundation/native_path.h"
#include "headless/runtime/host_error.h"

namespace headless {

namespace {

[[noreturn]] void refuseImage(const std::filesystem::path& file, const std::string& reason) {
    throw HostError("The image " + Quenza::utf8Path(file) + " can't be written" +
                    (reason.empty() ? "" : ": " + reason));
}

} // namespace

void requireWritable(const std::filesystem::path& file) {
    if (const std::string reason = writingObstacle(file); !reason.empty()) {
        refuseImage(file, reason);
    }
}

void saveImage(const std::filesystem::path& file, const Image& image, const ImageSaving& saving) {
    std::string reason;
    if (writeImage(file, image, saving, &reason) != IMAGERESULT_OK) {
        refuseImage(file, reason);
    }
}

} // namespace headless
