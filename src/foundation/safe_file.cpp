// SPDX-License-Identifier: MIT
#include "foundation/safe_file.h"

#include "foundation/platform.h"

#include <algorithm>
#include <utility>

namespace Quenza {

namespace {

/// Windows' C library may refuse a write of gigabytes.
constexpr u64 WRITE_BLOCK = u64(64) << 20;

} // namespace

SafeFile::SafeFile(const String& path, Mode mode) : path_(path), partial_path_(path + ".partial") {
    // The rename would put an ordinary file in its place.
    if (PlatformUtils::isSpecialFile(path)) {
        failure_reason_ = "It is a directory or a device, not a file";
        return;
    }
    file_ = PlatformUtils::openFile(partial_path_, mode == Mode::TEXT ? "w" : "wb");
    created_ = good_ = file_ != nullptr;
    if (file_)
        std::setvbuf(file_, nullptr, _IONBF, 0);
    else
        failure_reason_ = PlatformUtils::lastErrorText();
}

SafeFile::~SafeFile() {
    close();
    if (created_ && !committed_ && !keep_partial_)
        PlatformUtils::removeFile(partial_path_);
}

void SafeFile::write(const void* data, u64 size) {
    const char* bytes = static_cast<const char*>(data);
    while (good_ && size > 0) {
        const u64 block = std::min(size, WRITE_BLOCK);
        if (std::fwrite(bytes, 1, block, file_) != block)
            fail();
        bytes += block;
        size -= block;
    }
}

bool SafeFile::commit() {
    close();
    if (good_ && !committed_) {
        committed_ = PlatformUtils::replaceFile(partial_path_, path_);
        if (!committed_)
            fail();
    }
    return committed_;
}

void SafeFile::fail() {
    // A short write is no error of the system's.
    failure_reason_ = PlatformUtils::lastErrorCode() != 0 ? PlatformUtils::lastErrorText()
                                                          : String("Not all bytes could be written.");
    good_ = false;
}

void SafeFile::close() {
    if (std::FILE* file = std::exchange(file_, nullptr))
        if (std::fclose(file) != 0 && good_)
            fail();
}

} // namespace Quenza
