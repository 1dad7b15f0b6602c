// SPDX-License-Identifier: MIT
#include "headless/shaders/shader_sampling.h"

#include "headless/images/image_files.h"
#include "headless/model/warnings.h"
#include "headless/shaders/blend_mode.h"
#include "headless/shaders/shader_ids.h"
#include "model_fixture.h"
#include "support/temp_dir.h"

// Shaders of the host, sampled as a plug-in does.

namespace headless {

namespace {

class ShadersTest : public ModelTest {
protected:
    ShadersTest() {
        material_ = BaseMaterial::Alloc(Mmaterial);
        doc()->InsertMaterial(material_);
        setWarningSink([this](const std::string& text) { warnings_.push_back(text); });
    }
    ~ShadersTest() override { setWarningSink({}); }

    BaseShader* addShader(int32_t type) const {
        BaseShader* const shader = BaseShader::Alloc(type);
        material_->InsertShader(shader);
        return shader;
    }
    static BaseContainer& data(BaseShader* shader) { return *shader->GetDataInstance(); }
    /// A gradient between two colours.
    BaseShader* addGradient(const Vector& from, const Vector& to, int32_t type = GRADIENT_TYPE_U) const {
        BaseShader* const shader = addShader(Xgradient);
        data(shader).SetVector(GRADIENT_COLOR1, from);
        data(shader).SetVector(GRADIENT_COLOR2, to);
        data(shader).SetLong(GRADIENT_TYPE, type);
        return shader;
    }
    InitRenderStruct init() const {
        InitRenderStruct init;
        init.document = doc();
        return init;
    }
    static Vector at(BaseShader* shader, float u, float v) {
        ChannelData channel;
        channel.p = {u, v, 0.0f};
        return shader->Sample(channel);
    }
    /// One sample, made ready and freed.
    Vector once(BaseShader* shader, float u, float v) const {
        EXPECT_EQ(shader->InitRender(init()), INITRENDERRESULT_OK);
        const Vector value = at(shader, u, v);
        shader->FreeRender();
        return value;
    }

