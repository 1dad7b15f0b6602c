// SPDX-License-Identifier: MIT
#include "engine/path.h"

#include "engine/scattering.h"

namespace engine {

namespace {

/// What stands for the channels in glass that splits colours; nanometres. They overlap, so that a spectrum
/// has no gaps.
struct Band {
    float from, to;
};
constexpr Band RED{575, 680}, GREEN{490, 590}, BLUE{420, 505};

} // namespace

void Path::splitAt(const InternalMedium* medium, Random& random) {
    const InternalMedium* const now = media.current();
    if (split || !((medium && medium->disperses()) || (now && now->disperses()))) {
        return;
    }
    split = true;
    const float pick = 3.0f * random.next();
    const Band& band = pick < 1.0f ? RED : pick < 2.0f ? GREEN : BLUE;
    throughput *= pick < 1.0f ? RGB{3, 0, 0} : pick < 2.0f ? RGB{0, 3, 0} : RGB{0, 0, 3};
    wavelength = band.from + (band.to - band.from) * random.next();
}

RGB Vertex::evaluate(const Vec& in, float& pdf) const {
    if (bsdf) {
        return bsdf->evaluate(in, pdf);
    }
    pdf = henyeyGreenstein(dot(direction, in), mean_cosine);
    return RGB{pdf};
}

} // namespace engine
