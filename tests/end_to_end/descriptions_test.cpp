// SPDX-License-Identifier: MIT
// The pages of the plug-in's own types, as it registered them.
#include "end_to_end/plugin_folder.h"
#include "end_to_end/session.h"
#include "headless/app/description_list.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/runtime/described_parameter.h"
#include "host/description.h"
#include "host/ids.h"

#include <map>
#include <set>

namespace {

using headless::resources::EntryKind;

std::unique_ptr<headless::Node> makeNode(const headless::Registration& type) {
    switch (type.kind) {
    case PLUGINKIND_TAG:
        return headless::createTag(type.info.id);
    case PLUGINKIND_OBJECT:
        return headless::createObject(type.info.id);
    case PLUGINKIND_MATERIAL:
        return headless::createMaterial(type.info.id);
    case PLUGINKIND_SHADER:
        return headless::createShader(type.info.id);
    default:
        return headless::createVideoPost(type.info.id);
    }
}

int32_t storedType(EntryKind kind) {
    switch (kind) {
    case EntryKind::boolean:
    case EntryKind::integer:
        return DA_LONG;
    case EntryKind::real:
        return DA_REAL;
    case EntryKind::vector:
    case EntryKind::colour:
        return DA_VECTOR;
    case EntryKind::string:
        return DA_STRING;
    case EntryKind::filename:
        return DA_FILENAME;
    case EntryKind::link:
    case EntryKind::shaderLink:
        return DA_LINK;
    case EntryKind::inExclude:
        return DA_CUSTOM;
    default:
        return DA_NIL; // groups, lines, buttons
    }
}

/// A number or text, as text; the types of a page and of a container differ for file names.
std::string plain(const GeData& value) {
    switch (value.GetType()) {
    case DA_VECTOR: {
        const Vector vector = value.GetVector();
        return std::to_string(vector.x) + " " + std::to_string(vector.y) + " " + std::to_string(vector.z);
    }
    case DA_STRING:
        return value.GetString().GetUtf8();
    case DA_FILENAME:
        return value.GetFilename().GetString().GetUtf8();
    default:
        return std::to_string(value.GetReal());
    }
}

/// Numbers of the parameters that are hidden, and of those that take no value.
std::pair<std::set<int32_t>, std::set<int32_t>> hiddenAndDisabled(headless::Node& node) {
    std::set<int32_t> hidden;
    std::set<int32_t> disabled;
    for (const headless::DescribedParameter& parameter : headless::describe(headless::toHost(&node))) {
        if (parameter.properties.GetBool(DESC_HIDE)) {
            hidden.insert(parameter.id);
        }
        if (!parameter.enabled) {
            disabled.insert(parameter.id);
        }
    }
    return {hidden, disabled};
}

class Descriptions : public Session {
protected:
    void SetUp() override {
        start();
        host().open(std::make_unique<headless::Document>());
    }

    static bool isMaterialOrShader(const headless::Registration& type) {
        return type.kind == PLUGINKIND_MATERIAL || type.kind == PLUGINKIND_SHADER;
    }

