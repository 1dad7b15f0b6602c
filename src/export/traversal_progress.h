// SPDX-License-Identifier: MIT
#pragma once

#include "host/general.h"

#include <cstdint>

/// Shows on the host's status bar how far the export of objects has come. Less than a hundredth more costs a
/// comparison.
class TraversalProgress {
public:
    /// `count` objects are to come. Nothing is shown unless `isShown` is set.
    TraversalProgress(int64_t count, bool isShown) : count_(count), showAt_(isShown ? 1 : INT64_MAX) {
        if (isShown) {
            StatusSetText("Exporting objects");
        }
    }

    void next() {
        if (++done_ >= showAt_) {
            StatusSetBar(static_cast<int32_t>(100 * done_ / count_));
            showAt_ = done_ + count_ / 100 + 1;
        }
    }

private:
    int64_t count_;
    int64_t done_ = 0;
    int64_t showAt_;
};
