// SPDX-License-Identifier: MIT
#include "export/render_settings_post.h"

#include "export/gpu_devices.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/resources/resource_folder.h"
#include "headless/runtime/described_parameter.h"
#include "headless/runtime/host.h"
#include "host/description.h"
#include "host/ids.h"
#include "host/tables.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/plugin_state.h"

#include <gtest/gtest.h>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using Ids = std::set<int32_t>;

headless::HostOptions quietHost() {
    headless::HostOptions options;
    options.consoleSink = options.errorSink = options.statusSink = [](const std::string&) {};
    return options;
}

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
        pluginState().isRTEdition = false;
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
    headless::Host& host() { return host_; }
    BaseList2D* node() { return headless::toHost(node_); }
    BaseContainer& data() { return node_->data; }
    std::vector<headless::DescribedParameter> page() { return headless::describe(node()); }

    template <class Condition>
    Ids those(const Condition& condition) {
        Ids ids;
        for (const headless::DescribedParameter& parameter : page()) {
            if (condition(parameter)) {
                ids.insert(parameter.id);
            }
        }
        return ids;
    }
    /// Numbers whose own hide flag is set.
    Ids hidden() {
        return those([](const auto& parameter) { return parameter.properties.GetBool(DESC_HIDE); });
    }
    Ids disabled() {
        return those([](const auto& parameter) { return !parameter.enabled; });
    }
    std::vector<std::string> devices() {
        std::vector<std::string> names;
        for (const headless::DescribedParameter& parameter : page()) {
            const BaseContainer choices = parameter.properties.GetContainer(DESC_CYCLE);
            for (int32_t i = 0; parameter.id == RS_GPU_DEVICE && i < choices.GetCount(); ++i) {
                names.push_back(std::to_string(choices.GetIndexId(i)) + " " +
                                choices.GetIndexData(i).GetString().GetUtf8());
            }
        }
        return names;
    }

private:
    headless::Host host_{quietHost()};
    const HostTable* hostTables_;
    DescriptionTable descriptionTable_ = *HostTables()->description;
    HostTable tables_ = *HostTables();
    headless::VideoPost* node_ = nullptr;
};

TEST_F(RenderSettingsPage, TakesTheUnitOfThePreferencesAndTheThreadsOfTheProcessor) {
    for (const auto& [preference, unit] : std::vector<std::pair<int32_t, int32_t>>{
             {1, 1387}, {2, 1388}, {3, 1389}, {4, 1390}, {0, 1391}, {5, 1391}}) {
        host().worldPreferences().SetLong(WPREF_UNITS_BASIC, preference);
        renew();
        EXPECT_EQ(data().GetLong(RS_UNIT), unit) << preference;
    }
    EXPECT_EQ(data().GetLong(RS_NUM_THREADS), GeGetCurrentOptimalThreads());
}

TEST_F(RenderSettingsPage, HidesWhatDoesNotApply) {
    const struct {
        std::vector<std::pair<int32_t, int32_t>> values;
        Ids hidden;
    } cases[] = {
        {{}, {1340, 1357, 1359, 1361, 1366, 1367, 1433}},
        {{{RS_UNIT, 1391}}, {1357, 1359, 1361, 1366, 1367, 1433}},
        {{{RS_BACKGROUND, 1364}}, {1340, 1357, 1359, 1361, 1366, 1433}},
        {{{RS_BACKGROUND, 1365}}, {1340, 1357, 1359, 1361, 1367, 1433}},
        {{{RS_AUTO_THREADS, 0}}, {1340, 1359, 1361, 1366, 1367, 1433}},
    };
    for (const auto& test : cases) {
        renew(test.values);
        EXPECT_EQ(hidden(), test.hidden) << (test.values.empty() ? 0 : test.values[0].first);
    }
    pluginState().isRTEdition = true;
    renew();
    EXPECT_EQ(hidden(), (Ids{1340, 1355, 1356, 1357, 1359, 1361, 1366, 1367, 1401, 1409, 1433}));
}

