// SPDX-License-Identifier: MIT
#include "headless/model/handles.h"
#include "host/preview.h"
#include "host/tag.h"
#include "host/videopost.h"
#include "materials/material_fixture.h"
#include "shared/plugin_state.h"

namespace {

/// What a render of the host was asked for, and what it is to end with.
struct RenderRecord {
    int count = 0;
    int32_t flags = 0;
    BaseThread* thread = nullptr;
    int32_t width = 0;
    float halt = 0.0f;
    int32_t result = RENDERRESULT_OK;
};
RenderRecord lastRender;

class RecordingVideoPost : public VideoPostData {
public:
    int32_t Execute(BaseVideoPost* /*videoPost*/, BaseContainer* container, VideoPostStruct* vps) override {
        if (vps->vp != VIDEOPOSTCALL_TILE || !vps->open) {
            return RENDERRESULT_OK;
        }
        VPBuffer* const buffer = vps->render->GetBuffer();
        lastRender = {lastRender.count + 1,
                      vps->renderflags,
                      vps->thread,
                      buffer->GetBw(),
                      container->GetReal(RS_HALT_SPP),
                      lastRender.result};
        return lastRender.result;
    }
};

class PlainTag : public TagData {};

class MaterialPreviews : public MaterialTest {
protected:
    MaterialPreviews() {
        lastRender = {};
        addType(PLUGINID_RENDER_SETTINGS, headless::NodeKind::videoPost, allocate<RecordingVideoPost>);
        addType(PLUGINID_LIGHT_TAG, headless::NodeKind::tag, allocate<PlainTag>);
        addType(PLUGINID_CAMERA_TAG, headless::NodeKind::tag, allocate<PlainTag>);
        pluginState().pluginPath = std::make_unique<Filename>("/plugin");
        stage = BaseDocument::Alloc();
    }
    ~MaterialPreviews() override {
        BaseDocument::Free(stage);
        pluginState().pluginPath.reset();
    }

    BaseObject* addToStage(const char* name, int32_t type, BaseObject* parent = nullptr) {
        BaseObject* const object = BaseObject::Alloc(type);
        object->SetName(name);
        stage->InsertObject(object, parent, parent ? nullptr : last_);
        last_ = parent ? last_ : object;
        return object;
    }
    BaseMaterial* addStageMaterial(const char* name) {
        BaseMaterial* const material = BaseMaterial::Alloc(Mmaterial);
        material->SetName(name);
        stage->InsertMaterial(material);
        return material;
    }
    bool setUp(BaseMaterial* material) {
        MatPreviewModifyCacheScene record{stage};
        return material->Message(MATPREVIEW_MODIFY_CACHE_SCENE, &record);
    }
    MatPreviewPrepareScene prepare(BaseMaterial* material) {
        MatPreviewPrepareScene record;
        record.previewDocument = stage;
        EXPECT_TRUE(material->Message(MATPREVIEW_PREPARE_SCENE, &record));
        return record;
    }
    std::vector<std::string> stageMaterials() const {
        std::vector<std::string> names;
        for (const BaseMaterial* material = stage->GetFirstMaterial(); material;
             material = material->GetNext()) {
            names.push_back(material->GetName().GetUtf8());
        }
        return names;
    }
    std::vector<BaseVideoPost*> videoPosts() const {
        std::vector<BaseVideoPost*> all;
        for (BaseVideoPost* post = stage->GetActiveRenderData()->GetFirstVideoPost(); post;
             post = post->GetNext()) {
            all.push_back(post);
        }
        return all;
    }

    BaseDocument* stage = nullptr;

private:
    BaseObject* last_ = nullptr;
};

/// The message's answer and the record's result.
struct Generated {
    bool answer;
    int32_t result;
    bool operator==(const Generated&) const = default;
};
void PrintTo(const Generated& generated, std::ostream* stream) {
    *stream << generated.answer << ", " << generated.result;
}

class GeneratedPreviews : public MaterialPreviews {
protected:
    GeneratedPreviews() : bitmap_(BaseBitmap::Alloc()) { bitmap_->Init(40, 30); }
    ~GeneratedPreviews() override { BaseBitmap::Free(bitmap_); }

    Generated generate(BaseMaterial* material, bool draft = false) {
        MatPreviewGenerateImage record;
        record.previewDocument = stage;
        record.bitmap = bitmap_;
        record.draft = draft ? 1 : 0;
        const bool answer = material->Message(MATPREVIEW_GENERATE_IMAGE, &record);
        return {answer, record.result};
    }
    BaseBitmap* bitmap() { return bitmap_; }

