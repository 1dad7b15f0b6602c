// SPDX-License-Identifier: MIT
#include "host/thread.h"

#include "host/tables.h"

bool BaseThread::TestBreak() const {
    return HostTables()->thread->TestBreak(this);
}

C4DThread::C4DThread() : thread_(HostTables()->thread->Alloc(this)) {}

C4DThread::~C4DThread() {
    End(true);
    HostTables()->thread->Free(thread_);
}

bool C4DThread::Start() {
    return HostTables()->thread->Start(thread_);
}

void C4DThread::End(bool wait) {
    HostTables()->thread->End(thread_, wait);
}

bool C4DThread::IsRunning() const {
    return HostTables()->thread->IsRunning(thread_);
}

bool C4DThread::TestBreak() {
    return thread_->TestBreak() || TestDBreak();
}
