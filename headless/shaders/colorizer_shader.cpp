// SPDX-License-Identifier: MIT
#include "headless/shaders/blend_mode.h"
#include "headless/shaders/host_shader.h"
#include "headless/shaders/shader_ids.h"

#include <algorithm>

namespace headless {

namespace {

/// Two colours for the dark and the bright of a shader.
class ColorizerShader : public HostShader {
public:
    explicit ColorizerShader(ShaderSource& source)
        : shader_(source.input(COLORIZER_SHADER)), input_(source.data().GetLong(COLORIZER_INPUT)),
          colour1_(source.data().GetVector(COLORIZER_COLOR1)),
          colour2_(source.data().GetVector(COLORIZER_COLOR2, {1.0f, 1.0f, 1.0f})) {}

    Vector sample(const ChannelData& channel) const override {
        return mix(colour1_, colour2_, std::clamp(value(shader_.sample(channel)), 0.0f, 1.0f));
    }

private:
    float value(const Vector& colour) const {
        switch (input_) {
        case COLORIZER_INPUT_RED:
            return colour.x;
        case COLORIZER_INPUT_GREEN:
            return colour.y;
        case COLORIZER_INPUT_BLUE:
            return colour.z;
        default:
            return brightness(colour);
        }
    }

    ShaderInput shader_;
    int32_t input_;
    Vector colour1_;
    Vector colour2_;
};

} // namespace

std::unique_ptr<HostShader> makeColorizer(ShaderSource& source) {
    return std::make_unique<ColorizerShader>(source);
}

} // namespace headless