    std::vector<const headless::Registration*> types() {
        std::vector<const headless::Registration*> found;
        for (const auto& type : host().registrations().all()) {
            if (type->info.description.Content()) {
                found.push_back(type.get());
            }
        }
        return found;
    }
};

TEST_F(Descriptions, NewNodesStartWithTheDefaultsOfTheirPage) {
    // An export takes its own default where these are missing.
    const std::map<int32_t, std::set<int32_t>> withoutValue = {
        {1020896, {1301, 1384, 1421, 1422, 1423}},
        {1022083, {1942, 1943, 1945, 1949, 1950, 1952, 2001}},
        {1022667, {1502}},
        {1023863, {1400, 1401, 1402}},
        // Switches of channels, links to shaders and materials, and what old documents alone have.
        {1024337, {6002, 6004, 6005, 6006, 6007,  6008,  6009,  6010,  6011,  6280,  6292,  6303,  6307,
                   6310, 6311, 6313, 6315, 6316,  6317,  6318,  6319,  6118,  6200,  6205,  6052,  6064,
                   6069, 6074, 6274, 6294, 10016, 11016, 12016, 13016, 14016, 15016, 16016, 17016, 6259,
                   6269, 6306, 6325, 6326, 6330,  6328,  6145,  6241,  6242,  6281,  6282}},
        {1024769, {1600, 1601}},
    };
    EXPECT_EQ(types().size(), 14u);
    for (const headless::Registration* const type : types()) {
        const std::unique_ptr<headless::Node> node = makeNode(*type);
        BaseContainer unknown = node->data;
        std::set<int32_t> missing;
        for (const headless::DescribedParameter& parameter :
             headless::describe(headless::toHost(node.get()))) {
            const int32_t stored = storedType(parameter.entry->kind);
            const GeData* const value = node->data.FindData(parameter.id);
            unknown.RemoveData(parameter.id);
            if (stored == DA_NIL) {
                continue;
            }
            if (!value) {
                missing.insert(parameter.id);
                continue;
            }
            EXPECT_EQ(value->GetType(), stored) << parameter.id;
            if (const GeData* const preset = parameter.properties.FindData(DESC_DEFAULT)) {
                EXPECT_EQ(plain(*value), plain(*preset)) << parameter.id;
            }
        }
        const auto expected = withoutValue.find(type->info.id);
        EXPECT_EQ(missing, expected == withoutValue.end() ? std::set<int32_t>() : expected->second)
            << type->info.id;
        EXPECT_EQ(unknown.GetCount(), 0) << type->info.id << " holds a value that no page shows";
    }
}

void collect(headless::Node& node, int32_t type, std::vector<headless::Node*>& found) {
    if (node.type() == type) {
        found.push_back(&node);
    }
    node.visitOwned(headless::Owned::all, [&](headless::Node& owned) { collect(owned, type, found); });
}

/// What happens while an artist sets a parameter doesn't happen while a document is read.
TEST_F(Descriptions, DocumentsAreTakenAsTheyWereSaved) {
    openDocument("", "", R"("materials": [{"id": "dark", "name": "Dark"}], "renderData": [{"videoPosts": [
        {"type": 1020896, "parameters": {"RS_GPU": true, "RS_MODE": "RS_MODE_DEPTH",
                                         "RS_BACKGROUND_LINK": "dark"}}]}])");
    host().loop().runPosted();
    const BaseContainer& settings = host().document()->activeRenderData()->videoPosts().first()->data;
    EXPECT_EQ(settings.GetLong(1334), 1439);
    EXPECT_NE(settings.GetLink(1384, nullptr), nullptr);
    EXPECT_EQ(host().messages(), std::vector<std::string>{});
}

/// So that its golden scene leaves no parameter out.
TEST_F(Descriptions, AnExampleSetsEveryParameterToAnotherValue) {
    openFile(std::filesystem::path(QUENZA_SOURCE_DIR) / "examples/every-parameter.json");
    for (const headless::Registration* const type : types()) {
        if (isMaterialOrShader(*type)) {
            continue; // They have examples of their own.
        }
        std::vector<headless::Node*> nodes;
        collect(*host().document(), type->info.id, nodes);
        ASSERT_EQ(nodes.size(), 1u) << type->info.id;
        const std::unique_ptr<headless::Node> fresh = makeNode(*type);
        for (const headless::DescribedParameter& parameter : headless::describe(headless::toHost(nodes[0]))) {
            if (storedType(parameter.entry->kind) == DA_NIL) {
                continue;
            }
            const GeData value = nodes[0]->data.GetData(parameter.id);
            EXPECT_EQ(value.GetType(), storedType(parameter.entry->kind)) << parameter.entry->symbol;
            EXPECT_FALSE(value == fresh->data.GetData(parameter.id)) << parameter.entry->symbol;
            EXPECT_FALSE(value == parameter.properties.GetData(DESC_DEFAULT)) << parameter.entry->symbol;
            EXPECT_TRUE(value.GetType() != DA_LINK || value.GetLink()) << parameter.entry->symbol;
        }
    }
}

/// They count the meshes of the whole process.
std::string withoutMeshNumbers(std::string scene) {
    const std::string start = "<name>Mesh ";
    for (size_t at = scene.find(start); at != std::string::npos; at = scene.find(start, at + 1)) {
        const size_t number = at + start.size();
        scene.erase(number, scene.find('<', number) - number);
    }
    return scene;
}

