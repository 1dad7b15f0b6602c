// SPDX-License-Identifier: MIT
#include "foundation/string.h"

namespace Quenza {

String::String(std::string_view text) {
    reserve(text.size());
    append(text.data(), text.size());
}

String::String(u64 count, char c) {
    reserve(count);
    if (count > 0)
        std::memset(data_, c, count);
    size_ = count;
}

void String::appendGrowing(const char* bytes, u64 count) {
    const bool own = bytes >= data_ && bytes < data_ + size_;
    const u64 offset = own ? u64(bytes - data_) : 0;
    growTo(size_ + count);
    std::memcpy(data_ + size_, own ? data_ + offset : bytes, count);
    size_ += count;
}

void String::setCapacity(u64 capacity) {
    data_ = static_cast<char*>(BlockMemory::grow(data_, size_, capacity_, capacity));
    capacity_ = capacity;
}

String concatenate(std::string_view a, std::string_view b) {
    String result;
    result.reserve(a.size() + b.size());
    result.append(a.data(), a.size());
    result.append(b.data(), b.size());
    return result;
}

} // namespace Quenza
