// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "foundation/types.h"

#include <array>

namespace engine {

/// What fills the inside of a surface.
struct InternalMedium {
    float ior = 1;
    RGB absorption{0.0f}; ///< 1/m
    Quenza::i32 precedence = 0;
};

/// The media that a path is inside of. Where they overlap the one of the highest precedence counts, the last
/// entered among equals.
class MediumStack {
public:
    /// Null in the open.
    const InternalMedium* current() const {
        const InternalMedium* found = nullptr;
        for (int i = 0; i < count_; ++i) {
            if (!found || media_[i]->precedence >= found->precedence) {
                found = media_[i];
            }
        }
        return found;
    }
    void enter(const InternalMedium* medium) {
        if (count_ < int(media_.size())) {
            media_[count_++] = medium;
        }
    }
    void leave(const InternalMedium* medium) {
        for (int i = count_ - 1; i >= 0; --i) {
            if (media_[i] == medium) {
                for (int k = i; k + 1 < count_; ++k) {
                    media_[k] = media_[k + 1];
                }
                --count_;
                return;
            }
        }
    }

private:
    std::array<const InternalMedium*, 8> media_{};
    int count_ = 0;
};

/// What a boundary of a medium is to a path.
struct Interface {
    float eta = 1;    ///< Index behind it over index before it.
    bool real = true; ///< Else another medium covers both sides, and light passes.
};

inline Interface interfaceOf(const MediumStack& media, const InternalMedium* medium, bool entering) {
    if (!medium) {
        return {};
    }
    MediumStack behind = media;
    if (entering) {
        behind.enter(medium);
    } else {
        behind.leave(medium);
    }
    const InternalMedium* const now = media.current();
    const InternalMedium* const then = behind.current();
    // A path that starts inside has not entered; what it leaves is still a boundary.
    const float from = now ? now->ior : entering ? 1.0f : medium->ior;
    const float to = then ? then->ior : 1.0f;
    return {to / from, entering ? then == medium : !now || now == medium};
}

} // namespace engine
