// SPDX-License-Identifier: MIT
#include "engine/medium_compiler.h"

#include "engine/skin.h"
#include "scene/volume_param.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

using namespace Quenza;

/// A mean cosine of 1 would turn no light at all.
constexpr float MAX_MEAN_COSINE = 0.98f;

/// Light scatters on the air's molecules (Rayleigh; at sea level, Bucholtz, "Rayleigh-scattering calculations
/// for the terrestrial atmosphere", 1995, at 610, 550 and 465 nm) and on haze, whose amount the turbidity
/// tells: the share of all light that is scattered over that of clear air.
InternalMedium airOfSeaLevel(float turbidity) {
    InternalMedium air;
    air.scattering = {8.2e-6f, 12.5e-6f, 25.0e-6f};
    air.scattering += RGB{std::clamp(turbidity - 1.0f, 0.0f, 100.0f) * luminance(air.scattering)};
    return air;
}

} // namespace

const InternalMedium* MediumCompiler::compile(const SceneNodeMedium* node) {
    if (!node || !node->medium) {
        return nullptr;
    }
    std::unique_ptr<InternalMedium>& medium = media_[node];
    if (!medium) {
        medium = std::make_unique<InternalMedium>(make(*node->medium));
        medium->precedence = node->medium->precedence;
    }
    return medium.get();
}

InternalMedium MediumCompiler::make(const Medium& medium) {
    if (const auto* const basic = dynamic_cast<const BasicMedium*>(&medium)) {
        return makeBasic(*basic);
    }
    if (const auto* const inner = dynamic_cast<const Dermis*>(&medium)) {
        return dermis(float(inner->hemoglobin_fraction));
    }
    if (const auto* const outer = dynamic_cast<const Epidermis*>(&medium)) {
        return epidermis(float(outer->melanin_fraction), float(outer->melanin_type_blend));
    }
    if (const auto* const atmosphere = dynamic_cast<const Atmosphere*>(&medium)) {
        notices_.tell("Atmospheres are drawn as air of sea level at all heights.");
        return airOfSeaLevel(float(atmosphere->turbidity));
    }
    notices_.tell("Media of an unknown kind are drawn as empty space.");
    return {};
}

InternalMedium MediumCompiler::makeBasic(const BasicMedium& basic) {
    InternalMedium medium;
    medium.ior = std::isfinite(basic.ior) ? std::clamp(float(basic.ior), 1.0f, 10.0f) : 1.0f;
    medium.cauchy_b =
        std::isfinite(basic.cauchy_b_coeff) ? float(std::clamp(basic.cauchy_b_coeff, -1.0, 1.0)) : 0.0f;
    medium.absorption = coefficient(basic.absorption_coefficient);
    if (basic.subsurface_scattering) {
        medium.scattering = coefficient(basic.subsurface_scattering->scattering_coefficient);
        const auto* const forward = dynamic_cast<const HenyeyGreensteinPhaseFunction*>(
            basic.subsurface_scattering->phase_function.getPointer());
        if (forward) {
            const RGB g = coefficient(forward->g_spectrum);
            medium.mean_cosine = std::min(MAX_MEAN_COSINE, (g.r + g.g + g.b) / 3);
        }
    }
    return medium;
}

RGB MediumCompiler::coefficient(const Ref<VolumeParam>& param) {
    if (!param) {
        return RGB{0.0f};
    }
    const auto* const constant = dynamic_cast<const ConstantVolumeParam*>(param.getPointer());
    if (!constant) {
        notices_.tell("What varies within a medium is not drawn.");
        return RGB{0.0f};
    }
    return constant->spectrum ? absorptionOf(*constant->spectrum) : RGB{0.0f};
}

} // namespace engine
