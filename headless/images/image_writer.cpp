// SPDX-License-Identifier: MIT
#include "foundation/native_path.h"
#include "foundation/safe_file.h"
#include "headless/images/image_encoder.h"

#include <new>

namespace headless {

namespace {

namespace fs = std::filesystem;

} // namespace

int32_t writeImage(const fs::path& file, const Image& image, const ImageSaving& saving, std::string* reason) {
    if (!file.has_filename()) {
        return IMAGERESULT_PARAM_ERROR;
    }
    std::vector<unsigned char> bytes;
    if (const int32_t result = encodeImage(image, saving, bytes); result != IMAGERESULT_OK) {
        return result;
    }
    Quenza::SafeFile stream(Quenza::utf8Path(file), Quenza::SafeFile::Mode::BINARY);
    stream.write(bytes.data(), bytes.size());
    if (stream.commit()) {
        return IMAGERESULT_OK;
    }
    if (reason) {
        *reason = stream.failureReason().toStdString();
    }
    return IMAGERESULT_FILEERROR;
}

std::string writingObstacle(const fs::path& file) {
    const Quenza::SafeFile trial(Quenza::utf8Path(file), Quenza::SafeFile::Mode::BINARY);
    return trial.isOpen() ? "" : trial.failureReason().toStdString();
}

std::string encodePng(const Image& image) {
    std::vector<unsigned char> bytes;
    try {
        if (encodeImage(image, ImageSaving(), bytes) == IMAGERESULT_OK) {
            return {bytes.begin(), bytes.end()};
        }
    } catch (const std::bad_alloc&) {
        // No image is shown then.
    }
    return "";
}

} // namespace headless