    BaseMaterial* material_;
    std::vector<std::string> warnings_;
};

TEST_F(ShadersTest, BitmapGoesOverLinearlyAndRepeats) {
#ifdef _WIN32
    GTEST_SKIP() << "without OpenImageIO no OpenEXR files are written";
#endif
    const Quenza::TempDir folder;
    Image image;
    ASSERT_EQ(image.init(2, 2, 96), IMAGERESULT_OK);
    image.setPixel(0, 0, {1.0f, 0.0f, 0.0f});
    image.setPixel(1, 0, {0.0f, 1.0f, 0.0f});
    image.setPixel(0, 1, {0.0f, 0.0f, 1.0f});
    image.setPixel(1, 1, {2.0f, 2.0f, 2.0f});
    ASSERT_EQ(writeImage((folder / "Image.exr").toStdString(), image, {.filter = FILTER_EXR}),
              IMAGERESULT_OK);
    document->path = Filename(String(folder.path().toStdString()));
    BaseShader* const bitmap = addShader(Xbitmap);
    data(bitmap).SetFilename(BITMAPSHADER_FILENAME, Filename("image.EXR"));
    const struct {
        float u, v;
        Vector expected;
    } cases[] = {
        {0.25f, 0.25f, {1.0f, 0.0f, 0.0f}},  {0.75f, 0.25f, {0.0f, 1.0f, 0.0f}},
        {0.25f, 0.75f, {0.0f, 0.0f, 1.0f}},  {0.5f, 0.25f, {0.5f, 0.5f, 0.0f}},
        {0.5f, 0.5f, {0.75f, 0.75f, 0.75f}}, {0.0f, 0.25f, {0.5f, 0.5f, 0.0f}},
        {1.25f, -0.75f, {1.0f, 0.0f, 0.0f}}, {1.0f, 1.0f, {0.75f, 0.75f, 0.75f}},
    };
    for (const auto& test : cases) {
        EXPECT_TRUE(isNear(once(bitmap, test.u, test.v), test.expected)) << test.u << ", " << test.v;
    }
    EXPECT_TRUE(warnings_.empty());
    data(bitmap).SetFilename(BITMAPSHADER_FILENAME, Filename("none.png"));
    EXPECT_EQ(once(bitmap, 0.5f, 0.5f), Vector());
    EXPECT_EQ(warnings_, std::vector<std::string>{"The texture none.png was not found"});
}

TEST_F(ShadersTest, FusionLayerAndColorizerJoinTheirLinks) {
    BaseShader* const base = addGradient({0.25f, 0.5f, 0.75f}, {0.25f, 0.5f, 0.75f});
    BaseShader* const over = addGradient({0.5f, 0.5f, 1.0f}, {0.5f, 0.5f, 1.0f});
    struct Case {
        int32_t mode;
        Vector expected;
    };
    const Case cases[] = {
        {BLEND_NORMAL, {0.5f, 0.5f, 1.0f}},       {BLEND_AVERAGE, {0.375f, 0.5f, 0.875f}},
        {BLEND_ADD, {0.75f, 1.0f, 1.75f}},        {BLEND_SUBTRACT, {-0.25f, 0.0f, -0.25f}},
        {BLEND_MULTIPLY, {0.125f, 0.25f, 0.75f}}, {BLEND_SCREEN, {0.625f, 0.75f, 1.0f}},
        {BLEND_LIGHTEN, {0.5f, 0.5f, 1.0f}},      {BLEND_DARKEN, {0.25f, 0.5f, 0.75f}},
        {BLEND_DIFFERENCE, {0.25f, 0.0f, 0.25f}}, {BLEND_OVERLAY, {0.25f, 0.5f, 1.0f}},
    };
    BaseShader* const fusion = addShader(Xfusion);
    data(fusion).SetLink(FUSION_BASE_CHANNEL, base);
    data(fusion).SetLink(FUSION_BLEND_CHANNEL, over);
    BaseShader* const layers = addShader(Xlayer);
    data(layers).SetLink(LAYER_1_SHADER, base);
    data(layers).SetLink(LAYER_1_SHADER + 7 * LAYER_STEP, over);
    data(layers).SetReal(LAYER_1_STRENGTH + 7 * LAYER_STEP, 0.5f);
    for (const Case& test : cases) {
        data(fusion).SetLong(FUSION_MODE, test.mode);
        EXPECT_TRUE(isNear(once(fusion, 0.5f, 0.5f), test.expected)) << test.mode;
        data(layers).SetLong(LAYER_1_MODE + 7 * LAYER_STEP, test.mode);
        EXPECT_TRUE(isNear(once(layers, 0.5f, 0.5f), mix({0.25f, 0.5f, 0.75f}, test.expected, 0.5f)))
            << test.mode;
    }
    data(fusion).SetLong(FUSION_MODE, BLEND_NORMAL);
    data(fusion).SetReal(FUSION_BLEND, 0.5f);
    data(fusion).SetLink(FUSION_MASK_CHANNEL, addGradient({}, {1.0f, 1.0f, 1.0f}));
    EXPECT_TRUE(isNear(once(fusion, 0.5f, 0.5f), {0.3125f, 0.5f, 0.8125f}));

    BaseShader* const colorizer = addShader(Xcolorizer);
    data(colorizer).SetLink(COLORIZER_SHADER, base);
    data(colorizer).SetLong(COLORIZER_INPUT, COLORIZER_INPUT_BLUE);
    data(colorizer).SetVector(COLORIZER_COLOR1, {1.0f, 0.0f, 0.0f});
    data(colorizer).SetVector(COLORIZER_COLOR2, {0.0f, 1.0f, 0.0f});
    EXPECT_TRUE(isNear(once(colorizer, 0.5f, 0.5f), {0.25f, 0.75f, 0.0f}));
    data(colorizer).SetLong(COLORIZER_INPUT, COLORIZER_INPUT_BRIGHTNESS);
    EXPECT_TRUE(isNear(once(colorizer, 0.5f, 0.5f), {0.546f, 0.454f, 0.0f}, 1e-3f));
}

TEST_F(ShadersTest, CirclesEnd) {
    BaseShader* const fusion = addShader(Xfusion);
    BaseShader* const colorizer = addShader(Xcolorizer);
    data(fusion).SetLink(FUSION_BASE_CHANNEL, colorizer);
    for (BaseShader* const linked : {fusion, colorizer}) {
        data(colorizer).SetLink(COLORIZER_SHADER, linked);
        EXPECT_EQ(once(fusion, 0.5f, 0.5f), Vector());
        EXPECT_EQ(once(colorizer, 0.5f, 0.5f), Vector());
    }
}

/// Each links the next twice: the samples of one sample double with each.
TEST_F(ShadersTest, LaddersOfLinksTakeNoTime) {
    BaseShader* next = addGradient({1.0f, 1.0f, 1.0f}, {1.0f, 1.0f, 1.0f});
    std::vector<BaseShader*> ladder;
    for (int i = 0; i < 300; ++i) {
        BaseShader* const fusion = addShader(Xfusion);
        data(fusion).SetLink(FUSION_BASE_CHANNEL, next);
        data(fusion).SetLink(FUSION_BLEND_CHANNEL, next);
        ladder.push_back(next = fusion);
    }
    EXPECT_EQ(once(ladder[10], 0.5f, 0.5f), Vector(1.0f, 1.0f, 1.0f));
    BaseShader* const top = ladder.back();
    EXPECT_EQ(top->InitRender(init()), INITRENDERRESULT_OK);
    EXPECT_EQ(at(top, 0.5f, 0.5f), Vector()) << "too costly shaders are left out";
    top->FreeRender();
    for (BaseShader* const shader : ladder) {
        EXPECT_EQ(fromHost(shader)->run, nullptr);
    }
}

} // namespace

} // namespace headless
