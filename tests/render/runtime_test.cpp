// SPDX-License-Identifier: MIT
#include "foundation/platform.h"
#include "render/runtime/hardware_info.h"
#include "render/runtime/quenza_context.h"
#include "render/runtime/renderer.h"
#include "render/runtime/tone_mapper.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_tonemapping.h"
#include "support/capturing_library.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Quenza::QuenzaException;
using Quenza::Ref;
using Quenza::SceneNodeRenderSettings;
using Quenza::SceneNodeRoot;
using Quenza::SceneNodeTonemapping;
using Quenza::String;
using Quenza::thrownMessage;
using Texts = std::vector<std::string>;

constexpr auto LIMIT = std::chrono::seconds(60);

template <class Condition>
bool waitUntil(const Condition& condition) {
    const auto end = std::chrono::steady_clock::now() + LIMIT;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::yield();
    }
    return true;
}

void link(const char* builtFolder, const String& to) {
    Quenza::link(fs::path(QUENZA_BIN_DIR) / builtFolder / "quenza_sdk.dll", to.toStdString());
}

TEST(LoadLibrary, TellsWhatIsWrongWithTheFolder) {
    struct Case {
        const char* name;
        int32_t code;
        std::string text;
    };
    const Quenza::TempDir dir;
    const auto path = [&](const char* name) { return (dir / name).toStdString(); };
    for (const char* const folder : {"empty", "broken", "half", "broken_and_whole", "folder"}) {
        fs::create_directory(path(folder));
    }
    Quenza::writeBytes(dir / "broken/quenza_sdk.dll", "MZ");
    Quenza::writeBytes(dir / "broken_and_whole/quenza_sdk.dll", "");
    link("capturing_x64", dir / "broken_and_whole/quenza_rt_sdk.dll");
    link("half_x64", dir / "half/quenza_sdk.dll");
    fs::create_directory(path("folder/quenza_sdk.dll"));
    Quenza::writeBytes(dir / "file", "");

    const auto notFound = [&](const char* name, int code) {
        return "Failed to load DLL from '" + path(name) + "' (Error code: " + std::to_string(code) + ")";
    };
#ifdef _WIN32 // with the system's words, which may leave a place for the file's name
    const auto wordsOf = [&](int code, const char* name) {
        std::string text = Quenza::PlatformUtils::errorText(code).toStdString();
        const size_t place = text.find("%1");
        return place == std::string::npos ? text : text.replace(place, 2, path(name) + "/quenza_sdk.dll");
    };
    const std::string broken = wordsOf(193, "broken"); // a bad format
    const std::string brokenAndWhole = wordsOf(193, "broken_and_whole");
    const std::string folder = wordsOf(5, "folder"); // no access
    constexpr int NO_SUCH_FOLDER = 3;
    constexpr int NO_FOLDER = 3;
#else
    const std::string broken = path("broken") + "/quenza_sdk.dll: file too short";
    const std::string brokenAndWhole = path("broken_and_whole") + "/quenza_sdk.dll: file too short";
    const std::string folder = path("folder") + "/quenza_sdk.dll: cannot read file data: Is a directory";
    constexpr int NO_SUCH_FOLDER = 2;
    constexpr int NO_FOLDER = 20;
#endif
    const Case cases[] = {
        {"nowhere", 20, notFound("nowhere", NO_SUCH_FOLDER)},
        {"empty", 20, notFound("empty", 2)},
        {"file", 20, notFound("file", NO_FOLDER)},
        {"broken", 22, broken},
        {"broken_and_whole", 22, brokenAndWhole},
        {"folder", 22, folder},
        {"half", 22, "unable to get address of procedure 'quenzaGlobalLibraryInit'"},
    };
    const capture::CapturingLibrary half(path("half") + "/quenza_sdk.dll");
    for (const Case& wrong : cases) {
        const Ref<QuenzaContext> context = new QuenzaContext;
        String text = "left over";
        EXPECT_EQ(loadLibrary(*context, dir / wrong.name, "data", text), wrong.code) << wrong.name;
        EXPECT_EQ(text.toStdString(), wrong.text) << wrong.name;
        EXPECT_FALSE(context->isLoaded()) << wrong.name;
        EXPECT_EQ(context->globalLibraryShutdown, nullptr) << wrong.name;
        EXPECT_EQ(context->dllDirectory, dir / wrong.name);
        EXPECT_EQ(context->appdataDirectory, "data");
        EXPECT_EQ(thrownMessage<QuenzaException>([&] { const Renderer renderer(context); }),
                  "Failed to create Instance of 'QuenzaInterface'");
    }
    EXPECT_EQ(half->actions(), Texts{}) << "what isn't whole is neither set up nor shut down";
}

