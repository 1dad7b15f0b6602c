// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

struct ExportContext;

enum class Claim {
    MADE,
    /// There is such a file already, maybe that of another export at the same time.
    TAKEN,
    /// The file can't be made.
    REFUSED,
};

/// Makes an empty file for an export with temporary files, and puts it among them: so it goes with them
/// whatever becomes of its content, and no other export, in this process or another, takes the name.
Claim claimTemporaryFile(const Filename& file, ExportContext& context);
