// SPDX-License-Identifier: MIT
#include "headless/bake/pixel_border.h"

#include <algorithm>
#include <array>

namespace headless {

namespace {

enum State : uint8_t { EMPTY, COVERED, WAITING };

class Border {
public:
    Border(Image& image, std::vector<uint8_t>& states) : image_(image), states_(states) {}

    /// The empty pixels beside `inner`, each once; they're waiting then.
    std::vector<size_t> ringAround(const std::vector<size_t>& inner) {
        std::vector<size_t> ring;
        for (const size_t pixel : inner) {
            forNeighbours(pixel, [&](size_t neighbour) {
                if (states_[neighbour] == EMPTY) {
                    states_[neighbour] = WAITING;
                    ring.push_back(neighbour);
                }
            });
        }
        return ring;
    }

    void fill(const std::vector<size_t>& ring) {
        for (const size_t pixel : ring) {
            std::array<int, 3> sum{};
            int count = 0;
            forNeighbours(pixel, [&](size_t neighbour) {
                if (states_[neighbour] == COVERED) {
                    for (size_t i = 0; i < 3; ++i) {
                        sum[i] += image_.bytes()[3 * neighbour + i];
                    }
                    ++count;
                }
            });
            for (size_t i = 0; i < 3; ++i) {
                image_.bytes()[3 * pixel + i] = static_cast<uint8_t>((sum[i] + count / 2) / count);
            }
        }
        for (const size_t pixel : ring) {
            states_[pixel] = COVERED;
        }
    }

private:
    template <class Visit>
    void forNeighbours(size_t pixel, const Visit& visit) const {
        const auto width = static_cast<size_t>(image_.width());
        const auto x = static_cast<int32_t>(pixel % width);
        const auto y = static_cast<int32_t>(pixel / width);
        for (int32_t dy = -1; dy <= 1; ++dy) {
            for (int32_t dx = -1; dx <= 1; ++dx) {
                if ((dx != 0 || dy != 0) && image_.contains(x + dx, y + dy)) {
                    visit(static_cast<size_t>(y + dy) * width + static_cast<size_t>(x + dx));
                }
            }
        }
    }

    Image& image_;
    std::vector<uint8_t>& states_;
};

} // namespace

void addPixelBorder(Image& image, std::vector<uint8_t> covered, int32_t width) {
    if (width < 1) {
        return;
    }
    Border border(image, covered);
    std::vector<size_t> ring;
    for (size_t pixel = 0; pixel < covered.size(); ++pixel) {
        if (covered[pixel] == COVERED) {
            ring.push_back(pixel);
        }
    }
    for (int32_t i = 0; i < width && !ring.empty(); ++i) {
        ring = border.ringAround(ring);
        border.fill(ring);
    }
}

} // namespace headless
