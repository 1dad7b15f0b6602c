// SPDX-License-Identifier: MIT
#include "headless/shaders/blend_mode.h"
#include "headless/shaders/host_shader.h"
#include "headless/shaders/shader_ids.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

/// From one colour to another.
class GradientShader : public HostShader {
public:
    explicit GradientShader(const BaseContainer& data)
        : colour1_(data.GetVector(GRADIENT_COLOR1)),
          colour2_(data.GetVector(GRADIENT_COLOR2, {1.0f, 1.0f, 1.0f})), type_(data.GetLong(GRADIENT_TYPE)),
          isCycle_(data.GetBool(GRADIENT_CYCLE)) {}

    Vector sample(const ChannelData& channel) const override {
        const float t = place(channel.p);
        return mix(colour1_, colour2_, isCycle_ ? t - std::floor(t) : std::clamp(t, 0.0f, 1.0f));
    }

private:
    float place(const Vector& p) const {
        switch (type_) {
        case GRADIENT_TYPE_V:
            return p.y;
        case GRADIENT_TYPE_CIRCULAR:
            return 2.0f * std::hypot(p.x - 0.5f, p.y - 0.5f);
        default:
            return p.x;
        }
    }

    Vector colour1_;
    Vector colour2_;
    int32_t type_;
    bool isCycle_;
};

} // namespace

std::unique_ptr<HostShader> makeGradient(ShaderSource& source) {
    return std::make_unique<GradientShader>(source.data());
}

} // namespace headless