TEST_F(Descriptions, EveryParameterReachesTheScene) {
    namespace fs = std::filesystem;
    const fs::path examples = fs::path(QUENZA_SOURCE_DIR) / "examples";
    install(makeRenderer("none", ""));
    fs::copy(examples / "every-parameter.json", folder());
    openFile(folder() / "every-parameter.json");
    ASSERT_TRUE(render());
    EXPECT_EQ(host().messages(), std::vector<std::string>{});
    // The document says so: next to itself, with the images in a folder beside.
    const std::string scene =
        replaceAll(readScene(folder() / "every-parameter.qzs"), folder().generic_string(), "FOLDER");
    const fs::path golden = fs::path(QUENZA_SOURCE_DIR) / "tests/end_to_end/golden/every-parameter.qzs";
    EXPECT_EQ(withoutMeshNumbers(scene), withoutMeshNumbers(readFile(golden)));
    EXPECT_TRUE(fs::is_directory(folder() / "every-parameter.renders"));
}

/// Which parameters of the tags and objects follow others.
TEST_F(Descriptions, HideAndDisableWhatDoesNotApply) {
    const struct {
        int32_t type;
        std::vector<std::pair<int32_t, int32_t>> values;
        std::set<int32_t> hidden;
        std::set<int32_t> disabled;
    } cases[] = {
        {1020892, {}, {1220, 1222, 1223}, {1300, 1301, 1308}},
        {1020892, {{1215, 1216}, {1307, 1}}, {1221, 1222, 1223}, {1300, 1301}},
        {1020892, {{1215, 1218}, {1312, 1}}, {1220, 1221, 1223}, {1308}},
        {1020892, {{1215, 1219}}, {1220, 1221, 1222}, {1300, 1301, 1308}},
        {1022083, {}, {}, {1980}},
        {1022083, {{1979, 1}}, {}, {}},
        {1022667, {}, {}, {1502}},
        {1022667, {{1505, 1}}, {}, {}},
        {1028908, {}, {}, {}},
        {1028908, {{10016, 0}}, {}, {10017}},
        {1022273, {}, {}, {}},
        {1021223, {}, {}, {}},
        {1029978, {}, {}, {}},
    };
    for (const auto& test : cases) {
        const std::unique_ptr<headless::Node> node = makeNode(*host().registrations().find(test.type));
        for (const auto& [id, value] : test.values) {
            node->data.SetLong(id, value);
        }
        const auto [hidden, disabled] = hiddenAndDisabled(*node);
        EXPECT_EQ(hidden, test.hidden) << test.type;
        EXPECT_EQ(disabled, test.disabled) << test.type;
    }
}

using RealtimeDescriptions = Session;

TEST_F(RealtimeDescriptions, HideLightLayers) {
    placeLibrary(folder(), "capturing_x64", "quenza_rt_sdk.dll");
    startHost().loadPlugin(placePlugin(folder()));
    const std::unique_ptr<headless::Node> light = makeNode(*host().registrations().find(1020892));
    EXPECT_EQ(hiddenAndDisabled(*light).first, (std::set<int32_t>{1220, 1222, 1223, 1236, 1313}));
}

TEST_F(Descriptions, BackgroundsThatDontShineAreWarnedOfAndTaken) {
    headless::VideoPost& settings =
        host().document()->activeRenderData()->appendVideoPost(headless::createVideoPost(1020896));
    headless::Material& dark = host().document()->appendMaterial(headless::createMaterial(Mmaterial));
    headless::Material& shining = host().document()->appendMaterial(headless::createMaterial(Mmaterial));
    shining.data.SetBool(6007, true);
    const auto link = [&](const headless::Material* material) {
        EXPECT_TRUE(settings.setParameter(
            1384, GeData(headless::toHost(static_cast<const headless::Node*>(material)))));
        host().loop().runPosted();
        return settings.data.GetLink(1384, nullptr);
    };
    EXPECT_EQ(link(&shining), headless::toHost(static_cast<const headless::Node*>(&shining)));
    EXPECT_EQ(link(nullptr), nullptr);
    EXPECT_EQ(host().messages(), std::vector<std::string>{});
    EXPECT_EQ(link(&dark), headless::toHost(static_cast<const headless::Node*>(&dark)));
    EXPECT_EQ(host().messages(),
              std::vector<std::string>{"Warning:\nBackground materials must have emission enabled."});
}

} // namespace
