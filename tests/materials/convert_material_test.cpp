// SPDX-License-Identifier: MIT
#include "materials/convert_material.h"

#include "headless/shaders/shader_ids.h"
#include "host/ids.h"
#include "host/layer.h"
#include "host/object.h"
#include "host/tag.h"
#include "materials/convert_command.h"
#include "materials/material_fixture.h"

namespace {

/// Numbers of the standard material's switches.
constexpr int32_t use(int32_t channel) {
    return headless::MATERIAL_USE_COLOR + channel;
}

class Convert : public MaterialTest {
protected:
    /// A standard material with nothing but its colour switched on.
    BaseMaterial* addStandard(const char* name) {
        BaseMaterial* const material = addOtherMaterial(name, Mmaterial);
        data(material).SetBool(use(CHANNEL_SPECULAR), false);
        return material;
    }

    BaseMaterial* convert(BaseMaterial* source) {
        BaseMaterial* const target = addMaterial("target");
        EXPECT_TRUE(convertMaterial(target, source));
        return target;
    }

    static std::vector<std::string> names(BaseMaterial* first) {
        std::vector<std::string> found;
        for (; first; first = first->GetNext()) {
            found.push_back(std::to_string(first->GetType()) + " " + first->GetName().GetUtf8());
        }
        return found;
    }

