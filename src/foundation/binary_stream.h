// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/safe_file.h"
#include "foundation/string.h"
#include "foundation/types.h"

#include <string>
#include <string_view>

namespace Quenza {

/// Where binary records go: little-endian numbers, strings as a u32 count of bytes and the bytes.
class BinaryWriter {
public:
    virtual ~BinaryWriter() = default;
    virtual void writeBlock(const void* data, u64 size) = 0;

    void writeU32(u32 value);
    /// Throws QuenzaException for a string of 4 GiB.
    void writeString(std::string_view text);
    void writeFloats(const f32* values, u64 count);
};

class MemoryWriter : public BinaryWriter {
public:
    void writeBlock(const void* data, u64 size) override;

    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// Small records are gathered, as the file takes each block as it comes. Call flush() before the file's
/// commit().
class SafeFileWriter : public BinaryWriter {
public:
    explicit SafeFileWriter(SafeFile& file) : file_(file) {}
    void writeBlock(const void* data, u64 size) override;
    void flush();

private:
    SafeFile& file_;
    std::string gathered_;
};

/// Reads such records from bytes that outlive it. What isn't there is never read and takes no memory: the
/// texts of QuenzaException are "Unexpected end of stream." and, for strings above MAX_STRING_BYTES, "String
/// is too long.".
class BinaryReader {
public:
    static constexpr u32 MAX_STRING_BYTES = 1u << 20;

    explicit BinaryReader(std::string_view bytes) : rest_(bytes) {}

    u32 readU32();
    String readString();
    void readFloats(f32* values, u64 count);
    /// Throws when fewer bytes are left.
    void require(u64 size) const;
    u64 bytesLeft() const { return rest_.size(); }

private:
    std::string_view take(u64 size);

    std::string_view rest_;
};

} // namespace Quenza
