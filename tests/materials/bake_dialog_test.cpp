// SPDX-License-Identifier: MIT
#include "headless/model/node_types.h"
#include "host/plugin_data.h"
#include "materials/bake_dialog_fixture.h"

#include <atomic>
#include <thread>

// Baking through the dialog, by a user who was told before what to do.

namespace {

TEST_F(BakeDialogTest, BakesEachChannelIntoAFileOfTheCopy) {
    const struct {
        ChannelId id;
        const char* file;
        bool isGrey;
    } cases[] = {
        {ChannelId::ALBEDO, "wall.v1_albedo.jpg", false},
        {ChannelId::EXPONENT, "wall.v1_exponent.jpg", true},
        {ChannelId::BLEND, "wall.v1_alpha.jpg", true},
        {ChannelId::EMISSION, "wall.v1_emission.jpg", false},
        {ChannelId::BUMP, "wall.v1_bump.jpg", true},
        {ChannelId::DISPLACEMENT, "wall.v1_displacement.jpg", true},
        {ChannelId::SIGMA, "wall.v1_sigma.jpg", true},
    };
    addUVW();
    for (const auto& entry : cases) {
        data(addOn(entry.id, headless::Xnoise)).SetLong(headless::NOISE_SEED, int32_t(entry.id) + 1);
    }
    // Not among the dialog's.
    addOn(ChannelId::NORMAL_MAP, headless::Xnoise);
    const std::string before = documentText();
    EXPECT_TRUE(bake());
    EXPECT_EQ(outputFiles().size(), std::size(cases));
    ASSERT_TRUE(bakedMaterial());
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.file);
        const std::string file = output(entry.file);
        EXPECT_EQ(linkedBy(bakedMaterial(), entry.id), file);
        EXPECT_EQ(linkedBy(material_, entry.id), std::to_string(headless::Xnoise));
        EXPECT_EQ(componentsOf(file), entry.isGrey ? GREY_COMPONENTS : 3);
        const OwnedBitmap image = load(file);
        ASSERT_EQ(image->GetBw(), 32);
        ASSERT_EQ(image->GetBh(), 16);
        auto* const shader =
            static_cast<BaseShader*>(data(material_).GetLink(channel(entry.id).shader, document(), Xbase));
        EXPECT_LE(differenceTo(shader, *image, entry.isGrey), JPEG_LOSS);
    }
    EXPECT_EQ(linkedBy(bakedMaterial(), ChannelId::NORMAL_MAP), std::to_string(headless::Xnoise));
    // Each channel's image took the place of its shader.
    int shaders = 0;
    for (const BaseShader* shader = bakedMaterial()->GetFirstShader(); shader; shader = shader->GetNext()) {
        ++shaders;
    }
    EXPECT_EQ(shaders, 8);
    EXPECT_EQ(tag_->GetMaterial(), material_);
    ASSERT_TRUE(bakedObject());
    EXPECT_EQ(static_cast<TextureTag*>(bakedObject()->GetTag(Ttexture))->GetMaterial(), bakedMaterial());
    EXPECT_EQ(document()->GetFirstMaterial()->GetNext()->GetNext(), nullptr) << "the plain material has gone";

    EXPECT_TRUE(document()->DoUndo());
    EXPECT_EQ(documentText(), before);
}

