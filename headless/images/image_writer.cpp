// SPDX-License-Identifier: MIT
#include "headless/images/image_encoder.h"

#include <fstream>
#include <new>
#include <system_error>

namespace headless {

namespace {

namespace fs = std::filesystem;

bool writeBytes(const fs::path& file, const std::vector<unsigned char>& bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    return stream.good();
}

} // namespace

int32_t writeImage(const fs::path& file, const Image& image, const ImageSaving& saving) {
    if (!file.has_filename()) {
        return IMAGERESULT_PARAM_ERROR;
    }
    std::vector<unsigned char> bytes;
    if (const int32_t result = encodeImage(image, saving, bytes); result != IMAGERESULT_OK) {
        return result;
    }
    std::error_code error;
    // The rename would put an ordinary file in the place of a device.
    if (fs::exists(file, error) && !fs::is_regular_file(file, error)) {
        return IMAGERESULT_FILEERROR;
    }
    fs::path partial = file;
    partial += ".partial";
    if (writeBytes(partial, bytes)) {
        fs::rename(partial, file, error);
        if (!error) {
            return IMAGERESULT_OK;
        }
    }
    fs::remove(partial, error);
    return IMAGERESULT_FILEERROR;
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
