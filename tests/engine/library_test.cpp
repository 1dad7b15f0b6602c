// SPDX-License-Identifier: MIT
#include "engine/picture_compare.h"
#include "engine/program_run.h"
#include "engine/render_threads.h"
#include "engine/run_time_library.h"
#include "engine/scene_builder.h"
#include "reading/scene_parser.h"
#include "scene/scene_node_tonemapping.h"
#include "support/temp_dir.h"

#include <atomic>
#include <gtest/gtest.h>
#include <random>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

using namespace Quenza;
using Texts = std::vector<std::string>;

constexpr const char* FULL = QUENZA_BIN_DIR "/quenza_x64/quenza_sdk.dll";
constexpr const char* REALTIME = QUENZA_BIN_DIR "/quenza_rt_x64/quenza_rt_sdk.dll";

class Library : public ::testing::Test {
protected:
    Library() { library.init(&folder); }
    ~Library() override { library.shutdown(); }

    const String folder{"/nowhere"};
    RunTimeLibrary library{FULL};
};

/// A dark room with a lamp to the left, on the first layer, and one to the right, on the second.
struct TwoLamps : SceneBuilder {
    TwoLamps() : SceneBuilder(24, 16) {
        settings->ensureLayers(2);
        addSphere({-1, 4, 0}, 0.7, emitter(1, 0));
        addSphere({1, 4, 0}, 0.7, emitter(1, 1));
        Ref<SceneNodeTonemapping> linear = new SceneNodeTonemapping;
        linear->tonemap_type = SceneNodeTonemapping::LINEAR;
        root->addChild(linear);
        buffer = new RenderBuffer(*root);
    }
    Ref<RenderBuffer> buffer;
};

double leftOf(const engine::FloatImage& image) {
    return meanLuminance(image, 0, 0, 12, 16);
}
double rightOf(const engine::FloatImage& image) {
    return meanLuminance(image, 12, 0, 24, 16);
}

TEST(LibraryBoundary, CreatesWhatItKnowsBetweenInitAndShutdown) {
    for (const char* const path : {FULL, REALTIME, FULL}) {
        const RunTimeLibrary library(path);
        const String folder("/nowhere");
        SDK::InterfaceBase* none = nullptr;
        EXPECT_NE(library.create(SDK::RENDERER_INTERFACE, none), 0);
        library.init(&folder);
        for (const char* const name :
             {SDK::RENDERER_INTERFACE, SDK::TONE_MAPPER_INTERFACE, SDK::HARDWARE_INFO_INTERFACE}) {
            SDK::InterfaceBase* made = nullptr;
            ASSERT_EQ(library.create(name, made), 0) << name;
            const LibraryObject object(made);
            SDK::Operation<void(i32)>{0}(made, 5); // says that there is no such operation
        }
        for (const char* const name : {"", "QuenzaInterface2", "quenzainterface"}) {
            EXPECT_NE(library.create(name, none), 0) << name;
        }
        EXPECT_EQ(none, nullptr);
        library.shutdown();
    }
}

