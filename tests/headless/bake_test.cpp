// SPDX-License-Identifier: MIT
#include "headless/bake/bake.h"

#include "host/bake.h"
#include "host/bitmap.h"
#include "host/plugin_data.h"
#include "host/tag.h"
#include "model_fixture.h"

#include <array>
#include <atomic>

// The texture baker, through the host's interface.

namespace headless {

namespace {

class BakeTest : public ModelTest {
protected:
    BakeTest() : bitmap_(BaseBitmap::Alloc()) {
        material_ = BaseMaterial::Alloc(Mmaterial);
        doc()->InsertMaterial(material_);
        settings_.SetBool(BAKE_TEX_COLOR, true);
        settings_.SetLong(BAKE_TEX_WIDTH, 16);
        settings_.SetLong(BAKE_TEX_HEIGHT, 8);
    }
    ~BakeTest() override { BaseBitmap::Free(bitmap_); }

    BaseShader* link(BaseShader* shader) const {
        material_->InsertShader(shader);
        material_->GetDataInstance()->SetLink(MATERIAL_COLOR_SHADER, shader);
        return shader;
    }
    ::TextureTag* addTexture(BaseObject* object) const {
        auto* const tag = static_cast<::TextureTag*>(object->MakeTag(Ttexture));
        tag->SetMaterial(material_);
        return tag;
    }
    /// A quad whose texture coordinates are a part of the texture space.
    ::PolygonObject* addPatch(float left, float top, float right, float bottom) {
        ::PolygonObject* const quad = addQuad();
        ::UVWTag* const uvw = ::UVWTag::Alloc(1);
        uvw->Set(0, {{left, bottom, 0.0f}, {left, top, 0.0f}, {right, top, 0.0f}, {right, bottom, 0.0f}});
        quad->InsertTag(uvw);
        return quad;
    }
    int32_t bake(::TextureTag* texture, BaseThread* thread = nullptr) {
        int32_t error = -1;
        BaseDocument* copy = InitBakeTexture(doc(), texture, nullptr, settings_, &error, thread);
        EXPECT_EQ(copy == nullptr, error != BAKE_TEX_ERR_NONE);
        if (copy) {
            error = BakeTexture(copy, settings_, bitmap_, thread);
            BaseDocument::Free(copy);
        }
        return error;
    }
    std::array<int, 3> pixel(int32_t x, int32_t y) const {
        const uint8_t* const row = bitmap_->GetRow(y);
        return {row[3 * x], row[3 * x + 1], row[3 * x + 2]};
    }

    BaseMaterial* material_;
    BaseBitmap* bitmap_;
    BaseContainer settings_;
};

using Pixel = std::array<int, 3>;

TEST_F(BakeTest, IslandsGetTheirBorderAndTheRestStaysBlack) {
    material_->GetDataInstance()->SetVector(MATERIAL_COLOR_COLOR, {1.0f, 0.5f, 0.25f});
    ::TextureTag* const tag = addTexture(addPatch(0.25f, 0.25f, 0.5f, 0.5f));
    const Pixel colour{255, 128, 64};
    const auto coveredAround = [&](int32_t border) {
        settings_.SetLong(BAKE_TEX_PIXELBORDER, border);
        EXPECT_EQ(bake(tag), BAKE_TEX_ERR_NONE);
        int count = 0;
        for (int32_t y = 0; y < 8; ++y) {
            for (int32_t x = 0; x < 16; ++x) {
                const bool isInside = x >= 4 - border && x < 8 + border && y >= 2 - border && y < 4 + border;
                EXPECT_EQ(pixel(x, y), isInside ? colour : Pixel{}) << border << ": " << x << ", " << y;
                count += isInside ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_EQ(coveredAround(0), 8);
    EXPECT_EQ(coveredAround(1), 24);
    EXPECT_EQ(coveredAround(3), 70);
    coveredAround(1'000'000);
}

TEST_F(BakeTest, ErrorsSayWhatIsMissing) {
    int32_t error = 0;
    ::TextureTag* const tag = addTexture(add(Oplane));
    EXPECT_EQ(InitBakeTexture(nullptr, tag, nullptr, settings_, &error), nullptr);
    EXPECT_EQ(error, BAKE_TEX_ERR_NO_DOC);
    EXPECT_EQ(bake(nullptr), BAKE_TEX_ERR_NO_TEXTURE_TAG);
    EXPECT_EQ(bake(addTexture(addQuad())), BAKE_TEX_ERR_NO_UVW_TAG);
    EXPECT_EQ(BakeTexture(doc(), settings_, bitmap_), BAKE_TEX_ERR_NO_RENDER_DOC);
    settings_.SetLong(BAKE_TEX_WIDTH, 0);
    EXPECT_EQ(bake(tag), BAKE_TEX_ERR_NO_BITMAP);
    settings_.SetLong(BAKE_TEX_WIDTH, 1'000'000);
    EXPECT_EQ(bake(tag), BAKE_TEX_ERR_NO_BITMAP);
    tag->SetMaterial(nullptr);
    EXPECT_EQ(bake(tag), BAKE_TEX_ERR_NO_MATERIAL);
}

/// Samples until it was cancelled; the host has to notice.
class EndlessShader : public ShaderData {
public:
    static NodeData* make() { return new EndlessShader; }
    Vector Output(BaseShader*, const ChannelData&) override {
        ++samples;
        return {};
    }
    static inline std::atomic<int> samples{0};
};

TEST_F(BakeTest, ACancelledBakeStops) {
    NodeTypeInfo type;
    type.id = 999'002;
    type.kind = NodeKind::shader;
    type.allocator = EndlessShader::make;
    ASSERT_TRUE(NodeTypes::instance().add(std::move(type)));
    link(BaseShader::Alloc(999'002));
    ::TextureTag* const tag = addTexture(addPatch(0.0f, 0.0f, 1.0f, 1.0f));
    settings_.SetLong(BAKE_TEX_WIDTH, 1024);
    settings_.SetLong(BAKE_TEX_HEIGHT, 16384);
    int32_t error = 0;
    BaseDocument* copy = InitBakeTexture(doc(), tag, nullptr, settings_, &error);
    ASSERT_NE(copy, nullptr);
    auto& bakeDocument = dynamic_cast<BakeDocument&>(*fromHost(copy));
    EXPECT_EQ(bakeTexture(bakeDocument, settings_, *fromHost(bitmap_),
                          [] { return EndlessShader::samples > 10'000; }),
              BAKE_TEX_ERR_USERBREAK);
    EXPECT_LT(EndlessShader::samples, 1024 * 16384 / 2);
    BaseDocument::Free(copy);
    document.reset();
    NodeTypes::instance().removePluginTypes();
    document = std::make_unique<Document>();
}

} // namespace

} // namespace headless