TEST_F(RenderSettingsPage, EnablesWhatApplies) {
    const Ids atFirst = {1303, 1361, 1381, 1393, 1394, 1422, 1423, 1424, 1436};
    const auto without = [&](const Ids& gone, const Ids& more) {
        Ids ids = more;
        for (const int32_t id : atFirst) {
            if (!gone.contains(id)) {
                ids.insert(id);
            }
        }
        return ids;
    };
    const struct {
        std::vector<std::pair<int32_t, int32_t>> values;
        Ids enabled;
        Ids disabled;
    } cases[] = {
        {{}, {}, {}},
        {{{RS_CAPTURED_SKY, 0}}, {1303, 1381}, {}},
        {{{RS_MODE, RS_MODE_PATH}}, {}, {1331, 1350, 1351}},
        {{{RS_MODE, RS_MODE_MLT_PATH}}, {}, {}},
        {{{RS_MODE, RS_MODE_DEPTH}}, {}, {1331, 1350, 1351}},
        {{{RS_GPU, 1}}, {1436}, {1334}},
        {{{RS_EXPORT_TO_FILE, 1}}, {1393, 1394}, {}},
        {{{RS_EXPORT_TO_FILE, 1}, {RS_EXPORT_NEXT_TO_DOC, 1}}, {1394}, {}},
        {{{RS_SET_OUTPUT, 1}}, {1422}, {}},
        {{{RS_SET_OUTPUT, 1}, {RS_EXPORT_TO_FILE, 1}}, {1393, 1394, 1422, 1423}, {}},
        {{{RS_SET_OUTPUT, 1}, {RS_EXPORT_TO_FILE, 1}, {RS_OUTPUT_IN_RENDERS, 1}}, {1393, 1394, 1423}, {}},
        {{{RS_OVERRIDE_DEFAULT_MATERIAL, 1}}, {1424}, {}},
    };
    for (const auto& test : cases) {
        renew(test.values);
        EXPECT_EQ(disabled(), without(test.enabled, test.disabled))
            << (test.values.empty() ? 0 : test.values.back().first);
    }
}

TEST_F(RenderSettingsPage, ListsTheDevices) {
    gpuDevices() = {{"Left card", GPU_KIND_CUDA}, {"Right card", 0}, {"Old card", 2}};
    EXPECT_EQ(devices(),
              (std::vector<std::string>{"0 Left card CUDA", "1 Right card OpenCL", "2 Old card OpenCL"}));
    for (const auto& [before, after] :
         std::vector<std::pair<int32_t, int32_t>>{{-1, 0}, {0, 0}, {2, 2}, {3, 3}, {4, 0}}) {
        renew({{RS_GPU_DEVICE, before}});
        page();
        EXPECT_EQ(data().GetLong(RS_GPU_DEVICE), after) << before;
    }
    gpuDevices() = {{"Right card", 0}};
    EXPECT_EQ(devices(), std::vector<std::string>{"0 Right card OpenCL"})
        << "lines of the last page are gone";
    gpuDevices().clear();
    for (const int32_t before : {-1, 1}) {
        renew({{RS_GPU_DEVICE, before}});
        EXPECT_EQ(devices(), std::vector<std::string>{});
        EXPECT_EQ(data().GetLong(RS_GPU_DEVICE), 0) << before;
    }
}

TEST_F(RenderSettingsPage, ListsNoDevicesOutsideADocument) {
    gpuDevices() = {{"Left card", GPU_KIND_CUDA}};
    const std::unique_ptr<headless::VideoPost> loose = makePost();
    for (const headless::DescribedParameter& parameter : headless::describe(headless::toHost(loose.get()))) {
        EXPECT_TRUE(parameter.id != RS_GPU_DEVICE ||
                    parameter.properties.GetContainer(DESC_CYCLE).GetCount() == 0);
    }
    EXPECT_EQ(loose->data.GetLong(RS_GPU_DEVICE), -1);
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
