// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include "headless/runtime/host.h"

namespace headless {

namespace {

Thread* fromHost(const BaseThread* thread) {
    return reinterpret_cast<Thread*>(const_cast<BaseThread*>(thread));
}

BaseThread* alloc(C4DThread* thread) {
    return reinterpret_cast<BaseThread*>(Host::current().threads().alloc(*thread));
}

void free(BaseThread* thread) {
    Host::current().threads().free(fromHost(thread));
}

bool start(BaseThread* thread) {
    return fromHost(thread)->start();
}

void end(BaseThread* thread, bool wait) {
    fromHost(thread)->end(wait);
}

bool isRunning(const BaseThread* thread) {
    return fromHost(thread)->isRunning();
}

bool testBreak(const BaseThread* thread) {
    return fromHost(thread)->testBreak();
}

} // namespace

const ThreadTable* threadTable() {
    static constexpr ThreadTable table = {
        .Alloc = alloc,
        .Free = free,
        .Start = start,
        .End = end,
        .IsRunning = isRunning,
        .TestBreak = testBreak,
    };
    return &table;
}

} // namespace headless