TEST_F(BakeDialogTest, UsesTheCoordinatesOfTheSamePlaceOrTheFirst) {
    const struct {
        const char* what;
        int32_t projection;
        std::vector<float> widths;
        bool isRightCovered;
        int uvwTags;
    } cases[] = {
        {"the second", P_UVW, {0.25f, 1.0f}, true, 2},
        {"the only one", P_UVW, {0.25f}, false, 1},
        {"new ones", P_FLAT, {0.25f, 0.25f}, true, 3},
    };
    BaseMaterial* const other = addMaterial("Other");
    data(addOn(ChannelId::ALBEDO, headless::Xnoise)).SetVector(headless::NOISE_COLOR2, Vector(1, 1, 1));
    tag_->SetMaterial(other);
    tag_->DelBit(BIT_ACTIVE);
    TextureTag* const second = addTexture(material_, P_UVW);
    second->SetBit(BIT_ACTIVE);
    for (const auto& entry : cases) {
        SCOPED_TRACE(entry.what);
        data(second).SetLong(TEXTURETAG_PROJECTION, entry.projection);
        for (const float width : entry.widths) {
            addUVW(width);
        }
        const std::string before = documentText();
        EXPECT_TRUE(bake());
        ASSERT_TRUE(bakedObject());
        auto* const tag = static_cast<TextureTag*>(bakedObject()->GetTag(Ttexture, 1));
        EXPECT_EQ(tag->GetMaterial(), bakedMaterial());
        EXPECT_EQ(static_cast<TextureTag*>(bakedObject()->GetTag(Ttexture))->GetMaterial(), other);
        EXPECT_EQ(data(tag).GetLong(TEXTURETAG_PROJECTION), P_UVW);
        EXPECT_EQ(data(second).GetLong(TEXTURETAG_PROJECTION), entry.projection);
        EXPECT_TRUE(bakedObject()->GetTag(Tuvw, entry.uvwTags - 1));
        EXPECT_FALSE(bakedObject()->GetTag(Tuvw, entry.uvwTags));
        uint16_t r = 0, g = 0, b = 0;
        load(output("wall.v1_albedo.jpg"))->GetPixel(31, 8, &r, &g, &b);
        EXPECT_EQ(r > 100, entry.isRightCovered) << r;
        document()->DoUndo();
        EXPECT_EQ(documentText(), before);
        while (BaseTag* uvw = quad_->GetTag(Tuvw)) {
            uvw->Remove();
            BaseTag::Free(uvw);
        }
    }
}

TEST_F(BakeDialogTest, SaysWhenThereAreNoCoordinates) {
    addOn(ChannelId::ALBEDO, headless::Xnoise);
    const std::string before = documentText();
    EXPECT_TRUE(run({set(FILE_FIELD, GeData(String(output("wall.jpg")))), press(BAKE_BUTTON), close()}));
    EXPECT_FALSE(BakeUVWCommand().Execute(document()));
    const std::string text = "The object has no texture coordinates to bake to.";
    EXPECT_EQ(host().messages(), (std::vector<std::string>{text, text}));
    EXPECT_EQ(documentText(), before);
}

TEST_F(BakeDialogTest, AsksForAFile) {
    addUVW();
    addOn(ChannelId::ALBEDO, headless::Xnoise);
    const std::string before = documentText();
    EXPECT_TRUE(run({press(BAKE_BUTTON), close()}));
    EXPECT_EQ(host().messages(), std::vector<std::string>{"You have to specify a file to save to."});
    EXPECT_EQ(documentText(), before);

    // "..." fills the field.
    std::filesystem::create_directory(folder() + "/out");
    host().user().addFileAnswer(output("chosen.png"));
    EXPECT_TRUE(run({press(FILE_BUTTON), set(RES_X, GeData(int32_t{-3})), set(RES_Y, GeData(int32_t{0})),
                     press(BAKE_BUTTON)}));
    EXPECT_EQ(host().user().interactions().back().text, "Save image to...");
    const OwnedBitmap image = load(output("chosen_albedo.jpg"));
    EXPECT_EQ(image->GetBw(), 1);
    EXPECT_EQ(image->GetBh(), 1);
}