    TextureTag* addTag(BaseObject* object, BaseMaterial* material) {
        auto* const tag = static_cast<TextureTag*>(object->MakeTag(Ttexture));
        tag->SetMaterial(material);
        return tag;
    }
};

struct KindCase {
    const char* what;
    std::vector<int32_t> channels;
    std::vector<std::pair<int32_t, float>> values;
    int32_t kind;
    std::vector<std::pair<int32_t, float>> expected;
};

TEST_F(Convert, ChoosesTheKindByTheFirstChannelThatIsOn) {
    const KindCase cases[] = {
        {"plain", {}, {}, MAT_KIND_DIFFUSE, {{MAT_EXPONENT, 1000.0f}, {MAT_EXPONENT_B, 1.0f}}},
        {"rough", {}, {{MATERIAL_ILLUMINATION_MODEL, 2.0f}}, MAT_KIND_ORENNAYAR, {}},
        {"highlight",
         {CHANNEL_SPECULAR},
         {{MATERIAL_SPECULAR_WIDTH, 0.4f}, {MATERIAL_SPECULAR_HEIGHT, 0.5f}},
         MAT_KIND_PHONG,
         {{MAT_PHONG_IOR, 1.35211267f}, {MAT_EXPONENT, 40.0f}, {MAT_EXPONENT_B, 15.0f}}},
        {"mirror",
         {CHANNEL_REFLECTION, CHANNEL_SPECULAR},
         {{MATERIAL_REFLECTION_BRIGHTNESS, 0.5f}},
         MAT_KIND_PHONG,
         {{MAT_PHONG_IOR, 3.5f}, {MAT_EXPONENT, 100000.0f}, {MAT_EXPONENT_B, 15.0f}}},
        {"blurred mirror",
         {CHANNEL_REFLECTION},
         {{MATERIAL_REFLECTION_DISPERSION, 0.2f}},
         MAT_KIND_PHONG,
         {{MAT_EXPONENT, 4025.0f}}},
        {"glass",
         {CHANNEL_TRANSPARENCY, CHANNEL_REFLECTION},
         {{MATERIAL_TRANSPARENCY_REFRACTION, 1.5f}, {MATERIAL_TRANSPARENCY_BRIGHTNESS, 0.7f}},
         MAT_KIND_SPECULAR,
         {{MAT_MEDIUM_IOR, 1.5f},
          {MAT_ABSORPTION_TYPE, float(MAT_SPECTRUM_RGB)},
          {MAT_ABSORPTION_SCALE, 7.0f},
          {MAT_EXPONENT, 1000.0f}}},
        {"frosted glass",
         {CHANNEL_TRANSPARENCY},
         {{MATERIAL_TRANSPARENCY_DISPERSION, 0.5f}},
         MAT_KIND_GLOSSY_TRANSPARENT,
         {{MAT_EXPONENT, 2525.0f}, {MAT_EXPONENT_B, 15.0f}}},
    };
    for (const KindCase& entry : cases) {
        SCOPED_TRACE(entry.what);
        BaseMaterial* const source = addStandard(entry.what);
        for (const int32_t channel : entry.channels) {
            data(source).SetBool(use(channel), true);
        }
        for (const auto& [id, value] : entry.values) {
            data(source).SetReal(id, value);
        }
        BaseMaterial* const target = convert(source);
        EXPECT_EQ(target->GetName(), source->GetName());
        EXPECT_EQ(data(target).GetLong(MAT_KIND), entry.kind);
        for (const auto& [id, value] : entry.expected) {
            EXPECT_FLOAT_EQ(data(target).GetReal(id), value) << id;
        }
        EXPECT_EQ(data(target).GetBool(MAT_ALBEDO_ENABLED),
                  entry.kind != MAT_KIND_SPECULAR && entry.kind != MAT_KIND_GLOSSY_TRANSPARENT);
    }
}

TEST_F(Convert, ReplacesMaterialsOnObjectsAndKeepsTheOldOnes) {
    BaseMaterial* const first = addStandard("First");
    BaseMaterial* const second = addStandard("Second");
    BaseMaterial* const own = addMaterial("Own");
    BaseObject* const parent = BaseObject::Alloc(Ocube);
    BaseObject* const child = BaseObject::Alloc(Ocube);
    document()->InsertObject(parent);
    document()->InsertObject(child, parent);
    TextureTag* const onParent = addTag(parent, first);
    TextureTag* const onChild = addTag(child, second);
    TextureTag* const kept = addTag(child, own);
    const size_t before = names(document()->GetFirstMaterial()).size();

    EXPECT_TRUE(ConvertMaterialsCommand().Execute(document()));
    EXPECT_TRUE(host().user().interactions().empty());
    EXPECT_EQ(names(document()->GetFirstMaterial()).size(), before + 2);
    EXPECT_EQ(onParent->GetMaterial()->GetType(), PLUGINID_MATERIAL);
    EXPECT_EQ(onParent->GetMaterial()->GetName(), String("First"));
    EXPECT_EQ(onChild->GetMaterial()->GetName(), String("Second"));
    EXPECT_EQ(kept->GetMaterial(), own);
    LayerObject* const layer = document()->GetLayerObjectRoot()->GetDown();
    ASSERT_TRUE(layer);
    EXPECT_EQ(layer->GetName(), String("Old Materials"));
    EXPECT_EQ(first->GetLayerObject(), layer);
    EXPECT_EQ(own->GetLayerObject(), nullptr);

    document()->DoUndo();
    EXPECT_EQ(onParent->GetMaterial(), first);
    EXPECT_EQ(names(document()->GetFirstMaterial()).size(), before);
    EXPECT_EQ(document()->GetLayerObjectRoot()->GetDown(), nullptr);
}

TEST_F(Convert, AsksWhenMaterialsAreSelected) {
    for (const bool answer : {true, false}) {
        BaseMaterial* const chosen = addStandard("Chosen");
        BaseMaterial* const other = addStandard("Other");
        chosen->SetBit(BIT_ACTIVE);
        host().user().addAnswer(answer);
        EXPECT_TRUE(ConvertMaterialsCommand().Execute(document()));
        ASSERT_FALSE(host().user().interactions().empty());
        EXPECT_EQ(host().user().interactions().back().text, "Convert only selected materials?");
        EXPECT_TRUE(chosen->GetLayerObject());
        EXPECT_EQ(other->GetLayerObject() != nullptr, !answer);
        document()->DoUndo();
        for (BaseMaterial* gone : {chosen, other}) {
            gone->Remove();
            BaseMaterial::Free(gone);
        }
    }
}

} // namespace
