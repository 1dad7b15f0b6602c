// SPDX-License-Identifier: MIT
#pragma once

#include "engine/medium.h"

#include <array>
#include <cstddef>

namespace engine {

/// The media that a path is inside of. Where they overlap the one of the highest precedence counts, the last
/// entered among equals.
class MediumStack {
public:
    /// Null in the open.
    const InternalMedium* current() const {
        const InternalMedium* found = nullptr;
        for (size_t i = 0; i < count_; ++i) {
            if (!found || media_[i]->precedence >= found->precedence) {
                found = media_[i];
            }
        }
        return found;
    }
    void enter(const InternalMedium* medium) {
        if (count_ < media_.size()) {
            media_[count_++] = medium;
        }
    }
    void leave(const InternalMedium* medium) {
        for (size_t i = count_; i-- > 0;) {
            if (media_[i] == medium) {
                for (size_t k = i; k + 1 < count_; ++k) {
                    media_[k] = media_[k + 1];
                }
                --count_;
                return;
            }
        }
    }
    /// Through the surface of a medium; null is one without.
    void cross(const InternalMedium* medium, bool entering) {
        if (medium) {
            entering ? enter(medium) : leave(medium);
        }
    }

private:
    std::array<const InternalMedium*, 8> media_{};
    size_t count_ = 0;
};

/// What a boundary of a medium is to a path.
struct Interface {
    float eta = 1;    ///< Index behind it over index before it.
    bool real = true; ///< Else another medium covers both sides, and light passes.
};

/// `wavelength` is in nanometres.
inline Interface interfaceOf(const MediumStack& media, const InternalMedium* medium, bool entering,
                             float wavelength = MEAN_WAVELENGTH) {
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
    const float from = now ? now->iorAt(wavelength) : entering ? 1.0f : medium->iorAt(wavelength);
    const float to = then ? then->iorAt(wavelength) : 1.0f;
    return {to / from, entering ? then == medium : !now || now == medium};
}

} // namespace engine
