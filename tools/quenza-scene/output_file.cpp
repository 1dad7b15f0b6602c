// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/output_file.h"

#include "foundation/platform.h"

#include <stdexcept>

namespace scene_tool {

void requireFileTarget(const std::string& path) {
    if (Quenza::PlatformUtils::isSpecialFile(path))
        throw std::runtime_error("can't write '" + path + "': it is no ordinary file");
}

OutputFile::OutputFile(const std::string& path) : path_(path), file_(path, Quenza::SafeFile::Mode::BINARY) {
    if (!file_.isOpen())
        fail();
}

void OutputFile::flush() {
    file_.write(buffer_.data(), buffer_.size());
    buffer_.clear();
    if (!file_.good())
        fail();
}

void OutputFile::commit() {
    flush();
    if (!file_.commit())
        fail();
}

void OutputFile::fail() const {
    throw std::runtime_error("can't write '" + path_ + "': " + file_.failureReason().toStdString());
}

} // namespace scene_tool
