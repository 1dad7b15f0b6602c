// SPDX-License-Identifier: MIT
#pragma once

#include "host/general.h"
#include "host/object.h"

/// Shows on the host's status bar how many of the document's top objects are through; a change of less than a
/// hundredth costs a comparison.
class TraversalProgress {
public:
    explicit TraversalProgress(const BaseObject* first) {
        for (; first; first = first->GetNext()) {
            ++count_;
        }
        StatusSetText("Exporting objects");
    }

    void next() {
        if (done_++ >= shownAt_) {
            StatusSetBar(static_cast<int32_t>(100 * (done_ - 1) / count_));
            shownAt_ += count_ / 100 + 1;
        }
    }

private:
    int64_t count_ = 0;
    int64_t done_ = 0;
    int64_t shownAt_ = 0;
};