    static constexpr int32_t NOTHING = MatPreviewGenerateImage::RENDERRESULT_PREVIEW_PENDING;

private:
    BaseBitmap* bitmap_;
};

TEST_F(MaterialPreviews, TellTheHostThatTheyAreTheirOwn) {
    MatPreviewObjectInfo info;
    EXPECT_TRUE(addMaterial("a")->Message(MATPREVIEW_GET_OBJECT_INFO, &info));
    EXPECT_EQ(info.handlesPreview, 1);
    EXPECT_EQ(info.needsOwnScene, 1);
    EXPECT_EQ(info.flags, 4);
    EXPECT_FALSE(addMaterial("b")->Message(MATPREVIEW_GET_OBJECT_INFO));
}

TEST_F(MaterialPreviews, SetUpTheStageOnce) {
    addToStage("Sky", Onull);
    BaseObject* const early = addToStage("Window", Olight);
    BaseObject* const key = addToStage("Light", Olight);
    BaseObject* const group = addToStage("Rig", Onull);
    BaseObject* const fill = addToStage("Fill", Olight, group);
    BaseObject* const backdrop = addToStage("Polygon", Oplane);
    backdrop->SetMl(Matrix({1, 2, -300}, {2, 0, 0}, {0, 0, 1}, {0, -1, 0}));
    BaseObject* const camera = addToStage("Camera", Ocamera);
    headless::fromHost(stage)->view().setSceneCamera(headless::fromHost(camera));
    addStageMaterial("Environment");
    BaseMaterial* const floor = addStageMaterial("Floor");
    BaseMaterial* const material = addMaterial("a");
    ASSERT_TRUE(setUp(material));

    ASSERT_EQ(videoPosts().size(), 1u);
    EXPECT_FALSE(videoPosts().front()->GetBit(BIT_VPDISABLED));
    BaseList2D* const settings = videoPosts().front();
    BaseList2D* const cameraTag = camera->GetTag(PLUGINID_CAMERA_TAG);
    ASSERT_TRUE(cameraTag && key->GetTag(PLUGINID_LIGHT_TAG) && fill->GetTag(PLUGINID_LIGHT_TAG));
    const struct {
        BaseList2D* node;
        int32_t id;
        double value;
    } cases[] = {
        {settings, 1383, 1},     {settings, 1330, 100},     {settings, 1334, 1336},  {settings, 1433, 1},
        {settings, 1333, 0},     {settings, 1354, 1000000}, {settings, 1386, 1389},  {early, 90002, 8},
        {early, 100010, 400},    {fill, 90002, 8},          {fill, 100010, 400},     {fill, 100011, 400},
        {cameraTag, 1927, 64},   {cameraTag, 1926, 1000},   {cameraTag, 1945, 1948}, {cameraTag, 1942, 200},
        {cameraTag, 1943, -6.5}, {cameraTag, 1960, 2},      {cameraTag, 2001, 28},
    };
    for (const auto& expected : cases) {
        const GeData value = expected.node->GetDataInstance()->GetData(expected.id);
        const double number = value.GetType() == DA_REAL ? double(value.GetReal()) : double(value.GetLong());
        EXPECT_EQ(number, expected.value) << expected.id;
    }
    const struct {
        BaseObject* light;
        float gain;
    } lights[] = {{early, 0.0f}, {key, 0.0f}, {fill, 0.4f}};
    for (const auto& expected : lights) {
        const BaseContainer& tag = data(expected.light->GetTag(PLUGINID_LIGHT_TAG));
        EXPECT_EQ(tag.GetLong(1215), 1218);
        EXPECT_EQ(tag.GetReal(1225), expected.gain);
    }
    EXPECT_EQ(backdrop->GetMl(), Matrix({1, 2, 800}, {2, 0, 0}, {0, 0, 1}, {0, -1, 0}));
    EXPECT_EQ(stageMaterials(), std::vector<std::string>{"Floor"});
    EXPECT_EQ(stage->GetFirstObject(), early) << "the sky is gone";
    const BaseList2D* const picture = data(floor).GetLink(8000, stage);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->GetDataInstance()->GetFilename(1000),
              Filename(String("/plugin" + Quenza::nativeText("/res/previewBackground.jpg"))));

    // The settings that are there stay as they are.
    data(settings).SetLong(1330, 7);
    ASSERT_TRUE(setUp(material));
    EXPECT_EQ(videoPosts(), std::vector{static_cast<BaseVideoPost*>(settings)});
    EXPECT_EQ(data(settings).GetLong(1330), 7);
    EXPECT_FALSE(key->GetTag(PLUGINID_LIGHT_TAG, 1));
    EXPECT_FALSE(camera->GetTag(PLUGINID_CAMERA_TAG, 1));
}

