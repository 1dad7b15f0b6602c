// SPDX-License-Identifier: MIT
#include "scene/ostream.h"

#include "foundation/number_format.h"
#include "foundation/types.h"

#include <charconv>
#include <cstring>

namespace Quenza {

namespace {

constexpr u64 BUFFER_SIZE = u64(256) << 10;
constexpr int STREAM_DIGITS = 6;

} // namespace

OFStream::OFStream(const String& path) : file_(path, SafeFile::Mode::TEXT), buffer_(new char[BUFFER_SIZE]) {}

void OFStream::writeString(const String& text) {
    writeBytes(text.data(), text.size());
}

void OFStream::writeDouble(double value) {
    char text[NumberFormat::MAX_CHARS];
    const std::to_chars_result result =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, STREAM_DIGITS);
    writeBytes(text, u64(result.ptr - text));
}

void OFStream::writeBytes(const char* bytes, u64 count) {
    if (count > BUFFER_SIZE - buffered_) {
        flush();
        if (count > BUFFER_SIZE) {
            file_.write(bytes, count);
            return;
        }
    }
    if (count > 0)
        std::memcpy(buffer_.get() + buffered_, bytes, count);
    buffered_ += count;
}

void OFStream::flush() {
    file_.write(buffer_.get(), buffered_);
    buffered_ = 0;
}

bool OFStream::commit() {
    flush();
    return file_.commit();
}

void BufferOStream::writeDouble(double value) {
    char text[NumberFormat::MAX_CHARS];
    buffer_.append(text, u64(NumberFormat::writeDouble(text, value) - text));
}

} // namespace Quenza
