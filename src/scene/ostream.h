// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/safe_file.h"
#include "foundation/string.h"
#include "foundation/types.h"

#include <memory>

namespace Quenza {

/// Where nodes write their XML.
class OStream {
public:
    virtual ~OStream() = default;
    virtual void writeString(const String& text) = 0;
    /// In the stream's own form of numbers. XML elements use the helpers of xml_elements.h instead.
    virtual void writeDouble(double value) = 0;

    /// Memory of those helpers, kept from element to element. Not the thread's: what a thread has to destroy
    /// at its end keeps a library of Windows loaded until then.
    String element_text;
};

/// A text file. Neither a failed open nor a failed write throws: later writes are lost silently, and commit()
/// tells. Without commit() no file of that name appears and an earlier one stays, see SafeFile.
class OFStream : public OStream {
public:
    explicit OFStream(const String& path);

    void writeString(const String& text) override;
    /// Six significant digits, as C++ streams have it.
    void writeDouble(double value) override;

    /// Writes what is buffered, closes the file and gives it its name. False when anything failed on the way.
    bool commit();
    /// The system's text for the first failure.
    const String& failureReason() const { return file_.failureReason(); }

private:
    void writeBytes(const char* bytes, u64 count);
    void flush();

    SafeFile file_;
    std::unique_ptr<char[]> buffer_;
    u64 buffered_ = 0;
};

/// Text in memory.
class BufferOStream : public OStream {
public:
    void writeString(const String& text) override { buffer_ += text; }
    /// The shortest form of doubleToString.
    void writeDouble(double value) override;

    const String& getBuffer() const { return buffer_; }

private:
    String buffer_;
};

} // namespace Quenza
