// SPDX-License-Identifier: MIT
// The page of the plug-in's material, which follows its kind and its channels.
#include "end_to_end/plugin_folder.h"
#include "end_to_end/session.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/runtime/described_parameter.h"
#include "host/description.h"
#include "host/ids.h"

#include <map>
#include <set>

namespace {

constexpr int32_t MATERIAL = 1024337;

constexpr int32_t FLAGS[] = {6002, 6003, 6004, 6005, 6006, 6007, 6008, 6009, 6010, 6011, 6280,
                             6292, 6303, 6307, 6310, 6311, 6313, 6315, 6316, 6317, 6318, 6319};

class MaterialPage : public Session {
protected:
    void SetUp() override {
        startPlugin();
        host().open(std::make_unique<headless::Document>());
        material_ = &host().document()->appendMaterial(headless::createMaterial(MATERIAL));
    }

    virtual void startPlugin() { start(); }
    BaseContainer& data() { return material_->data; }
    void setKind(int32_t kind) {
        data().SetLong(6024, kind);
        material_->message(MSG_DESCRIPTION_VALIDATE, nullptr);
    }
    std::map<int32_t, headless::DescribedParameter> page() {
        std::map<int32_t, headless::DescribedParameter> parameters;
        for (headless::DescribedParameter& parameter : headless::describe(headless::toHost(material_))) {
            const int32_t id = parameter.id;
            EXPECT_TRUE(parameters.emplace(id, std::move(parameter)).second) << id << " stands there twice";
        }
        return parameters;
    }
    /// Which of some parameters are shown.
    template <class Ids>
    std::set<int32_t> shown(const Ids& ids) {
        std::set<int32_t> found;
        const auto parameters = page();
        for (const int32_t id : ids) {
            if (!parameters.at(id).hidden) {
                found.insert(id);
            }
        }
        return found;
    }

private:
    headless::Material* material_ = nullptr;
};

/// The first parameters of the groups, in the order of FLAGS.
constexpr int32_t FIRST_OF_GROUPS[] = {6260, 6114,  6038,  6069,  6074,  6057,  6040,  6079,
                                       6041, 6049,  6271,  6294,  6304,  10001, 11021, 12021,
                                       6327, 13021, 14021, 15021, 16001, 17021};
static_assert(std::size(FIRST_OF_GROUPS) == std::size(FLAGS));

TEST_F(MaterialPage, ShowsTheChannelsOfItsKind) {
    const std::pair<int32_t, std::set<int32_t>> kinds[] = {
        {6025, {6002, 6003, 6005, 6006, 6007, 6292}},
        {6026, {6002, 6003, 6005, 6006, 6007, 6009, 6292}},
        {6027, {6002, 6003, 6004, 6005, 6006, 6007, 6008, 6292, 6315}},
        {6028, {6002, 6003, 6005, 6006, 6007, 6010, 6292}},
        {6029, {6002, 6005, 6006, 6007, 6010, 6011, 6280, 6292}},
        {6031, {6002, 6005, 6006, 6007, 6008, 6010, 6280, 6292}},
        {6030, {6002}},
        {6262, {6002}},
        {6300, {6002, 6005, 6006, 6007, 6292, 6303, 6307, 6310, 6311, 6315}},
        {6301, {6002, 6005, 6006, 6007, 6292, 6311, 6313, 6315, 6316, 6317, 6318, 6319}},
    };
    for (const auto& [kind, flags] : kinds) {
        setKind(kind);
        EXPECT_EQ(shown(FLAGS), flags) << kind;
        for (const bool isOn : {true, false}) {
            std::set<int32_t> groups;
            for (size_t i = 0; i < std::size(FLAGS); ++i) {
                data().SetBool(FLAGS[i], isOn);
                if (isOn && flags.contains(FLAGS[i])) {
                    groups.insert(FIRST_OF_GROUPS[i]);
                }
            }
            EXPECT_EQ(shown(FIRST_OF_GROUPS), groups) << kind;
        }
    }
}

TEST_F(MaterialPage, ShowsChannelsWhoseSwitchWasNeverSet) {
    for (const int32_t flag : FLAGS) {
        data().RemoveData(flag);
    }
    EXPECT_EQ(shown(FIRST_OF_GROUPS), (std::set<int32_t>{6260, 6114, 6069, 6074, 6057, 6294}));
}

TEST_F(MaterialPage, ShowsTheNumbersOfASpectrumsType) {
    const struct {
        int32_t type;
        std::set<int32_t> emission;
        std::set<int32_t> absorption;
        std::set<int32_t> channel;
    } cases[] = {
        {6104, {6060, 6061, 6089}, {6129, 6130, 6216}, {16002, 16003, 16004, 16005}},
        {6105, {6062, 6063}, {6224, 6225}, {16006, 16007, 16008}},
        {6106, {6254, 6255, 6256, 6257}, {6246, 6247, 6248, 6249}, {16009, 16010, 16011, 16012, 16013}},
        {6107, {6245}, {6228}, {16014, 16015}},
        // The channel has no table, and its colour stands in.
        {6108, {6241, 6242, 6243}, {6230, 6231, 6232}, {16002, 16003, 16004, 16005}},
    };
    for (const auto& test : cases) {
        data().SetLong(6057, test.type);
        data().SetLong(6210, test.type);
        data().SetLong(16001, test.type);
        setKind(6025);
        EXPECT_EQ(shown(std::set<int32_t>{6060, 6061, 6062, 6063, 6089, 6241, 6242, 6243, 6245, 6254, 6255,
                                          6256, 6257}),
                  test.emission);
        setKind(6029);
        EXPECT_EQ(shown(std::set<int32_t>{6129, 6130, 6216, 6224, 6225, 6228, 6230, 6231, 6232, 6246, 6247,
                                          6248, 6249}),
                  test.absorption);
        setKind(6301);
        std::set<int32_t> all;
        for (int32_t id = 16002; id <= 16015; ++id) {
            all.insert(id);
        }
        EXPECT_EQ(shown(all), test.channel);
    }
}

TEST_F(MaterialPage, GivesNumberedChannelsTheirRanges) {
    const struct {
        int32_t id;
        const char* label;
        float min, max, step, minSlider, maxSlider;
    } cases[] = {
        {11021, "Value (\u00B5m)", 0, 1000000, 1, 0, 5000},
        {12021, "Value", 0, 1, 0.01f, 0, 1},
        {13021, "Value", 0, 1, 0.01f, 0, 1},
        {14021, "Value", 0, 1, 0.01f, 0, 1},
        {15021, "Value", 0, 1, 0.01f, 0, 1},
        {17021, "Value", 0, 1, 0.01f, 0, 1},
        {12017, "Texture Gamma", 0, 100, 0.1f, 0.4f, 5},
        {17018, "a (quadratic)", -1000000, 1000000, 0.1f, -1, 1},
        {16019, "b (scale)", -1000000, 1000000, 0.1f, -1, 1},
        {10020, "c (offset)", -1000000, 1000000, 0.1f, -1, 1},
        {10004, "Brightness", 0, 1, 0.01f, 0, 1},
        {10005, "Gamma", 0, 100, 0.1f, 0.4f, 5},
        {10007, "Temperature (K)", 0, 40000, 10, 0, 10000},
        {10008, "Gain", 0, 1000000, 0.1f, 0, 10},
        {10010, "Peak Start (nm)", 400, 700, 10, 400, 700},
        {10011, "Peak Width (nm)", 0, 500, 10, 0, 500},
        {16012, "Peak Value", 0, 1000000, 1, 0, 1000000},
        {16013, "Base Value", 0, 1000000, 1, 0, 1000000},
        {16015, "Uniform Value", 0, 1000000, 0.1f, 0, 10},
    };
    const auto parameters = page();
    for (const auto& test : cases) {
        const BaseContainer& properties = parameters.at(test.id).properties;
        EXPECT_EQ(properties.GetString(DESC_NAME).GetUtf8(), test.label) << test.id;
        EXPECT_EQ(properties.GetReal(DESC_MIN), test.min) << test.id;
        EXPECT_EQ(properties.GetReal(DESC_MAX), test.max) << test.id;
        EXPECT_EQ(properties.GetReal(DESC_STEP), test.step) << test.id;
        EXPECT_EQ(properties.GetReal(DESC_MINSLIDER), test.minSlider) << test.id;
        EXPECT_EQ(properties.GetReal(DESC_MAXSLIDER), test.maxSlider) << test.id;
    }
    for (const int32_t base : {10000, 11000, 12000, 13000, 14000, 15000, 16000, 17000}) {
        const bool isSpectrum = base == 10000 || base == 16000;
        for (int32_t offset = 1; offset <= 22; ++offset) {
            const bool isThere = offset >= 16 && offset <= 20 ? true : (offset < 16) == isSpectrum;
            EXPECT_EQ(parameters.contains(base + offset), isThere) << base + offset;
        }
    }
}

/// Texture parameters of the named channels have the ranges of the numbered ones.
TEST_F(MaterialPage, GivesNamedChannelsTheSameRanges) {
    const auto parameters = page();
    for (const int32_t shader : {6118, 6200, 6205, 6052, 6064, 6069, 6074, 6274, 6294}) {
        for (int32_t offset = 1; offset <= 4; ++offset) {
            const BaseContainer& properties = parameters.at(shader + offset).properties;
            EXPECT_EQ(properties.GetReal(DESC_MIN), offset == 1 ? 0.0f : -1000000.0f) << shader + offset;
            EXPECT_EQ(properties.GetReal(DESC_MAX), offset == 1 ? 100.0f : 1000000.0f) << shader + offset;
        }
    }
}

TEST_F(MaterialPage, ListsSpectraLayersAndMetals) {
    const auto labels = [this](int32_t id) {
        std::string text;
        const BaseContainer choices = page().at(id).properties.GetContainer(DESC_CYCLE);
        for (int32_t i = 0; i < choices.GetCount(); ++i) {
            text += std::to_string(choices.GetIndexId(i)) + " " +
                    choices.GetIndexData(i).GetString().GetUtf8() + ", ";
        }
        return text;
    };
    for (const int32_t type : {6057, 6210, 6217, 10001, 16001}) {
        EXPECT_EQ(labels(type), "6104 RGB, 6105 Blackbody, 6106 Peak, 6107 Uniform, 6108 Tabulated, ")
            << type;
    }
    EXPECT_EQ(labels(6090), "0 Layer 1, 1 Layer 2, 2 Layer 3, 3 Layer 4, 4 Layer 5, 5 Layer 6, 6 Layer 7, "
                            "7 Layer 8, 8 Layer 9, 9 Layer 10, ");
    headless::VideoPost& settings =
        host().document()->activeRenderData()->appendVideoPost(headless::createVideoPost(1020896));
    settings.data.SetString(1411, "Lamps");
    EXPECT_EQ(labels(6090).substr(0, 34), "0 Layer 1, 1 Lamps, 2 Layer 3, 3 L");
    const std::string metals = labels(6299);
    EXPECT_EQ(metals.substr(0, 31), "0 Ag.nk, 1 Al.nk, 2 Al2o3p.nk, ");
    EXPECT_NE(metals.find(" 152 Sicrir.nk, "), std::string::npos);
}

TEST_F(MaterialPage, CorrectsTheMetal) {
    const struct {
        int32_t index;
        const char* file;
        int32_t corrected;
    } cases[] = {{152, "", 152},   {153, "", 0}, {-1, "", 0}, {7, "cU.NK", 51}, {7, "no such metal.nk", 7},
                 {999, "Ag.nk", 0}};
    for (const auto& test : cases) {
        data().SetLong(6299, test.index);
        data().SetString(6145, test.file);
        page();
        EXPECT_EQ(data().GetLong(6299), test.corrected) << test.index << test.file;
        page();
        EXPECT_EQ(data().GetLong(6299), test.corrected) << "once is enough";
    }
}

/// Scattering below the surface, layers and emission profiles.
constexpr int32_t FULL_EDITION_ONLY[] = {6048, 6090, 6136, 6217, 6281, 6282};

TEST_F(MaterialPage, OffersScatteringAndLayers) {
    setKind(6029);
    EXPECT_EQ(shown(FULL_EDITION_ONLY),
              std::set<int32_t>(std::begin(FULL_EDITION_ONLY), std::end(FULL_EDITION_ONLY)));
}

class RealtimeMaterialPage : public MaterialPage {
    void startPlugin() override {
        placeLibrary(folder(), "capturing_x64", "quenza_rt_sdk.dll");
        startHost().loadPlugin(placePlugin(folder()));
    }
};

TEST_F(RealtimeMaterialPage, OffersNoScatteringAndNoLayers) {
    setKind(6029);
    EXPECT_EQ(shown(FULL_EDITION_ONLY), std::set<int32_t>());
}

TEST_F(MaterialPage, OfAnUnknownKindStaysAsItIs) {
    setKind(4711);
    EXPECT_EQ(shown(FLAGS), std::set<int32_t>(std::begin(FLAGS), std::end(FLAGS)));
}

} // namespace
