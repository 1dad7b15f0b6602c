// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/mutex.h"

#include <windows.h>

namespace Quenza {

namespace {

CRITICAL_SECTION* sectionIn(unsigned char* storage) {
    return reinterpret_cast<CRITICAL_SECTION*>(storage);
}

} // namespace

Mutex::Mutex() noexcept {
    static_assert(sizeof(CRITICAL_SECTION) <= sizeof section_ && alignof(CRITICAL_SECTION) <= alignof(Mutex));
    // Without the record for debuggers, which Windows would allocate for each.
    InitializeCriticalSectionEx(sectionIn(section_), 0, CRITICAL_SECTION_NO_DEBUG_INFO);
}

Mutex::~Mutex() {
    DeleteCriticalSection(sectionIn(section_));
}

void Mutex::lock() {
    EnterCriticalSection(sectionIn(section_));
}

bool Mutex::tryLock() {
    return TryEnterCriticalSection(sectionIn(section_)) != 0;
}

void Mutex::unlock() {
    LeaveCriticalSection(sectionIn(section_));
}

} // namespace Quenza

#endif
