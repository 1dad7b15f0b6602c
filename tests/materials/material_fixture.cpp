// SPDX-License-Identifier: MIT
#include "materials/material_fixture.h"

#include "headless/model/handles.h"
#include "host/bitmap.h"
#include "host/ids.h"
#include "materials/file_names.h"
#include "materials/material_export.h"
#include "materials/material_update.h"
#include "materials/qsl_blend_shader.h"
#include "materials/qsl_gradient_shader.h"
#include "materials/qsl_noise_shader.h"
#include "materials/qsl_normal_shader.h"
#include "materials/qsl_program_shader.h"
#include "materials/quenza_material.h"
#include "scene/ostream.h"
#include "scene/scene_node_material.h"
#include "support/quiet_host.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

void addType(int32_t id, headless::NodeKind kind, NodeDataAllocator allocator) {
    headless::NodeTypeInfo type;
    type.id = id;
    type.kind = kind;
    type.name = std::to_string(id);
    type.allocator = allocator;
    headless::NodeTypes::instance().add(type);
}

namespace {

constexpr int32_t METRES = 2;

void addPluginTypes() {
    using enum headless::NodeKind;
    addType(PLUGINID_MATERIAL, material, allocate<QuenzaMaterial>);
    addType(PLUGINID_QSL_SHADER, shader, allocate<QSLProgramShader>);
    addType(PLUGINID_QSL_NOISE, shader, allocate<QSLNoiseShader>);
    addType(PLUGINID_QSL_BLEND, shader, allocate<QSLBlendShader>);
    addType(PLUGINID_QSL_GRADIENT, shader, allocate<QSLGradientShader>);
    addType(PLUGINID_QSL_NORMAL, shader, allocate<QSLNormalShader>);
}

} // namespace

MaterialTest::MaterialTest() : host_(std::make_unique<headless::Host>(quietHost())) {
    addPluginTypes();
    host_->worldPreferences().SetLong(WPREF_UNITS_BASIC, METRES);
    host_->open(std::make_unique<headless::Document>());
    document()->SetDocumentPath(Filename(String(folder())));
}

MaterialTest::~MaterialTest() {
    endExport();
    host_.reset();
    headless::NodeTypes::instance().removePluginTypes();
}

BaseDocument* MaterialTest::document() const {
    return headless::toHost(host_->document());
}

BaseMaterial* MaterialTest::addOtherMaterial(const char* name, int32_t type) {
    BaseMaterial* const material = BaseMaterial::Alloc(type);
    material->SetName(name);
    BaseMaterial* last = document()->GetFirstMaterial();
    while (last && last->GetNext()) {
        last = last->GetNext();
    }
    document()->InsertMaterial(material, last);
    return material;
}

BaseMaterial* MaterialTest::addMaterial(const char* name, int32_t kind) {
    BaseMaterial* const material = addOtherMaterial(name, PLUGINID_MATERIAL);
    data(material).SetLong(MAT_KIND, kind);
    updateMaterial(material);
    return material;
}

BaseShader* MaterialTest::addShader(BaseMaterial* material, int32_t link, int32_t type) {
    BaseShader* const shader = BaseShader::Alloc(type);
    material->InsertShader(shader);
    data(material).SetLink(link, shader);
    return shader;
}

BaseShader* MaterialTest::addBitmap(BaseMaterial* material, int32_t link, const char* file) {
    BaseShader* const shader = addShader(material, link, Xbitmap);
    data(shader).SetFilename(BITMAPSHADER_FILENAME, Filename(file));
    return shader;
}

std::string MaterialTest::addImageFile(const char* name) const {
    const std::filesystem::path path = std::filesystem::path(folder()) / name;
    std::filesystem::create_directories(path.parent_path());
    BaseBitmap* image = BaseBitmap::Alloc();
    EXPECT_EQ(image->Init(2, 2), IMAGERESULT_OK);
    EXPECT_EQ(image->Save(Filename(String(path.string())), FILTER_PNG, nullptr, SAVEBIT_0), IMAGERESULT_OK);
    BaseBitmap::Free(image);
    return Quenza::nativeText(path.string());
}

std::string MaterialTest::golden(const char* name, const std::string& text) {
    const std::string path = std::string(QUENZA_SOURCE_DIR "/tests/materials/golden/") + name;
    if (std::getenv("QUENZA_WRITE_GOLDEN")) {
        Quenza::writeBytes(path, text);
    }
    return Quenza::fileBytes(path);
}

ExportContext& MaterialTest::context() {
    if (!context_) {
        const Filename scenePath(String(folder() + "/scene.qzs"));
        context_ = std::make_unique<ExportContext>(document(), scenePath, extraFiles, 0, 640, 480, false,
                                                   true, false, isMaterialPreview);
        context_->overrideMaterials = overrideMaterials;
        scene_ = new Quenza::SceneNodeRoot;
        exportNullMaterial(*scene_, *context_);
    }
    return *context_;
}

void MaterialTest::endExport() {
    context_.reset();
    scene_ = nullptr;
}

Quenza::SceneNodeUID MaterialTest::exportMaterial(BaseMaterial* material) {
    ExportContext& exported = context();
    return getMaterialUID(material, *scene_, exported);
}

std::string MaterialTest::xml() const {
    std::string text;
    for (const Quenza::Ref<Quenza::SceneNode>& node : scene_->getChildren()) {
        text += xml(node->getUID());
    }
    return text;
}

std::string MaterialTest::xml(Quenza::SceneNodeUID uid) const {
    Quenza::BufferOStream stream;
    scene_->getChildByUID(uid)->writeToXML(stream, 0, Quenza::XMLWriteOptions());
    return replaceAll(String(stream.getBuffer().toStdString()), String(Quenza::nativeText(folder() + "/")),
                      "")
        .GetUtf8();
}

std::string MaterialTest::nodeNames() const {
    std::string names;
    for (const Quenza::Ref<Quenza::SceneNode>& node : scene_->getChildren()) {
        const auto* const material = dynamic_cast<const Quenza::SceneNodeMaterial*>(node.getPointer());
        const std::string type = !material            ? "medium"
                                 : material->material ? material->material->getTypeName().toStdString()
                                                      : "nothing";
        names += node->getUID().toString().toStdString() + " " + node->getName().toStdString() + ": " + type +
                 "\n";
    }
    return names;
}

std::vector<std::string> MaterialTest::textureFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(context_->textureDirectory.GetUtf8())) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}
