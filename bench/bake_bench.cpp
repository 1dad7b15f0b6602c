// SPDX-License-Identifier: MIT
// Baking of a noise of 1024 x 1024 pixels onto a plane, beside a plain loop over the same samples on as many
// threads. Then the same with samples between the pixels, and onto a mesh of 90,000 quads.

#include "headless/bake/bake.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/shaders/shader_ids.h"
#include "headless/shaders/shader_sampling.h"
#include "headless/tables/host_table.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <thread>
#include <vector>

namespace {

using namespace headless;

constexpr int32_t SIDE = 1024;

/// A document with a plane of `divisions` quads along each edge, and a noise on it.
struct Scene {
    explicit Scene(int32_t divisions) {
        SetHostTables(hostTable());
        Material& material = document.appendMaterial(createMaterial(Mmaterial));
        noise = &material.insertShader(createShader(Xnoise));
        material.data.SetLink(MATERIAL_COLOR_SHADER, toHost(static_cast<const Node*>(noise)));
        std::unique_ptr<Object> plane = createObject(Oplane);
        plane->data.SetLong(PRIM_PLANE_SUBW, divisions);
        plane->data.SetLong(PRIM_PLANE_SUBH, divisions);
        std::unique_ptr<Tag> tag = createTag(Ttexture);
        texture = static_cast<TextureTagNode*>(tag.get());
        texture->setMaterial(&material);
        plane->insertTag(std::move(tag), nullptr);
        document.appendObject(std::move(plane));
        settings.SetBool(BAKE_TEX_COLOR, true);
        settings.SetLong(BAKE_TEX_WIDTH, SIDE);
        settings.SetLong(BAKE_TEX_HEIGHT, SIDE);
    }

    Document document;
    Shader* noise = nullptr;
    TextureTagNode* texture = nullptr;
    BaseContainer settings;
};

void plainLoop(benchmark::State& state) {
    Scene scene(1);
    if (initRender(*scene.noise, {}) != INITRENDERRESULT_OK) {
        state.SkipWithError("the noise isn't ready");
        return;
    }
    for (auto _ : state) {
        Image image;
        image.init(SIDE, SIDE, 24);
        std::atomic<int32_t> nextRow{0};
        const auto work = [&] {
            for (int32_t y = nextRow++; y < SIDE; y = nextRow++) {
                ChannelData channel;
                for (int32_t x = 0; x < SIDE; ++x) {
                    channel.p = {(static_cast<float>(x) + 0.5f) / SIDE, (static_cast<float>(y) + 0.5f) / SIDE,
                                 0.0f};
                    image.setPixel(x, y, sample(*scene.noise, channel));
                }
            }
        };
        std::vector<std::jthread> threads;
        for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
            threads.emplace_back(work);
        }
        threads.clear();
        benchmark::DoNotOptimize(image.bytes());
    }
    freeRender(*scene.noise);
}

/// Ranges: quads along an edge, samples between pixels, pixel border.
void bake(benchmark::State& state) {
    Scene scene(static_cast<int32_t>(state.range(0)));
    scene.settings.SetLong(BAKE_TEX_SUPERSAMPLING, static_cast<int32_t>(state.range(1)));
    scene.settings.SetLong(BAKE_TEX_PIXELBORDER, static_cast<int32_t>(state.range(2)));
    for (auto _ : state) {
        int32_t error = 0;
        const auto document = makeBakeDocument(scene.document, scene.texture, nullptr, error);
        Image image;
        if (!document || bakeTexture(*document, scene.settings, image, {}) != BAKE_TEX_ERR_NONE) {
            state.SkipWithError("the bake failed");
            return;
        }
        benchmark::DoNotOptimize(image.bytes());
    }
}

BENCHMARK(plainLoop)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bake)
    ->Args({1, 0, 0})
    ->Args({20, 0, 5})
    ->Args({300, 0, 5})
    ->Args({20, 1, 5})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace
