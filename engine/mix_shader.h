// SPDX-License-Identifier: MIT
#pragma once

#include "engine/surface_shader.h"
#include "engine/texturing.h"

#include <vector>

namespace engine {

/// Nothing there, or an opening to the background.
class PassShader : public SurfaceShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    RGB passing(const SurfacePoint&, const ShadeContext&) const override { return RGB{1.0f}; }
    bool mayPass() const override { return true; }
};

/// A weighted sum; a blend is one whose weights are 1 together.
class MixShader : public SurfaceShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    void emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const override;
    void emitAverage(bool front, float weight, LayeredRadiance& sum) const override;
    RGB passing(const SurfacePoint& point, const ShadeContext& context) const override;
    bool mayPass() const override;
    const InternalMedium* medium() const override;
    int countLobes() const override;
    void bump(SurfacePoint& point) const override;
    float displacement(const SurfacePoint& point) const override;
    bool isDisplaced() const override;

    struct Part {
        const SurfaceShader* shader = nullptr;
        ScalarInput weight;
    };
    std::vector<Part> parts;
    /// Two parts: the first parameter is the share of the second, the other one is not looked at.
    bool blends = false;
    bool steps = false; ///< A blend of one or the other.

private:
    float weightOf(size_t part, float value) const;
    float shareAt(size_t part, const SurfacePoint& point) const;
};

} // namespace engine
