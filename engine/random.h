// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

namespace engine {

/// Random numbers of one sequence: the generator PCG-XSH-RR 64/32 of O'Neill, "PCG: A Family of Simple Fast
/// Space-Efficient Statistically Good Algorithms for Random Number Generation" (2014).
class Random {
public:
    /// Different `sequence`s of one seed have nothing to do with each other.
    explicit Random(Quenza::u64 seed, Quenza::u64 sequence = 0) : increment_((sequence << 1) | 1) {
        nextBits();
        state_ += scramble(seed);
        nextBits();
    }

    Quenza::u32 nextBits() {
        const Quenza::u64 old = state_;
        state_ = old * 6364136223846793005ULL + increment_;
        const auto shifted = Quenza::u32(((old >> 18) ^ old) >> 27);
        const auto turn = Quenza::u32(old >> 59);
        return (shifted >> turn) | (shifted << ((32 - turn) & 31));
    }

    /// At least 0, below 1.
    float next() { return float(nextBits() >> 8) * 0x1p-24f; }

    /// Finalizer of SplitMix64: neighbouring inputs give unrelated outputs.
    static constexpr Quenza::u64 scramble(Quenza::u64 x) {
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ULL;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EBULL;
        return x ^ (x >> 31);
    }

private:
    Quenza::u64 state_ = 0;
    Quenza::u64 increment_;
};

} // namespace engine