TEST(LoadLibrary, TakesTheRealtimeEditionWhereTheFullOneIsMissing) {
    const Quenza::TempDir dir;
    link("capturing_x64", dir / "quenza_rt_sdk.dll");
    String text;
    EXPECT_EQ(loadLibrary(*Ref<QuenzaContext>(new QuenzaContext), dir.path(), "", text), LOADLIBRARY_OK);
    EXPECT_EQ(text, "");
    EXPECT_FALSE(hasFullRenderer(dir.path()));
    Quenza::writeBytes(dir / "quenza_sdk.dll", "");
    EXPECT_TRUE(hasFullRenderer(dir.path()));
}

/// The wrapping classes on the capturing library, with a scene of two layers and 4 by 2 pixels.
class Runtime : public ::testing::Test {
protected:
    Runtime() {
        String error;
        EXPECT_EQ(loadLibrary(*context, folder(), "some/Quenza Renderer", error), LOADLIBRARY_OK);
        settings->setInt("width", 4);
        settings->setInt("height", 2);
        settings->ensureLayers(2);
        root->addChild(settings);
        root->addChild(tonemapping);
        buffer = new Quenza::RenderBuffer(*root);
    }
    ~Runtime() override {
        context = nullptr;
        EXPECT_EQ(library->liveObjects(), 0);
        EXPECT_EQ(library->liveThreads(), 0);
        if (!expectsViolations) {
            EXPECT_EQ(library->violations(), Texts{});
        }
    }

    static String folder() { return capture::CapturingLibrary::folder().string(); }

    Ref<Renderer> startRenderer() {
        const Ref<Renderer> renderer = new Renderer(context);
        EXPECT_EQ(renderer->initialiseWithScene(root, buffer, {}), 0);
        renderer->startRendering();
        return renderer;
    }
    Ref<ToneMapper> makeToneMapper() {
        return new ToneMapper(context, buffer, 2.2f, bytes, new Quenza::FloatBuffer);
    }
    void change(double scale) {
        const Quenza::Lock lock(root->getMutex());
        tonemapping->scale = scale;
        tonemapping->setFlags(1);
        tonemapping->markChanged();
    }
    std::string firstPixel(const ToneMapper& mapper) {
        return mapper.withImage([](const Quenza::UInt8Buffer& image) {
            const unsigned char* const pixel = image.row(0);
            return std::to_string(pixel[0]) + " " + std::to_string(pixel[1]) + " " + std::to_string(pixel[2]);
        });
    }

    capture::CapturingLibrary library;
    bool expectsViolations = false;
    Ref<QuenzaContext> context = new QuenzaContext;
    Ref<SceneNodeRoot> root = new SceneNodeRoot;
    Ref<SceneNodeRenderSettings> settings = new SceneNodeRenderSettings;
    Ref<SceneNodeTonemapping> tonemapping = new SceneNodeTonemapping;
    Ref<Quenza::RenderBuffer> buffer;
    Ref<Quenza::UInt8Buffer> bytes = new Quenza::UInt8Buffer;
};

TEST_F(Runtime, CallsTheLibraryInOrderAndLetsGoOfItLast) {
    Ref<Renderer> renderer = new Renderer(context);
    Ref<ToneMapper> mapper = makeToneMapper();
    EXPECT_TRUE(mapper->update(*root));
    EXPECT_EQ(renderer->getElapsedTime(), 0);
    EXPECT_EQ(renderer->initialiseWithScene(root, buffer, {"scene.qzs", "-seed", "7"}), 0);
    renderer->startRendering();
    library->setProgress(3.5, 12.25);
    EXPECT_EQ(renderer->getElapsedTime(), 3.5);
    EXPECT_EQ(renderer->getSamplesPerPixel(), 12.25);
    std::thread([&] {
        renderer->pause();
        renderer->resume();
    }).join();
    EXPECT_EQ(renderer->updateScene(root), 0);
    mapper->start();
    EXPECT_TRUE(waitUntil([&] { return mapper->isFinished(); }));
    renderer->stop();
    EXPECT_EQ(library->liveThreads(), 0);

    // The objects hold the library.
    context = nullptr;
    mapper = nullptr;
    EXPECT_EQ(library->count("quenzaGlobalLibraryShutdown"), 0u);
    renderer = nullptr;
    EXPECT_EQ(
        library->actions(),
        (Texts{"quenzaGlobalLibraryInit", "quenzaCreateInstance:QuenzaInterface",
               "QuenzaInterface.initialise", "quenzaCreateInstance:ToneMapperDLLAPI",
               "ToneMapperDLLAPI.setUp", "ToneMapperDLLAPI.update", "QuenzaInterface.initialiseWithScene",
               "QuenzaInterface.startRendering", "QuenzaInterface.pause", "QuenzaInterface.resume",
               "QuenzaInterface.updateScene", "ToneMapperDLLAPI.startTonemapping", "QuenzaInterface.stop",
               "ToneMapperDLLAPI.destroy", "QuenzaInterface.destroy", "quenzaGlobalLibraryShutdown"}));
    EXPECT_EQ(library->arguments(), (Texts{"scene.qzs", "-seed", "7"}));
    ASSERT_EQ(library->setUps().size(), 1u);
    const capture::SetUp setUp = library->setUps().front();
    EXPECT_EQ(setUp.gamma, 2.2f);
    EXPECT_EQ(setUp.numLayers, 2u);
    EXPECT_EQ(setUp.dllDirectory, folder().toStdString());
    EXPECT_EQ(setUp.appdataDirectory, "some/Quenza Renderer");
}

