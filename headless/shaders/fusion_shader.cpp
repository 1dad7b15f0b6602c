// SPDX-License-Identifier: MIT
#include "headless/shaders/blend_mode.h"
#include "headless/shaders/host_shader.h"
#include "headless/shaders/shader_ids.h"

#include <algorithm>

namespace headless {

namespace {

/// One shader over another, where a mask lets it.
class FusionShader : public HostShader {
public:
    explicit FusionShader(ShaderSource& source)
        : base_(source.input(FUSION_BASE_CHANNEL)), over_(source.input(FUSION_BLEND_CHANNEL)),
          mask_(source.input(FUSION_MASK_CHANNEL)), mode_(source.data().GetLong(FUSION_MODE)),
          strength_(std::clamp(source.data().GetReal(FUSION_BLEND, 1.0f), 0.0f, 1.0f)) {}

    Vector sample(const ChannelData& channel) const override {
        const Vector base = base_.sample(channel);
        if (!over_) {
            return base;
        }
        const float mask = mask_ ? std::clamp(brightness(mask_.sample(channel)), 0.0f, 1.0f) : 1.0f;
        return blend(mode_, base, over_.sample(channel), strength_ * mask);
    }

private:
    ShaderInput base_;
    ShaderInput over_;
    ShaderInput mask_;
    int32_t mode_;
    float strength_;
};

} // namespace

std::unique_ptr<HostShader> makeFusion(ShaderSource& source) {
    return std::make_unique<FusionShader>(source);
}

} // namespace headless