TEST_F(MaterialPreviews, SetUpAnEmptyStage) {
    BaseMaterial* const material = addMaterial("a");
    EXPECT_TRUE(setUp(material));
    BaseDocument::Free(stage);
    EXPECT_FALSE(setUp(material));
    stage = nullptr;
}

/// The parts of a look, in the order in which they are cloned, by the links that lead to them.
TEST_F(MaterialPreviews, CloneAllThatAMaterialIsMadeOf) {
    const struct {
        int32_t kind;
        std::vector<int32_t> flags;
        std::vector<int32_t> used;
    } cases[] = {
        {MAT_KIND_DIFFUSE, {}, {}},
        {MAT_KIND_DIFFUSE, {6002, 6010}, {6259, 6330}},
        {MAT_KIND_BLEND, {}, {6259, 6269}},
        {MAT_KIND_COATING, {6002}, {6259, 6306}},
        {MAT_KIND_DOUBLE_SIDED_THIN, {}, {6325, 6326}},
        {MAT_KIND_SPECULAR, {}, {6330}},
        {MAT_KIND_GLOSSY_TRANSPARENT, {}, {6330}},
        {MAT_KIND_DIFFUSE_TRANSMITTER, {6010}, {6330}},
    };
    for (const auto& expected : cases) {
        BaseMaterial* const material = addMaterial("top", expected.kind);
        data(material).SetBool(MAT_BLEND_ENABLED, false);
        for (const int32_t flag : expected.flags) {
            data(material).SetBool(flag, true);
        }
        for (const int32_t link : {6259, 6269, 6306, 6325, 6326, 6330}) {
            data(material).SetLink(link, addOtherMaterial(std::to_string(link).c_str(), Mmaterial));
        }
        stage = (BaseDocument::Free(stage), BaseDocument::Alloc());
        const MatPreviewPrepareScene record = prepare(material);
        std::vector<std::string> names{"top"};
        for (const int32_t link : expected.used) {
            names.push_back(std::to_string(link));
            EXPECT_EQ(data(record.material).GetLink(link, nullptr)->GetDocument(), stage) << link;
        }
        EXPECT_EQ(stageMaterials(), names) << expected.kind;
        EXPECT_EQ(data(material).GetLink(6259, nullptr)->GetDocument(), document()) << "the artist's stays";
    }
}

TEST_F(MaterialPreviews, CloneCirclesAndLongChains) {
    BaseMaterial* const first = addMaterial("0", MAT_KIND_COATING);
    BaseMaterial* last = first;
    constexpr int COUNT = 3000;
    for (int i = 1; i < COUNT; ++i) {
        BaseMaterial* const next = BaseMaterial::Alloc(PLUGINID_MATERIAL);
        data(next).SetLong(MAT_KIND, MAT_KIND_COATING);
        document()->InsertMaterial(next);
        data(last).SetLink(MAT_COATING_SUBSTRATE, next);
        last = next;
    }
    data(last).SetLink(MAT_COATING_SUBSTRATE, first);
    const BaseList2D* clone = prepare(first).material;
    EXPECT_EQ(stageMaterials().size(), size_t{COUNT});
    for (int i = 0; i < COUNT; ++i) {
        clone = clone->GetDataInstance()->GetLink(MAT_COATING_SUBSTRATE, stage);
        ASSERT_TRUE(clone) << i;
    }
    EXPECT_EQ(clone, stage->GetFirstMaterial());
}

TEST_F(MaterialPreviews, PutTheCloneOnTheObject) {
    BaseObject* const group = addToStage("Group", Onull);
    BaseObject* const object = addToStage("Object", Osphere, group);
    auto* const texture = static_cast<TextureTag*>(object->MakeTag(Ttexture));
    BaseMaterial* const material = addMaterial("a");
    addBitmap(material, MAT_ALBEDO_SHADER, "a.png");

    MatPreviewPrepareScene record = prepare(material);
    EXPECT_EQ(record.sceneLoaded, 1);
    EXPECT_NE(record.material, material);
    EXPECT_EQ(record.material->GetDocument(), stage);
    EXPECT_EQ(texture->GetMaterial(), record.material);
    EXPECT_EQ(data(record.material).GetLink(MAT_ALBEDO_SHADER, stage), record.material->GetFirstShader());
    EXPECT_FALSE(stage->GetDocumentPath().Content());

    const Matrix turned({0, 5, 0}, {0, 0, -1}, {0, 1, 0}, {1, 0, 0});
    record.sourceDocument = document();
    record.sourceObject = object;
    EXPECT_TRUE(material->Message(MATPREVIEW_PREPARE_SCENE, &record));
    EXPECT_EQ(stage->GetDocumentPath(), document()->GetDocumentPath());
    EXPECT_EQ(object->GetMg(), Matrix()) << "the unit matrix turns nothing";
    record.matrix = turned;
    EXPECT_TRUE(material->Message(MATPREVIEW_PREPARE_SCENE, &record));
    EXPECT_EQ(object->GetMg(), turned);

    record = MatPreviewPrepareScene();
    EXPECT_FALSE(material->Message(MATPREVIEW_PREPARE_SCENE, &record));
    EXPECT_EQ(record.sceneLoaded, 0);
}

