// SPDX-License-Identifier: MIT
#pragma once

#include "engine/library/message_log.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vector.h"

namespace engine::library {

/// What a render in the process takes from the renderer's command line.
struct Arguments {
    /// Where the scene would lie, for relative paths; there need not be such a file.
    Quenza::String scene_path;
    Quenza::u64 seed = 1;
};

/// Words that mean nothing here are told and passed over, each with its value.
Arguments parseArguments(const Quenza::Vector<Quenza::String>& words, MessageLog& log);

} // namespace engine::library