TEST(LibraryBoundary, StaysInMemoryForTheThreadsThatItsHelpersLeave) {
    {
        const RunTimeLibrary library(FULL);
        library.init(nullptr);
        library.shutdown();
    }
#ifdef _WIN32
    EXPECT_NE(GetModuleHandleA("quenza_sdk.dll"), nullptr);
#else
    void* const kept = dlopen(FULL, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(kept, nullptr);
    dlclose(kept);
#endif
}

TEST_F(Library, ListsTheProcessorAsTheOnlyDevice) {
    SDK::InterfaceBase* made = nullptr;
    ASSERT_EQ(library.create(SDK::HARDWARE_INFO_INTERFACE, made), 0);
    const LibraryObject info(made);
    SDK::GPUInfoList* list = nullptr;
    ASSERT_EQ(SDK::HardwareInfoInterface::getGPUInfo(made, list), 0);
    const LibraryObject held(list);
    ASSERT_EQ(list->devices.size(), 1u);
    EXPECT_NE(list->devices[0].name.toStdString().find(" CPU thread"), std::string::npos);
}

TEST(LibraryPicture, IsThatOfTheProgram) {
    const TempDir temp;
    SceneBuilder builder(24, 16);
    builder.settings->ensureLayers(2);
    builder.setUniformBackground(1);
    builder.addSphere({-0.6, 4, 0}, 1, builder.diffuse(0.5));
    builder.addSphere({1.2, 3, 0.5}, 0.3, builder.emitter(5, 1));
    builder.addModel(rectangle({3, 0, 0}, {0, 3, 0}), builder.diffuse(0.2), {0, 4, -1});
    const String scene = temp / "scene.qzs";
    builder.root->writeToXMLFile(scene, false, nullptr);
    const std::string png = (temp / "scene.png").toStdString();
    ProgramRun program({"-seed", "5", "--settings", "<halt_samples_per_pixel>100</halt_samples_per_pixel>",
                        "-o", png, scene.toStdString()});
    ASSERT_EQ(program.exitCode(), 0) << program.text();
    std::string fault;
    const auto expected = engine::loadImage(png, fault);
    ASSERT_TRUE(expected) << fault;

    for (const char* const path : {FULL, REALTIME}) {
        const RunTimeLibrary library(path);
        library.init(nullptr);
        // As an exporter leaves it: references are numbers, meshes files.
        Ref<SceneNodeRoot> root;
        QuenzaModelParser().parseScene(root, scene, {}, "");
        const Ref<RenderBuffer> buffer = new RenderBuffer(*root);
        {
            const TestRenderer renderer(library);
            ASSERT_EQ(renderer.open(root, buffer, {scene, "-seed", "5"}), 0) << renderer.messages().front();
            const TestToneMapper tone_mapper(library, buffer);
            renderer.call(RenderCall::startRendering);
            ASSERT_TRUE(renderer.renderTo(100));
            renderer.call(RenderCall::stop);
            EXPECT_EQ(comparePictures(tone_mapper.run(*root), *expected), "") << path;
            const bool lamp_apart = buffer->layers[1].pixelComponent(21, 4, 1) > 0;
            EXPECT_EQ(lamp_apart, path == FULL);
            EXPECT_GT(tone_mapper.floats->pixel(0, 0)[1], 0.0f);
        }
        library.shutdown();
    }
}

TEST_F(Library, PausesAndGoesOnInAnyOrder) {
    TwoLamps scene;
    const TestRenderer renderer(library);
    EXPECT_EQ(renderer.samples(), 0);
    renderer.call(RenderCall::pause);
    ASSERT_EQ(renderer.open(scene.root, scene.buffer), 0);
    const TestToneMapper tone_mapper(library, scene.buffer);
    renderer.call(RenderCall::startRendering);
    ASSERT_TRUE(renderer.renderTo(1));
    for (int round = 0; round < 3; ++round) {
        renderer.call(RenderCall::pause);
        renderer.call(RenderCall::pause);
        const double samples = renderer.samples();
        const double seconds = renderer.call(RenderCall::getElapsedTime);
        const engine::FloatImage shown = tone_mapper.run(*scene.root);
        EXPECT_GT(leftOf(shown), 0.05);
        EXPECT_EQ(tone_mapper.run(*scene.root).rgb, shown.rgb);
        EXPECT_EQ(renderer.samples(), samples);
        EXPECT_EQ(renderer.call(RenderCall::getElapsedTime), seconds);
        renderer.call(RenderCall::startRendering);
        EXPECT_EQ(renderer.samples(), samples) << "a pause outlasts a start";
        renderer.call(RenderCall::resume);
        renderer.call(RenderCall::resume);
        ASSERT_TRUE(renderer.renderTo(samples + 2));
        EXPECT_GT(renderer.call(RenderCall::getElapsedTime), seconds);
    }
    renderer.call(RenderCall::stop);
    const double samples = renderer.samples();
    renderer.call(RenderCall::stop);
    renderer.call(RenderCall::resume);
    renderer.call(RenderCall::startRendering);
    tone_mapper.run(*scene.root);
    EXPECT_EQ(renderer.samples(), samples) << "a stop is the end";
    EXPECT_EQ(renderer.messages(), Texts{});
}

TEST(LibraryOfTheRealtimeEdition, KnowsNoLayersAndNoNetwork) {
    const RunTimeLibrary library(REALTIME);
    library.init(nullptr);
    {
        TwoLamps scene;
        scene.settings->getLayer(0)->gain = 0;
        const TestRenderer renderer(library);
        ASSERT_EQ(renderer.open(scene.root, scene.buffer, {"a.qzs", "-seed", "-3", "-n", "wm"}), 0);
        EXPECT_EQ(renderer.messages(),
                  (Texts{"0 The argument '-n' is not known.", "0 Light layers are not kept apart."}));
        const TestToneMapper tone_mapper(library, scene.buffer);
        renderer.call(RenderCall::startRendering);
        ASSERT_TRUE(renderer.renderTo(4));
        const engine::FloatImage image = tone_mapper.run(*scene.root);
        EXPECT_GT(leftOf(image), 0.05);
        EXPECT_GT(rightOf(image), 0.05);
    }
    library.shutdown();
}

TEST_F(Library, TellsWhatItsArgumentsDontMean) {
    const struct {
        Vector<String> arguments;
        Texts messages;
    } cases[] = {
        {{}, {}},
        {{"Dummy_scene_path"}, {}},
        {{"a.qzs", "-n", "wm"}, {"0 Rendering over a network is not known; this machine renders alone."}},
        {{"a.qzs", "-seed", "x"}, {"0 The seed 'x' is no number; it is 1 instead."}},
        {{"-seed"}, {"0 The seed '' is no number; it is 1 instead."}},
        {{"a.qzs", "-o", "b.png", "c", "-seed", "7"},
         {"0 The argument '-o' is not known.", "0 The argument 'c' is not known."}},
    };
    for (const auto& test : cases) {
        TwoLamps scene;
        const TestRenderer renderer(library);
        EXPECT_EQ(renderer.open(scene.root, scene.buffer, test.arguments), 0);
        EXPECT_EQ(renderer.messages(), test.messages);
    }
}

TEST_F(Library, RefusesScenesWithAnErrorAndStaysUsable) {
    TwoLamps good;
    TwoLamps blind;
    blind.root->removeChild(blind.camera);
    TwoLamps broken;
    const Ref<SceneNodeModel> lost = new SceneNodeModel;
    lost->setName("lost");
    lost->geometry_uid = SceneNodeUID(77);
    broken.root->addChild(lost);
    const Ref<RenderBuffer> small = new RenderBuffer(8, 8, 1);
    const struct {
        Ref<SceneNodeRoot> root;
        Ref<RenderBuffer> buffer;
        std::string error;
    } cases[] = {
        {blind.root, blind.buffer, "1 The scene has no camera."},
        {broken.root, broken.buffer,
         "1 While processing node 'lost', UID " + lost->getUID().toString().toStdString() +
             ":  Failed to find geometry for UID 77"},
        {good.root, small, "1 The buffer of 8 x 8 pixels doesn't fit the image of 24 x 16."},
        {nullptr, good.buffer, "1 There is no scene, or no buffer for its image."},
        {good.root, nullptr, "1 There is no scene, or no buffer for its image."},
    };
    const TestRenderer renderer(library);
    for (const auto& test : cases) {
        EXPECT_NE(renderer.open(test.root, test.buffer), 0);
        EXPECT_EQ(renderer.messages(), Texts{test.error});
        renderer.call(RenderCall::startRendering);
        renderer.call(RenderCall::stop);
        EXPECT_EQ(renderer.samples(), 0);
    }
    EXPECT_NE(renderer.call(RenderCall::updateScene, good.root), 0);
    EXPECT_EQ(renderer.messages(), Texts{"1 Only the scene that the renderer was given can be updated."});
    ASSERT_EQ(renderer.open(good.root, good.buffer), 0);
    EXPECT_NE(renderer.open(good.root, good.buffer), 0);
    EXPECT_EQ(renderer.messages(), Texts{"1 The renderer has a scene already."});
    renderer.call(RenderCall::startRendering);
    EXPECT_TRUE(renderer.renderTo(1));
}

TEST_F(Library, ToneMapperTellsWhatItLacks) {
    TwoLamps scene;
    const TestToneMapper tone_mapper(library, scene.buffer);
    SDK::InterfaceBase* const object = tone_mapper.object.get();
    EXPECT_TRUE(ToneCall::isFinished(object));
    ToneCall::startTonemapping(object);
    ASSERT_TRUE(waitUntil([&] { return ToneCall::isFinished(object); }));
    EXPECT_EQ(tone_mapper.error(), "The tone mapper hasn't been set up.");
    EXPECT_NE(ToneCall::update(object, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(tone_mapper.error(), "Tone mapping needs the settings of the scene.");

    String error;
    const struct {
        float gamma;
        Ref<UInt8Buffer> bytes;
        const char* error;
    } cases[] = {
        {0.0f, tone_mapper.bytes, "The gamma of the display is not above 0."},
        {2.2f, nullptr, "There is no image to tone map, or no buffer for what comes of it."},
    };
    for (const auto& test : cases) {
        EXPECT_NE(
            ToneCall::setUp(object, folder, folder, scene.buffer, test.gamma, test.bytes, nullptr, error), 0);
        EXPECT_EQ(error, test.error);
    }
    EXPECT_EQ(leftOf(tone_mapper.run(*scene.root)), 0) << "a buffer without a render is what it is";
}

TEST_F(Library, StartsAndStopsAtRandomMoments) {
    std::minstd_rand random(3);
    for (int round = 0; round < 50; ++round) {
        TwoLamps scene;
        const auto renderer = std::make_unique<TestRenderer>(library);
        ASSERT_EQ(renderer->open(scene.root, scene.buffer), 0);
        auto tone_mapper = std::make_unique<TestToneMapper>(library, scene.buffer);
        ASSERT_EQ(tone_mapper->update(*scene.root), 0);
        std::thread commands([&renderer, &scene, seed = random()] {
            std::minstd_rand choice(seed);
            for (int i = 0; i < 6; ++i) {
                switch (choice() % 4) {
                case 0:
                    renderer->call(RenderCall::pause);
                    break;
                case 1: {
                    const Lock lock(scene.root->getMutex());
                    scene.camera->flags = 1;
                }
                    renderer->call(RenderCall::updateScene, scene.root);
                    break;
                default:
                    renderer->call(RenderCall::resume);
                }
            }
        });
        renderer->call(RenderCall::startRendering);
        for (auto polls = random() % 200; polls > 0; --polls) {
            renderer->samples();
            renderer->call(RenderCall::getElapsedTime);
        }
        ToneCall::startTonemapping(tone_mapper->object.get());
        if (round % 2 == 0) {
            renderer->call(RenderCall::stop);
        }
        commands.join();
        EXPECT_EQ(renderer->messages(), Texts{});
        if (round % 3 == 0) {
            tone_mapper.reset();
        }
    }
}

TEST(RenderThreadsTest, OneThatFailsStopsTheOthersAndIsToldOnce) {
    std::atomic<int> number{0};
    std::atomic<int> told{0};
    engine::RenderThreads threads(
        3,
        [&number](const std::atomic<bool>& stop) {
            if (number++ == 1) {
                throw std::runtime_error("no more");
            }
            while (!stop) {
                std::this_thread::yield();
            }
        },
        [&told](const std::exception_ptr& failure) {
            ++told;
            EXPECT_THROW(std::rethrow_exception(failure), std::runtime_error);
        });
    EXPECT_TRUE(waitUntil([&] { return threads.waitFor(std::chrono::milliseconds(10)); }));
    EXPECT_EQ(told, 1);
}

} // namespace