TEST_F(GeneratedPreviews, RenderAsLongAsTheQualityAsks) {
    const struct {
        int32_t quality;
        float samples;
    } cases[] = {{6033, 24}, {6034, 48}, {6035, 96}, {6332, 192}, {1, 48}};
    setUp(addMaterial("a"));
    for (const auto& expected : cases) {
        BaseMaterial* const material = addMaterial("b");
        data(material).SetLong(6032, expected.quality);
        EXPECT_EQ(generate(material), (Generated{true, RENDERRESULT_OK}));
        EXPECT_EQ(lastRender.halt, expected.samples) << expected.quality;
    }
    EXPECT_EQ(lastRender.count, 5);
    EXPECT_EQ(lastRender.flags, 9);
    EXPECT_EQ(lastRender.width, 40);
    const BaseContainer& settings = data(stage->GetActiveRenderData());
    EXPECT_EQ(settings.GetLong(5300), 1020896);
    EXPECT_EQ(settings.GetLong(5008), 40);
    EXPECT_EQ(settings.GetLong(5009), 30);
    EXPECT_EQ(settings.GetLong(5002), 1);

    generate(addMaterial("draft"), true);
    EXPECT_EQ(settings.GetLong(5300), 1) << "the host's own engine draws drafts";
    EXPECT_EQ(lastRender.count, 5);
}

/// Once there is nothing to render, the material isn't asked again, whatever becomes of it; a copy is.
TEST_F(GeneratedPreviews, GiveUpForGood) {
    BaseMaterial* const partner = addMaterial("partner");
    BaseMaterial* const unwanted = addMaterial("unwanted");
    data(unwanted).SetLong(6032, 6331);
    BaseMaterial* const half = addMaterial("half", MAT_KIND_BLEND);
    data(half).SetLink(6259, partner);
    EXPECT_EQ(generate(partner), (Generated{true, 2})) << "without the plug-in's render settings";
    setUp(partner);
    EXPECT_EQ(generate(unwanted), (Generated{true, 2}));
    EXPECT_EQ(generate(half), (Generated{true, 2}));

    data(unwanted).SetLong(6032, 6033);
    data(half).SetLink(6269, partner);
    for (BaseMaterial* const material : {partner, unwanted, half}) {
        EXPECT_EQ(generate(material), (Generated{false, NOTHING}));
        EXPECT_EQ(lastRender.count, 0);
        auto* copy = static_cast<BaseMaterial*>(material->GetClone());
        document()->InsertMaterial(copy);
        EXPECT_EQ(generate(copy), (Generated{true, RENDERRESULT_OK}));
        lastRender = {};
    }

    BaseMaterial* const refused = addMaterial("refused");
    for (const int32_t result : {RENDERRESULT_FAILED, RENDERRESULT_USERBREAK, RENDERRESULT_NOMACHINE}) {
        lastRender.result = result;
        EXPECT_EQ(generate(refused), (Generated{true, result}));
    }
    EXPECT_EQ(generate(refused), (Generated{false, NOTHING}));
    EXPECT_EQ(lastRender.count, 3);
}

TEST_F(GeneratedPreviews, RenderNothingOnceTheyAreCalledOff) {
    BaseMaterial* const material = addMaterial("a");
    setUp(material);
    MatPreviewGenerateImage record;
    record.bitmap = bitmap();
    EXPECT_TRUE(material->Message(MATPREVIEW_GENERATE_IMAGE, &record));
    record.previewDocument = stage;
    record.abort = 1;
    EXPECT_TRUE(material->Message(MATPREVIEW_GENERATE_IMAGE, &record));
    EXPECT_EQ(record.result, NOTHING);
    EXPECT_EQ(lastRender.count, 0);
}

} // namespace
