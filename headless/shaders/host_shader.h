// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/material.h"
#include "host/shading.h"

#include <memory>
#include <vector>

namespace headless {

/// A shader of the host's own, made ready for sampling.
class HostShader {
public:
    HostShader() = default;
    HostShader(const HostShader&) = delete;
    HostShader& operator=(const HostShader&) = delete;
    virtual ~HostShader() = default;

    /// Any thread.
    virtual Vector sample(const ChannelData& channel) const = 0;
};

/// A shader that another links; nothing when the link is empty or the shader can't be sampled.
class ShaderInput {
public:
    ShaderInput() = default;
    explicit ShaderInput(Shader& shader) : shader_(&shader) {}

    explicit operator bool() const { return shader_ != nullptr; }
    Vector sample(const ChannelData& channel, const Vector& preset = Vector()) const;

private:
    Shader* shader_ = nullptr;
};

/// What a shader is made ready from.
class ShaderSource {
public:
    /// `inputs` gets a link to each shader that was made ready, and so needs a freeRender.
    ShaderSource(Shader& owner, const InitRenderStruct& init, std::vector<BaseLink>& inputs)
        : owner_(owner), init_(init), inputs_(inputs) {}

    const BaseContainer& data() const { return owner_.data; }
    const InitRenderStruct& init() const { return init_; }
    const Shader& owner() const { return owner_; }
    /// Makes the shader ready that is linked at `id`.
    ShaderInput input(int32_t id);

private:
    Shader& owner_;
    const InitRenderStruct& init_;
    std::vector<BaseLink>& inputs_;
};

// One for each type.
std::unique_ptr<HostShader> makeBitmap(ShaderSource& source);
std::unique_ptr<HostShader> makeNoise(ShaderSource& source);
std::unique_ptr<HostShader> makeGradient(ShaderSource& source);
std::unique_ptr<HostShader> makeCheckerboard(ShaderSource& source);
std::unique_ptr<HostShader> makeFusion(ShaderSource& source);
std::unique_ptr<HostShader> makeLayerStack(ShaderSource& source);
std::unique_ptr<HostShader> makeColorizer(ShaderSource& source);

/// Null for a type that isn't the host's.
std::unique_ptr<HostShader> makeHostShader(ShaderSource& source);

} // namespace headless