TEST_F(BakeDialogTest, LeavesChannelsThatCantBeBakedAsTheyWere) {
    addUVW();
    addOn(ChannelId::ALBEDO, headless::Xnoise);
    data(addOn(ChannelId::EMISSION, PLUGINID_QSL_SHADER)).SetString(QSL_CODE, "def eval(vec3 pos) vec3: pos");
    addOn(ChannelId::BUMP, headless::Xnoise);
    addOn(ChannelId::BLEND, headless::Xnoise);
    // A folder in the place of the file: it can't be saved.
    std::filesystem::create_directories(output("wall_bump.jpg/taken"));
    const UserAction untick = set(10008, GeData(false));
    EXPECT_TRUE(bake("wall", {untick}));
    ASSERT_TRUE(bakedMaterial());
    EXPECT_EQ(linkedBy(bakedMaterial(), ChannelId::ALBEDO), output("wall_albedo.jpg"));
    EXPECT_EQ(linkedBy(bakedMaterial(), ChannelId::EMISSION), std::to_string(PLUGINID_QSL_SHADER));
    EXPECT_EQ(linkedBy(bakedMaterial(), ChannelId::BUMP), std::to_string(headless::Xnoise));
    EXPECT_EQ(linkedBy(bakedMaterial(), ChannelId::BLEND), std::to_string(headless::Xnoise));
    EXPECT_EQ(outputFiles(), (std::vector<std::string>{"wall_albedo.jpg", "wall_bump.jpg"}));
}

/// Waits at its first sample until the test says go on, and is slow from then on.
class SlowShader : public ShaderData {
public:
    static constexpr int32_t TYPE = 999'003;

    static NodeData* make() { return new SlowShader; }
    Vector Output(BaseShader*, const ChannelData&) override {
        hasBegun = true;
        do {
            std::this_thread::yield();
        } while (!mayGoOn);
        return {};
    }
    static inline std::atomic<bool> hasBegun{false};
    static inline std::atomic<bool> mayGoOn{false};
};

TEST_F(BakeDialogTest, ClosingWhileItBakesLeavesTheDocument) {
    headless::NodeTypeInfo type;
    type.id = SlowShader::TYPE;
    type.kind = headless::NodeKind::shader;
    type.name = "slow";
    type.allocator = SlowShader::make;
    ASSERT_TRUE(headless::NodeTypes::instance().add(std::move(type)));
    data(tag_).SetLong(TEXTURETAG_PROJECTION, P_FLAT);
    addOn(ChannelId::ALBEDO, SlowShader::TYPE);
    addOn(ChannelId::BUMP, headless::Xnoise);
    const std::string before = documentText();
    std::string title;
    bool isButtonOff = false;
    const auto meanwhile = [&](GeDialog& dialog) {
        while (!SlowShader::hasBegun) {
            std::this_thread::yield();
        }
        EXPECT_NE(documentText(), before);
        dialog.Timer(BaseContainer());
        title = host().dialogs().state(&dialog)->title.GetUtf8();
        isButtonOff = !host().dialogs().state(&dialog)->find(BAKE_BUTTON)->enabled;
        SlowShader::mayGoOn = true;
        EXPECT_TRUE(host().dialogs().requestClose(&dialog));
    };
    std::filesystem::create_directory(folder() + "/out");
    EXPECT_TRUE(run({set(FILE_FIELD, GeData(String(output("wall.jpg")))), set(RES_X, GeData(int32_t{512})),
                     set(RES_Y, GeData(int32_t{16384})), press(BAKE_BUTTON), look(meanwhile)}));
    EXPECT_EQ(title, "Baking albedo...");
    EXPECT_TRUE(isButtonOff);
    EXPECT_EQ(documentText(), before);
    EXPECT_TRUE(outputFiles().empty());
    EXPECT_EQ(BakeCommand().GetState(document()), CMD_ENABLED);
}

TEST_F(BakeDialogTest, TheOtherCommandMakesCoordinates) {
    data(tag_).SetLong(TEXTURETAG_PROJECTION, P_FLAT);
    const std::string before = documentText();
    EXPECT_TRUE(BakeUVWCommand().Execute(document()));
    auto* const made = static_cast<UVWTag*>(quad_->GetTag(Tuvw));
    ASSERT_TRUE(made);
    EXPECT_EQ(made->GetDataCount(), 1);
    EXPECT_EQ(data(tag_).GetLong(TEXTURETAG_PROJECTION), P_UVW);
    // A second time there is nothing to do.
    EXPECT_TRUE(BakeUVWCommand().Execute(document()));
    EXPECT_EQ(quad_->GetTag(Tuvw, 1), nullptr);
    document()->DoUndo();
    EXPECT_EQ(documentText(), before);
}

} // namespace
