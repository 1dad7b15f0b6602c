// SPDX-License-Identifier: MIT
#include "foundation/binary_stream.h"

#include "foundation/exceptions.h"

#include <bit>
#include <cstring>

namespace Quenza {

static_assert(std::endian::native == std::endian::little, "records are little-endian as they lie in memory");

void BinaryWriter::writeU32(u32 value) {
    writeBlock(&value, sizeof value);
}

void BinaryWriter::writeString(std::string_view text) {
    if (text.size() > 0xFFFFFFFFu)
        throw QuenzaException("String is too long.");
    writeU32(u32(text.size()));
    writeBlock(text.data(), text.size());
}

void BinaryWriter::writeFloats(const f32* values, u64 count) {
    writeBlock(values, count * sizeof(f32));
}

void MemoryWriter::writeBlock(const void* data, u64 size) {
    bytes_.append(static_cast<const char*>(data), size);
}

void SafeFileWriter::writeBlock(const void* data, u64 size) {
    constexpr u64 LARGE = 1u << 16;
    gathered_.append(static_cast<const char*>(data), size < LARGE ? size : 0);
    if (size >= LARGE || gathered_.size() >= LARGE)
        flush();
    if (size >= LARGE)
        file_.write(data, size);
}

void SafeFileWriter::flush() {
    file_.write(gathered_.data(), gathered_.size());
    gathered_.clear();
}

void BinaryReader::require(u64 size) const {
    if (size > rest_.size())
        throw QuenzaException("Unexpected end of stream.");
}

std::string_view BinaryReader::take(u64 size) {
    require(size);
    const std::string_view bytes = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return bytes;
}

u32 BinaryReader::readU32() {
    u32 value;
    std::memcpy(&value, take(sizeof value).data(), sizeof value);
    return value;
}

String BinaryReader::readString() {
    const u32 size = readU32();
    if (size > MAX_STRING_BYTES)
        throw QuenzaException("String is too long.");
    return String(take(size));
}

void BinaryReader::readFloats(f32* values, u64 count) {
    if (count > rest_.size() / sizeof(f32))
        throw QuenzaException("Unexpected end of stream.");
    if (count > 0)
        std::memcpy(values, take(count * sizeof(f32)).data(), count * sizeof(f32));
}

} // namespace Quenza
