// SPDX-License-Identifier: MIT
#include "headless/shaders/blend_mode.h"
#include "headless/shaders/host_shader.h"
#include "headless/shaders/shader_ids.h"

#include <algorithm>

namespace headless {

namespace {

/// Shaders over each other, on black.
class LayerShader : public HostShader {
public:
    explicit LayerShader(ShaderSource& source) {
        for (int32_t i = 0; i < LAYER_COUNT; ++i) {
            const int32_t offset = i * LAYER_STEP;
            if (const ShaderInput input = source.input(LAYER_1_SHADER + offset)) {
                layers_.push_back(
                    {input, source.data().GetLong(LAYER_1_MODE + offset),
                     std::clamp(source.data().GetReal(LAYER_1_STRENGTH + offset, 1.0f), 0.0f, 1.0f)});
            }
        }
    }

    Vector sample(const ChannelData& channel) const override {
        Vector colour;
        for (const ShaderLayer& layer : layers_) {
            colour = blend(layer.mode, colour, layer.shader.sample(channel), layer.strength);
        }
        return colour;
    }

private:
    struct ShaderLayer {
        ShaderInput shader;
        int32_t mode;
        float strength;
    };
    std::vector<ShaderLayer> layers_;
};

} // namespace

std::unique_ptr<HostShader> makeLayerStack(ShaderSource& source) {
    return std::make_unique<LayerShader>(source);
}

} // namespace headless
