// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace Quenza {

/// Calls `body(begin, end)` for disjoint ranges that cover [0, count), on all processors when there are at
/// least two ranges of `grain` items, else on the caller's thread. Returns when all is done; the first
/// exception of a range is thrown again. Ranges write to disjoint places, so that results don't depend on the
/// number of threads.
template <class Body>
void parallelFor(std::size_t count, std::size_t grain, const Body& body) {
    const std::size_t wanted = std::min<std::size_t>(std::thread::hardware_concurrency(), count / grain);
    if (wanted < 2) {
        body(std::size_t{0}, count);
        return;
    }
    std::exception_ptr failure;
    std::mutex failureMutex;
    const auto guarded = [&](std::size_t begin, std::size_t end) noexcept {
        try {
            body(begin, end);
        } catch (...) {
            const std::lock_guard lock(failureMutex);
            failure = failure ? failure : std::current_exception();
        }
    };
    {
        std::vector<std::jthread> threads;
        threads.reserve(wanted - 1);
        std::size_t begin = 0;
        for (std::size_t i = 1; i < wanted; ++i) {
            const std::size_t end = count / wanted * i;
            try {
                threads.emplace_back(guarded, begin, end);
            } catch (const std::system_error&) {
                break; // No more threads to be had: the caller's thread takes the rest.
            }
            begin = end;
        }
        guarded(begin, count);
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

} // namespace Quenza
