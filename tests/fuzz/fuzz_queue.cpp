// SPDX-License-Identifier: MIT
// Any bytes as a render queue: the summary tells items or faults.
#include "fuzz/fuzz_input.h"
#include "reading/queue_report.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const Quenza::QueueSummary summary =
        Quenza::summariseQueue(fuzz::writeInput("frames.qzq", data, size).toStdString());
    if (summary.items.empty() && summary.faults.empty()) {
        std::abort();
    }
    return 0;
}
