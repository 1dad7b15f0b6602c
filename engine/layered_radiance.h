// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "foundation/types.h"

#include <span>

namespace engine {

/// Light that leaves one point in one direction, by light layer.
class LayeredRadiance {
public:
    struct Term {
        RGB radiance;
        Quenza::u32 layer = 0;
    };

    void add(const RGB& radiance, Quenza::u32 layer) {
        for (int i = 0; i < count_; ++i) {
            if (terms_[i].layer == layer) {
                terms_[i].radiance += radiance;
                return;
            }
        }
        if (count_ < MAX_TERMS) {
            terms_[count_++] = {radiance, layer};
        }
    }
    void scale(float factor) {
        for (int i = 0; i < count_; ++i) {
            terms_[i].radiance *= factor;
        }
    }
    /// Adds it, times `factor`, to the sums of the layers. What is on a layer that isn't there goes to the
    /// first.
    void addTo(std::span<RGB> layers, const RGB& factor) const {
        for (int i = 0; i < count_; ++i) {
            layers[terms_[i].layer < layers.size() ? terms_[i].layer : 0] += terms_[i].radiance * factor;
        }
    }
    RGB total() const {
        RGB sum;
        for (int i = 0; i < count_; ++i) {
            sum += terms_[i].radiance;
        }
        return sum;
    }
    bool empty() const { return count_ == 0; }

private:
    /// A blend of more emitters on more layers than that loses the last ones.
    static constexpr int MAX_TERMS = 6;
    Term terms_[MAX_TERMS];
    int count_ = 0;
};

} // namespace engine
