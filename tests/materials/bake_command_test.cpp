// SPDX-License-Identifier: MIT
#include "materials/bake_dialog_fixture.h"

namespace {

using BakeCommands = BakeDialogTest;

TEST_F(BakeCommands, CommandsNeedOneTextureTagOfThePlugin) {
    BakeCommand bakeCommand;
    BakeUVWCommand uvwCommand;
    const auto isEnabled = [&] {
        const bool enabled = bakeCommand.GetState(document()) == CMD_ENABLED;
        EXPECT_EQ(uvwCommand.GetState(document()) == CMD_ENABLED, enabled);
        return enabled;
    };
    EXPECT_TRUE(isEnabled());
    TextureTag* const second = addTexture(material_, P_UVW);
    for (BaseList2D* const other :
         {static_cast<BaseList2D*>(second), static_cast<BaseList2D*>(quad_),
          static_cast<BaseList2D*>(material_), static_cast<BaseList2D*>(addUVW())}) {
        other->SetBit(BIT_ACTIVE);
        EXPECT_FALSE(isEnabled());
        other->DelBit(BIT_ACTIVE);
    }
    EXPECT_TRUE(isEnabled());
    tag_->SetMaterial(addOtherMaterial("Plain", Mmaterial));
    EXPECT_FALSE(isEnabled());
    tag_->SetMaterial(nullptr);
    EXPECT_FALSE(isEnabled());
    tag_->DelBit(BIT_ACTIVE);
    EXPECT_FALSE(isEnabled());
    BaseObject* const cube = BaseObject::Alloc(Ocube);
    document()->InsertObject(cube);
    auto* const onCube = static_cast<TextureTag*>(cube->MakeTag(Ttexture));
    onCube->SetMaterial(material_);
    onCube->SetBit(BIT_ACTIVE);
    EXPECT_FALSE(isEnabled());
    EXPECT_FALSE(bakeCommand.Execute(document()));
    EXPECT_FALSE(uvwCommand.Execute(document()));
    EXPECT_EQ(bakeCommand.GetState(nullptr), 0);
}

TEST_F(BakeCommands, TheSelectionStaysWithTheOriginal) {
    addUVW();
    addOn(ChannelId::ALBEDO, headless::Xnoise);
    EXPECT_TRUE(bake());
    EXPECT_EQ(BakeCommand().GetState(document()), CMD_ENABLED);
}

TEST_F(BakeCommands, TheOtherCommandMakesCoordinates) {
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
