// SPDX-License-Identifier: MIT
#include "headless/runtime/host.h"
#include "render/render_state.h"
#include "render/tonemapping_command.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_tonemapping.h"
#include "shared/plugin_state.h"
#include "support/built_files.h"
#include "support/temp_dir.h"
#include "support/user_profile.h"

#include <chrono>
#include <cstdlib>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <tuple>

namespace {

using Quenza::LayerSetting;
using Quenza::Ref;
using Quenza::SceneNodeRenderSettings;
using Quenza::SceneNodeRoot;
using Quenza::SceneNodeTonemapping;

constexpr int32_t METHOD = 6007;
constexpr int32_t REINHARD = 6008;
constexpr int32_t PRE_SCALE = 6009;
constexpr int32_t POST_SCALE = 6010;
constexpr int32_t BURN = 6011;
constexpr int32_t LINEAR = 6012;
constexpr int32_t SCALE = 6013;
constexpr int32_t CAMERA = 6014;
constexpr int32_t RESPONSE = 6015;
constexpr int32_t FILM_ISO = 6016;
constexpr int32_t EV_ADJUST = 6017;
constexpr int32_t WHITE_POINT = 6019;
constexpr int32_t WHITE_X = 6032;
constexpr int32_t WHITE_Y = 6033;
constexpr int32_t LAYER_COLOUR = 6660000;
constexpr int32_t LAYER_ENABLED = 7660000;
constexpr int32_t LAYER_NAME = 8660000;
constexpr int32_t LAYER_GROUP = 9660000;

/// The dialog of this process on a host that has the plug-in's resources, and a scene that counts as being
/// rendered.
class TonemappingDialogTest : public ::testing::Test {
protected:
    TonemappingDialogTest() {
        headless::HostOptions options;
        options.consoleSink = options.errorSink = options.statusSink = [](const std::string&) {};
        host_ = std::make_unique<headless::Host>(options);
        host_->loadPlugin(Quenza::PLUGIN_PATH);
        command_ = std::make_unique<TonemappingCommand>();
    }
    ~TonemappingDialogTest() override {
        command_.reset();
        host_.reset();
        clearRenderState();
        pluginState().isRTEdition = false;
    }

    /// A render begins, as its loop tells it.
    void startRender(std::initializer_list<const char*> layers) {
        const Ref<SceneNodeRoot> root = new SceneNodeRoot;
        settings_ = new SceneNodeRenderSettings;
        for (const char* const name : layers) {
            settings_->addLayer(new LayerSetting(name));
        }
        tonemapping_ = new SceneNodeTonemapping;
        root->addChild(settings_);
        root->addChild(tonemapping_);
        Quenza::Lock lock(renderStateMutex());
        renderState().activeRoot = root;
        renderState().tonemapDialogStale = 1;
    }
    void open() {
        ASSERT_TRUE(command_->Execute(nullptr));
        dialog_ = host_->dialogs().openDialogWith(METHOD);
        ASSERT_TRUE(dialog_);
    }
    bool enter(int32_t gadget, const GeData& value) { return host_->dialogs().enter(dialog_, gadget, value); }
    const headless::Gadget* find(int32_t gadget) const {
        return host_->dialogs().state(dialog_)->find(gadget);
    }
    float real(int32_t gadget) const { return find(gadget)->value.GetReal(); }
    int32_t number(int32_t gadget) const { return find(gadget)->value.GetLong(); }
    std::vector<std::string> shownLayers() const {
        std::vector<std::string> names;
        for (int32_t i = 0; const headless::Gadget* const label = find(LAYER_NAME + i); ++i) {
            names.push_back(label->text.GetUtf8());
        }
        return names;
    }
    std::vector<double> weight(Quenza::u64 layer) const {
        const Quenza::Vec3d& xyz = settings_->getLayer(layer)->xyz;
        return {xyz.x, xyz.y, xyz.z};
    }

