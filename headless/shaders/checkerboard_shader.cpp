// SPDX-License-Identifier: MIT
#include "headless/shaders/host_shader.h"
#include "headless/shaders/shader_ids.h"

#include <cmath>

namespace headless {

namespace {

/// Fields of two colours; the first is that of the corner at the origin.
class CheckerboardShader : public HostShader {
public:
    explicit CheckerboardShader(const BaseContainer& data)
        : colour1_(data.GetVector(CHECKERBOARD_COLOR1)),
          colour2_(data.GetVector(CHECKERBOARD_COLOR2, {1.0f, 1.0f, 1.0f})),
          frequencyU_(data.GetReal(CHECKERBOARD_FREQUENCY_U, 1.0f)),
          frequencyV_(data.GetReal(CHECKERBOARD_FREQUENCY_V, 1.0f)) {}

    Vector sample(const ChannelData& channel) const override {
        const float field = std::floor(channel.p.x * frequencyU_) + std::floor(channel.p.y * frequencyV_);
        return std::fmod(field, 2.0f) == 0.0f ? colour1_ : colour2_;
    }

private:
    Vector colour1_;
    Vector colour2_;
    float frequencyU_;
    float frequencyV_;
};

} // namespace

std::unique_ptr<HostShader> makeCheckerboard(ShaderSource& source) {
    return std::make_unique<CheckerboardShader>(source.data());
}

} // namespace headless