TEST_F(Runtime, ThrowsWhatTheLibraryRefuses) {
    const auto renderer = [&] {
        return thrownMessage<QuenzaException>([&] { const Renderer made(context); });
    };
    const auto mapper = [&] { return thrownMessage<QuenzaException>([&] { makeToneMapper(); }); };
    library->fail("QuenzaInterface.initialise", 5);
    EXPECT_EQ(renderer(), "Failed to initialise 'QuenzaInterface'");
    library->fail("quenzaCreateInstance:QuenzaInterface", 1);
    EXPECT_EQ(renderer(), "Failed to create Instance of 'QuenzaInterface'");
    library->fail("ToneMapperDLLAPI.setUp", -1);
    EXPECT_EQ(mapper(), "Failed to initialise 'ToneMapperDLLAPI'");
    library->fail("ToneMapperDLLAPI.setUp", -1, "Too many layers.");
    EXPECT_EQ(mapper(), "Too many layers.");
    library->fail("quenzaCreateInstance:ToneMapperDLLAPI", 1);
    EXPECT_EQ(mapper(), "Failed to create Instance of 'ToneMapperDLLAPI'");
    library->fail("HardwareInfoDLLAPI.getGPUInfo", 1);
    EXPECT_FALSE(HardwareInfo(context).getGPUInfo());
    library->fail("quenzaCreateInstance:HardwareInfoDLLAPI", 1);
    EXPECT_EQ(thrownMessage<QuenzaException>([&] { const HardwareInfo info(context); }),
              "Failed to create Instance of 'HardwareInfoDLLAPI'");
    EXPECT_FALSE(context->makeInstance("NoSuchInterface"));
}

TEST_F(Runtime, ListsDevicesUntilTheListIsLetGo) {
    LibraryRef<Quenza::SDK::GPUInfoList> kept;
    {
        const auto list = HardwareInfo(context).getGPUInfo();
        kept = list;
    }
    ASSERT_TRUE(kept);
    ASSERT_EQ(kept->devices.size(), 2u);
    EXPECT_EQ(kept->devices[0].name, "Capture CUDA");
    EXPECT_EQ(kept->devices[0].kind, 1);
    EXPECT_EQ(kept->devices[1].name, "Capture OpenCL");
    EXPECT_EQ(kept->devices[1].kind, 0);
    EXPECT_EQ(library->liveObjects(), 1);
}

TEST_F(Runtime, GivesWhatWasLoggedInOrderAndOnce) {
    const Ref<Renderer> renderer = new Renderer(context);
    const auto lines = [&] {
        Quenza::Vector<LogMessage> list;
        list.push_back({7, "left over"});
        bool hadError = true;
        renderer->getLogMessages(list, hadError);
        Texts texts;
        for (const LogMessage& line : list) {
            texts.push_back(std::to_string(line.type) + " " + line.text.toStdString());
        }
        texts.push_back(hadError ? "error" : "fine");
        return texts;
    };
    EXPECT_EQ(lines(), Texts{"fine"});
    library->log(0, "Building.");
    library->log(2, "");
    EXPECT_EQ(lines(), (Texts{"0 Building.", "2 ", "fine"}));
    library->fail("QuenzaInterface.initialiseWithScene", 9, "The scene has no camera.");
    EXPECT_EQ(renderer->initialiseWithScene(root, buffer, {}), 9);
    library->log(0, "Closing.");
    EXPECT_EQ(lines(), (Texts{"1 The scene has no camera.", "0 Closing.", "error"}));
    EXPECT_EQ(lines(), Texts{"fine"});
}

TEST_F(Runtime, OutlivesTheDeathOfARenderThread) {
    const Ref<Renderer> renderer = startRenderer();
    library->dieInThread("Out of memory.");
    Quenza::Vector<LogMessage> list;
    bool hadError = false;
    EXPECT_TRUE(waitUntil([&] {
        renderer->getLogMessages(list, hadError);
        return hadError;
    }));
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].text, "Out of memory.");
    EXPECT_TRUE(waitUntil([&] { return library->liveThreads() == 0; }));
    renderer->stop();
}