    const Quenza::TempDir folder_;
    const Quenza::UserProfile profile_{folder_.path().toStdString()};
    std::unique_ptr<headless::Host> host_;
    std::unique_ptr<TonemappingCommand> command_;
    GeDialog* dialog_ = nullptr;
    Ref<SceneNodeRenderSettings> settings_;
    Ref<SceneNodeTonemapping> tonemapping_;
};

/// The library holds the scene for as long as it takes to build it.
TEST_F(TonemappingDialogTest, WorksWhileTheSceneIsBeingBuilt) {
    startRender({"Sun", "Lamp"});
    std::promise<void> held;
    std::promise<void> isBuilt;
    std::thread library([&] {
        Quenza::Lock lock(renderState().activeRoot->getMutex());
        held.set_value();
        EXPECT_EQ(isBuilt.get_future().wait_for(std::chrono::seconds(60)), std::future_status::ready);
    });
    held.get_future().wait();
    open();
    EXPECT_EQ(shownLayers(), (std::vector<std::string>{"Sun", "Lamp"}));
    const Quenza::String before = tonemapping_->toXMLString() + settings_->toXMLString();
    ASSERT_TRUE(enter(BURN, GeData(12.0f)));
    ASSERT_TRUE(enter(LAYER_ENABLED + 1, GeData(false)));
    EXPECT_EQ(tonemapping_->toXMLString() + settings_->toXMLString(), before);
    ASSERT_TRUE(host_->dialogs().requestClose(dialog_));
    open();
    EXPECT_EQ(real(BURN), 12.0f);
    EXPECT_FALSE(find(LAYER_ENABLED + 1)->value.GetBool());
    isBuilt.set_value();
    library.join();
    // What the render's loop does.
    Quenza::Lock lock(renderStateMutex());
    ASSERT_TRUE(writePendingTonemapping());
    EXPECT_EQ(tonemapping_->burn, 12.0);
    EXPECT_EQ(tonemapping_->flags, 1u);
    EXPECT_EQ(weight(0), (std::vector<double>{1, 1, 1}));
    EXPECT_EQ(weight(1), (std::vector<double>{0, 0, 0}));
}

TEST_F(TonemappingDialogTest, WritesTheValuesOfAllMethodsWithEachChange) {
    startRender({});
    open();
    const std::tuple<int32_t, double SceneNodeTonemapping::*, float> fields[] = {
        {PRE_SCALE, &SceneNodeTonemapping::pre_scale, 5.5f},
        {POST_SCALE, &SceneNodeTonemapping::post_scale, 0.25f},
        {BURN, &SceneNodeTonemapping::burn, 12.0f},
        {SCALE, &SceneNodeTonemapping::scale, 2.5f},
        {FILM_ISO, &SceneNodeTonemapping::film_iso, 800.0f},
        {EV_ADJUST, &SceneNodeTonemapping::ev_adjust, -1.5f},
    };
    for (const auto& [gadget, field, value] : fields) {
        ASSERT_TRUE(enter(gadget, GeData(value))) << gadget;
    }
    for (const auto& [choice, type] :
         {std::pair(LINEAR, SceneNodeTonemapping::LINEAR), std::pair(CAMERA, SceneNodeTonemapping::CAMERA),
          std::pair(REINHARD, SceneNodeTonemapping::REINHARD)}) {
        ASSERT_TRUE(enter(METHOD, GeData(choice)));
        EXPECT_EQ(tonemapping_->tonemap_type, Quenza::u32(type));
        for (const auto& [gadget, field, value] : fields) {
            EXPECT_EQ((*tonemapping_).*field, double(value)) << gadget;
        }
    }
    for (const auto& [index, path] : {std::pair(0, "data/camera_response_functions/Advantix-100CD.txt"),
                                      std::pair(57, "data/camera_response_functions/Portra-800CD.txt")}) {
        ASSERT_TRUE(enter(RESPONSE, GeData(int32_t{index})));
        EXPECT_EQ(tonemapping_->response_function_path, Quenza::String(path));
    }
    EXPECT_EQ(find(RESPONSE)->choices.size(), 58u);
}

TEST_F(TonemappingDialogTest, MarksBothNodesAsChanged) {
    startRender({});
    open();
    EXPECT_EQ(tonemapping_->flags | settings_->flags, 0u) << "opening changes nothing";
    for (int round = 0; round < 2; ++round) {
        const Quenza::u64 stamp = renderState().activeRoot->stamp;
        tonemapping_->setFlags(0);
        settings_->setFlags(0);
        ASSERT_TRUE(enter(BURN, GeData(8.0f)));
        EXPECT_EQ(tonemapping_->flags, 1u);
        EXPECT_EQ(settings_->flags, 1u);
        EXPECT_GT(tonemapping_->stamp, stamp);
        EXPECT_GT(settings_->stamp, stamp);
    }
}

/// A dialog that came up with values of its own would change the picture with the first touch.
TEST_F(TonemappingDialogTest, OpensWithWhatTheRenderShows) {
    startRender({"Key", "Fill"});
    tonemapping_->tonemap_type = SceneNodeTonemapping::CAMERA;
    tonemapping_->scale = 7.5;
    tonemapping_->pre_scale = 0.125;
    tonemapping_->post_scale = 3;
    tonemapping_->burn = 40;
    tonemapping_->film_iso = 1600;
    tonemapping_->ev_adjust = 2.5;
    settings_->setWhitePoint(new Quenza::WhitePoint(0.40625, 0.375));
    settings_->getLayer(0)->xyz = {0.5, 2, 1};
    settings_->getLayer(1)->xyz = {0, 0, 0};
    const Quenza::String before = tonemapping_->toXMLString() + settings_->toXMLString();
    open();
    EXPECT_EQ(number(WHITE_POINT), 0);
    ASSERT_TRUE(enter(EV_ADJUST, GeData(2.5f)));
    EXPECT_EQ(tonemapping_->toXMLString() + settings_->toXMLString(), before);
    EXPECT_EQ(tonemapping_->scale, 7.5);
    EXPECT_EQ(tonemapping_->pre_scale, 0.125);
    EXPECT_EQ(tonemapping_->post_scale, 3);
    EXPECT_EQ(tonemapping_->burn, 40);
}

TEST_F(TonemappingDialogTest, TakesWhitePointsFromTheListAndByHand) {
    startRender({});
    open();
    const std::tuple<int32_t, float, float> entries[] = {
        {6020, 0.33304f, 0.33304f}, {6021, 0.34546f, 0.35834f}, {6022, 0.33212f, 0.3473f},
        {6023, 0.31234f, 0.3289f},  {6024, 0.299f, 0.31464f},   {6025, 0.44712f, 0.4071f},
        {6026, 0.34822f, 0.35144f}, {6027, 0.31004f, 0.31602f}, {6028, 0.28474f, 0.29302f},
        {6029, 0.37168f, 0.3749f},  {6030, 0.3128f, 0.3289f},   {6031, 0.38042f, 0.37674f},
    };
    for (const auto& [entry, x, y] : entries) {
        ASSERT_TRUE(enter(WHITE_POINT, GeData(entry))) << entry;
        EXPECT_EQ(number(WHITE_POINT), entry);
        EXPECT_EQ(std::pair(real(WHITE_X), real(WHITE_Y)), std::pair(x, y)) << entry;
        EXPECT_EQ(settings_->white_point->x, double(x)) << entry;
        EXPECT_EQ(settings_->white_point->y, double(y)) << entry;
    }
    const std::tuple<int32_t, float, float> byHand[] = {
        {WHITE_X, 0.3f, 0.3f}, {WHITE_Y, 0.4f, 0.4f}, {WHITE_X, 0.1f, 0.24f}, {WHITE_Y, 0.9f, 0.46f}};
    for (const auto& [gadget, entered, taken] : byHand) {
        ASSERT_TRUE(enter(WHITE_POINT, GeData(int32_t{6025})));
        ASSERT_TRUE(enter(gadget, GeData(entered)));
        EXPECT_EQ(number(WHITE_POINT), 0);
        EXPECT_EQ(real(gadget), taken);
        EXPECT_EQ(gadget == WHITE_X ? settings_->white_point->x : settings_->white_point->y, double(taken));
    }
}

TEST_F(TonemappingDialogTest, WeighsTheLayers) {
    startRender({"Layer 1: Key", "Layer 2", "Layer 3"});
    open();
    EXPECT_EQ(shownLayers(), (std::vector<std::string>{"Layer 1: Key", "Layer 2", "Layer 3"}));
    EXPECT_EQ(find(LAYER_GROUP)->columns, 4);
    for (int32_t i = 0; i < 3; ++i) {
        EXPECT_EQ(find(LAYER_ENABLED + i)->text, String("Enabled"));
        EXPECT_TRUE(find(LAYER_ENABLED + i)->value.GetBool());
        EXPECT_EQ(find(LAYER_COLOUR + i)->value.GetVector(), Vector(1, 1, 1));
        EXPECT_EQ(find(LAYER_COLOUR + i)->brightness, 1.0f);
        EXPECT_EQ(find(LAYER_COLOUR + i)->maximumBrightness, 5.0f);
    }
    ASSERT_TRUE(host_->dialogs().enterColour(dialog_, LAYER_COLOUR, Vector(1, 0.5f, 0.25f), 2));
    ASSERT_TRUE(host_->dialogs().enterColour(dialog_, LAYER_COLOUR + 2, Vector(1, 1, 1), 9));
    ASSERT_TRUE(enter(LAYER_ENABLED + 1, GeData(false)));
    EXPECT_EQ(weight(0), (std::vector<double>{2, 1, 0.5}));
    EXPECT_EQ(weight(1), (std::vector<double>{0, 0, 0}));
    EXPECT_EQ(weight(2), (std::vector<double>{5, 5, 5}));
    ASSERT_TRUE(enter(LAYER_ENABLED + 1, GeData(true)));
    EXPECT_EQ(weight(1), (std::vector<double>{1, 1, 1}));
}

TEST_F(TonemappingDialogTest, ChangesNothingWithoutARenderAndFollowsOneThatStarts) {
    const std::vector<std::string> errors = host_->errors().lines();
    open();
    for (const int32_t gadget : {PRE_SCALE, SCALE}) {
        EXPECT_TRUE(enter(gadget, GeData(2.0f)));
    }
    EXPECT_TRUE(enter(WHITE_POINT, GeData(int32_t{6025})));
    EXPECT_EQ(host_->errors().lines(), errors);
    EXPECT_EQ(shownLayers(), std::vector<std::string>());

    startRender({"Sun", "Sky"});
    EXPECT_EQ(shownLayers(), std::vector<std::string>());
    // Any message will do: here one of something else.
    host_->sendCoreMessage(4711, 0, 0);
    host_->loop().runPosted();
    EXPECT_EQ(shownLayers(), (std::vector<std::string>{"Sun", "Sky"}));
    EXPECT_EQ(renderState().tonemapDialogStale, 0);
    ASSERT_TRUE(enter(LAYER_ENABLED, GeData(false)));

    // The rows of an earlier render say nothing about the layers of the next.
    startRender({"Lamp"});
    ASSERT_TRUE(enter(BURN, GeData(3.0f)));
    EXPECT_EQ(shownLayers(), std::vector<std::string>{"Lamp"});
    EXPECT_EQ(weight(0), (std::vector<double>{1, 1, 1}));
    EXPECT_EQ(tonemapping_->pre_scale, 2.0) << "what was typed before";
    EXPECT_EQ(settings_->white_point->x, double(0.44712f));

    clearRenderState();
    EXPECT_TRUE(enter(BURN, GeData(4.0f)));
    EXPECT_EQ(tonemapping_->burn, 3.0);
}

TEST_F(TonemappingDialogTest, ShowsNoLayersOfTheRealtimeEdition) {
    pluginState().isRTEdition = true;
    startRender({"Layer 1"});
    open();
    EXPECT_EQ(shownLayers(), std::vector<std::string>());
    EXPECT_FALSE(find(LAYER_GROUP));
    ASSERT_TRUE(enter(BURN, GeData(4.0f)));
    EXPECT_EQ(tonemapping_->burn, 4.0);
    EXPECT_EQ(weight(0), (std::vector<double>{1, 1, 1}));
}

} // namespace
