// SPDX-License-Identifier: MIT
#include "export/render_settings_post.h"

#include "export/gpu_devices.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/resources/resource_folder.h"
#include "headless/runtime/described_parameter.h"
#include "headless/runtime/host.h"
#include "host/ids.h"
#include "host/tables.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "support/quiet_host.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace {

const headless::resources::Description& shippedPage() {
    static headless::resources::ResourceFolder folder(QUENZA_SOURCE_DIR "/res");
    return *folder.loadDescription("oquenzarendersettings").value;
}

bool loadShippedPage(Description* description, int32_t pluginId) {
    EXPECT_EQ(pluginId, PLUGINID_RENDER_SETTINGS);
    reinterpret_cast<headless::DescriptionInstance*>(description)->load(shippedPage());
    return true;
}

std::unique_ptr<headless::VideoPost> makePost() {
    auto post = std::make_unique<headless::VideoPost>(PLUGINID_RENDER_SETTINGS);
    post->setPluginData(std::make_unique<RenderSettingsPost>());
    EXPECT_TRUE(post->pluginData()->Init(headless::toHost(static_cast<headless::Node*>(post.get()))));
    return post;
}

/// The video post in a document of the stand-in host, with the plug-in's code and page in this process.
class RenderSettingsPage : public ::testing::Test {
protected:
    RenderSettingsPage() : hostTables_(HostTables()) {
        descriptionTable_.Load = loadShippedPage;
        tables_.description = &descriptionTable_;
        SetHostTables(&tables_);
        host_.open(std::make_unique<headless::Document>());
        renew();
    }
    ~RenderSettingsPage() override {
        gpuDevices().clear();
        host_.open(nullptr);
        SetHostTables(hostTables_);
    }

    /// Takes a new video post in place of the last.
    void renew() {
        headless::RenderDataNode& setup = *host_.document()->activeRenderData();
        if (node_) {
            headless::removeNode(*node_);
        }
        node_ = &setup.appendVideoPost(makePost());
    }
    void renew(const std::vector<std::pair<int32_t, int32_t>>& values) {
        renew();
        for (const auto& [id, value] : values) {
            data().SetLong(id, value);
        }
    }

    headless::Document& document() { return *host_.document(); }
    BaseList2D* node() { return headless::toHost(node_); }
    BaseContainer& data() { return node_->data; }
    void showPage() { headless::describe(node()); }

private:
    headless::Host host_{quietHost()};
    const HostTable* hostTables_;
    DescriptionTable descriptionTable_ = *HostTables()->description;
    HostTable tables_ = *HostTables();
    headless::VideoPost* node_ = nullptr;
};

TEST_F(RenderSettingsPage, KeepsTheDeviceWithinTheList) {
    const auto shown = [this](int32_t device) {
        renew({{RS_GPU_DEVICE, device}});
        showPage();
        return data().GetLong(RS_GPU_DEVICE);
    };
    gpuDevices() = {{"Left card", GPU_KIND_CUDA}, {"Right card", 0}, {"Old card", 2}};
    for (const auto& [before, after] :
         std::vector<std::pair<int32_t, int32_t>>{{-1, 0}, {0, 0}, {2, 2}, {3, 3}, {4, 0}}) {
        EXPECT_EQ(shown(before), after) << before;
    }
    gpuDevices().clear();
    EXPECT_EQ(shown(-1), 0);
    EXPECT_EQ(shown(1), 0);
}

TEST_F(RenderSettingsPage, LetsTheGraphicsCardTracePathsOnly) {
    ASSERT_TRUE(node()->SetParameter(RS_GPU, GeData(false)));
    EXPECT_EQ(data().GetLong(RS_MODE), RS_MODE_MLT_BIDIRECTIONAL);
    ASSERT_TRUE(node()->SetParameter(RS_GPU, GeData(true)));
    EXPECT_EQ(data().GetLong(RS_MODE), RS_MODE_PATH);
    ASSERT_TRUE(node()->SetParameter(RS_GPU, GeData(false)));
    EXPECT_EQ(data().GetLong(RS_MODE), RS_MODE_PATH) << "turning it off leaves the mode as it is";
    EXPECT_FALSE(data().GetBool(RS_GPU));
}

TEST_F(RenderSettingsPage, MarksTheBackgroundBeforeARender) {
    headless::Object& background = document().appendObject(headless::createObject(Onull));
    background.info = 1;
    EXPECT_TRUE(node()->Message(MSG_RENDER_PREPARE)) << "without a link";
    data().SetLink(RS_BACKGROUND_LINK, headless::toHost(&background));
    int payload = 0;
    EXPECT_TRUE(node()->Message(MSG_RENDER_PREPARE, &payload));
    EXPECT_TRUE(node()->Message(MSG_DESCRIPTION_COMMAND));
    EXPECT_EQ(background.info, 1) << "other messages, and one with data, mark nothing";
    EXPECT_TRUE(node()->Message(MSG_RENDER_PREPARE));
    EXPECT_EQ(background.info, 5);
}

} // namespace
