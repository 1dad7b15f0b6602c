// SPDX-License-Identifier: MIT
#pragma once

#include "sdk/binding.h"

#include <deque>
#include <mutex>
#include <string>

namespace engine::library {

/// What a render tells its user. Any thread may tell; the messages go into the queue of the caller when he
/// asks.
class MessageLog {
public:
    void inform(const std::string& text);
    void fail(const std::string& text);

    /// Moves what was told since into the queue.
    void collect();
    bool isQueueEmpty() const;
    /// The oldest message of the queue, counted once for the caller; null when there is none.
    Quenza::SDK::InterfaceBase* next();

private:
    struct Entry {
        Quenza::i32 type;
        std::string text;
    };
    void add(Quenza::i32 type, const std::string& text);

    mutable std::mutex mutex_;
    std::deque<Entry> told_, queue_;
};

} // namespace engine::library