TEST_F(Runtime, MapsTonesByTheStateOfTheLastUpdate) {
    const Ref<Renderer> renderer = startRenderer();
    const Ref<ToneMapper> mapper = makeToneMapper();
    const auto run = [&] {
        mapper->start();
        EXPECT_TRUE(waitUntil([&] { return mapper->isFinished(); }));
        EXPECT_EQ(mapper->getError(), "");
        return firstPixel(*mapper);
    };
    change(1);
    EXPECT_TRUE(mapper->update(*root));
    EXPECT_EQ(run(), "128 128 0");
    {
        const Quenza::Lock lock(root->getMutex());
        settings->layer_settings[0]->gain = 0;
        settings->markChanged();
    }
    change(0.5);
    EXPECT_EQ(run(), "128 128 0") << "without an update";
    EXPECT_TRUE(mapper->update(*root));
    EXPECT_EQ(run(), "0 64 0");

    library->holdToneMapping(true);
    mapper->start();
    mapper->start(); // nothing while a run is on
    EXPECT_FALSE(mapper->isFinished());
    change(1);
    EXPECT_TRUE(mapper->update(*root)) << "for the next run";
    library->holdToneMapping(false);
    EXPECT_TRUE(waitUntil([&] { return mapper->isFinished(); }));
    EXPECT_EQ(firstPixel(*mapper), "0 64 0");
    EXPECT_EQ(run(), "0 128 0");
    library->holdToneMapping(true);
    mapper->start(); // the mapper goes with its run
}

TEST_F(Runtime, TellsWhyToneMappingFailed) {
    const Ref<ToneMapper> mapper = makeToneMapper();
    library->fail("ToneMapperDLLAPI.update", 3);
    EXPECT_FALSE(mapper->update(*root));
    EXPECT_EQ(mapper->getError(), "Failed to update 'ToneMapperDLLAPI'");
    library->fail("ToneMapperDLLAPI.update", 3, "No such response function.");
    EXPECT_FALSE(mapper->update(*root));
    EXPECT_EQ(mapper->getError(), "No such response function.");
    EXPECT_FALSE(mapper->update(*Ref<SceneNodeRoot>(new SceneNodeRoot)));
    EXPECT_EQ(mapper->getError(), "No renderer settings node in scene.");
    library->fail("ToneMapperDLLAPI.update", 0);
    EXPECT_TRUE(mapper->update(*root));
    EXPECT_EQ(mapper->getError(), "");
    library->failToneMapping("The disk is full.");
    mapper->start();
    EXPECT_TRUE(waitUntil([&] { return mapper->isFinished(); }));
    EXPECT_EQ(mapper->getError(), "The disk is full.");
}

/// Other tests rest on this: the library sees what goes against its rules.
TEST_F(Runtime, TheCapturingLibrarySeesViolations) {
    expectsViolations = true;
    const auto saw = [&](const char* text) {
        const Texts seen = library->violations();
        return std::find(seen.begin(), seen.end(), text) != seen.end();
    };
    LibraryRef<> mapper = context->makeInstance("ToneMapperDLLAPI");
    Quenza::SDK::ToneMapperInterface::startTonemapping(mapper.get());
    EXPECT_TRUE(saw("a tone mapping run without a set-up"));
    Quenza::SDK::ToneMapperInterface::update(mapper.get(), nullptr, nullptr, settings.getPointer());
    EXPECT_TRUE(saw("ToneMapperDLLAPI.update without the root's mutex"));

    const Ref<Renderer> renderer = new Renderer(context);
    renderer->startRendering();
    EXPECT_TRUE(saw("a render without a scene"));
    EXPECT_EQ(renderer->initialiseWithScene(root, buffer, {}), 0);
    tonemapping->scale = 2;
    EXPECT_EQ(renderer->updateScene(root), 0);
    EXPECT_TRUE(saw("Tone Mapping changed without a new change stamp"));
    EXPECT_NE(renderer->initialiseWithScene(root, buffer, {}), 0);
    EXPECT_TRUE(saw("a second scene for one render"));
    EXPECT_EQ(library->violations().size(), 5u);
}

#ifndef __SANITIZE_THREAD__ // which itself sees the race
TEST_F(Runtime, TheCapturingLibrarySeesChangesWithoutTheMutex) {
    expectsViolations = true;
    const Ref<Renderer> renderer = startRenderer();
    EXPECT_TRUE(waitUntil([&] {
        tonemapping->scale += 1;
        tonemapping->markChanged();
        const Texts seen = library->violations();
        return std::find(seen.begin(), seen.end(),
                         "Tone Mapping changed while the library held the root's mutex") != seen.end();
    }));
    renderer->stop();
}
#endif

} // namespace
