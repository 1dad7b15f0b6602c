// SPDX-License-Identifier: MIT
#include "headless/shaders/shader_sampling.h"

#include "headless/model/handles.h"
#include "headless/shaders/host_shader.h"
#include "headless/shaders/shader_ids.h"
#include "host/plugin_data.h"

#include <mutex>

namespace headless {

namespace {

/// Shaders are made ready one at a time: two threads may want the same.
std::recursive_mutex& readying() {
    static std::recursive_mutex mutex;
    return mutex;
}

/// Cost of what was made ready below the shader that is being made ready.
uint64_t costBelow = 0;
int depth = 0;

class Run : public ShaderRun {
public:
    explicit Run(Shader& shader) : shader_(shader) {}
    ~Run() override {
        for (const BaseLink& input : inputs_) {
            if (BaseList2D* const node = input.GetLink()) {
                freeRender(static_cast<Shader&>(*fromHost(node)));
            }
        }
    }

    int32_t begin(const InitRenderStruct& init);
    void end();
    Vector sample(const ChannelData& channel) override;

    int uses = 1;
    uint64_t cost = 0;
    bool isReady = false;

private:
    ShaderData* plugin() const { return static_cast<ShaderData*>(shader_.pluginData()); }

    Shader& shader_;
    std::unique_ptr<HostShader> hostShader_;
    std::vector<BaseLink> inputs_;
};

int32_t Run::begin(const InitRenderStruct& init) {
    if (plugin()) {
        return plugin()->InitRender(toHost(&shader_), init);
    }
    ShaderSource source(shader_, init, inputs_);
    hostShader_ = makeHostShader(source);
    return hostShader_ ? INITRENDERRESULT_OK : INITRENDERRESULT_UNKNOWNERROR;
}

void Run::end() {
    if (plugin()) {
        plugin()->FreeRender(toHost(&shader_));
    }
}

/// The shaders that this thread samples at the moment, the innermost first.
struct Frame {
    const Run* run;
    const Frame* outer;
};
thread_local const Frame* innermost = nullptr;

Vector Run::sample(const ChannelData& channel) {
    if (hostShader_) {
        return hostShader_->sample(channel);
    }
    // Links between shaders of the host can't lead round, those of a plug-in can.
    for (const Frame* frame = innermost; frame; frame = frame->outer) {
        if (frame->run == this) {
            return {};
        }
    }
    const Frame frame{this, innermost};
    innermost = &frame;
    Vector value;
    try {
        value = plugin()->Output(toHost(&shader_), channel);
    } catch (...) {
        innermost = frame.outer;
        throw;
    }
    innermost = frame.outer;
    return value;
}

int32_t makeReady(Shader& shader, const InitRenderStruct& init) {
    auto made = std::make_unique<Run>(shader);
    Run& run = *made;
    shader.run = std::move(made);
    const uint64_t outside = costBelow;
    costBelow = 1;
    ++depth;
    int32_t result = INITRENDERRESULT_UNKNOWNERROR;
    try {
        result = run.begin(init);
    } catch (const std::bad_alloc&) {
        result = INITRENDERRESULT_OUTOFMEMORY;
    } catch (const std::exception&) {
        result = INITRENDERRESULT_UNKNOWNERROR;
    }
    --depth;
    run.cost = costBelow;
    costBelow = outside;
    if (result == INITRENDERRESULT_OK && run.cost > MAX_SHADER_COST) {
        run.end();
        result = INITRENDERRESULT_UNKNOWNERROR;
    }
    if (result != INITRENDERRESULT_OK) {
        shader.run.reset();
        return result;
    }
    run.isReady = true;
    costBelow += run.cost;
    return result;
}

} // namespace

int32_t initRender(Shader& shader, const InitRenderStruct& init) {
    const std::lock_guard lock(readying());
    if (auto* const run = static_cast<Run*>(shader.run.get())) {
        if (!run->isReady) {
            return INITRENDERRESULT_UNKNOWNERROR;
        }
        ++run->uses;
        costBelow += run->cost;
        return INITRENDERRESULT_OK;
    }
    if (depth == MAX_SHADER_DEPTH) {
        return INITRENDERRESULT_UNKNOWNERROR;
    }
    return makeReady(shader, init);
}

void freeRender(Shader& shader) {
    const std::lock_guard lock(readying());
    auto* const run = static_cast<Run*>(shader.run.get());
    if (run && run->isReady && --run->uses == 0) {
        run->end();
        shader.run.reset();
    }
}

Vector sample(Shader& shader, const ChannelData& channel) {
    return shader.run ? shader.run->sample(channel) : Vector();
}

Vector ShaderInput::sample(const ChannelData& channel, const Vector& preset) const {
    return shader_ ? headless::sample(*shader_, channel) : preset;
}

ShaderInput ShaderSource::input(int32_t id) {
    BaseList2D* const node = owner_.data.GetLink(id, nullptr, Xbase);
    if (!node) {
        return {};
    }
    Shader& shader = static_cast<Shader&>(*fromHost(node));
    if (initRender(shader, init_) != INITRENDERRESULT_OK) {
        return {};
    }
    inputs_.emplace_back().SetLink(node);
    return ShaderInput(shader);
}

std::unique_ptr<HostShader> makeHostShader(ShaderSource& source) {
    switch (source.owner().type()) {
    case Xbitmap:
        return makeBitmap(source);
    case Xnoise:
        return makeNoise(source);
    case Xgradient:
        return makeGradient(source);
    case Xcheckerboard:
        return makeCheckerboard(source);
    case Xfusion:
        return makeFusion(source);
    case Xlayer:
        return makeLayerStack(source);
    case Xcolorizer:
        return makeColorizer(source);
    default:
        return nullptr;
    }
}

} // namespace headless
