// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"

#include "headless/build/caches.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "host/ids.h"
#include "scene/scene_node_render_settings.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "support/quiet_host.h"

namespace {

constexpr int32_t METRES = 2;

void addPluginTypes() {
    using headless::NodeKind;
    const std::pair<int32_t, NodeKind> types[] = {
        {PLUGINID_EXIT_PORTAL_TAG, NodeKind::tag},
        {PLUGINID_CAMERA_TAG, NodeKind::tag},
        {PLUGINID_SUBDIVISION_TAG, NodeKind::tag},
        {PLUGINID_COMPOSITING_TAG, NodeKind::tag},
        {PLUGINID_INSTANCE, NodeKind::object},
        {PLUGINID_SECTION_PLANE, NodeKind::object},
        {PLUGINID_LIGHT_TAG, NodeKind::tag},
        {PLUGINID_MATERIAL, NodeKind::material},
        {PLUGINID_RENDER_SETTINGS, NodeKind::videoPost},
    };
    for (const auto& [id, kind] : types) {
        headless::NodeTypeInfo type;
        type.id = id;
        type.kind = kind;
        type.name = std::to_string(id);
        headless::NodeTypes::instance().add(type);
    }
}

std::string string(const Quenza::String& text) {
    return text.toStdString();
}

} // namespace

ExporterTest::ExporterTest() : host_(std::make_unique<headless::Host>(quietHost())) {
    addPluginTypes();
    host_->worldPreferences().SetLong(WPREF_UNITS_BASIC, METRES);
    host_->open(std::make_unique<headless::Document>());
}

ExporterTest::~ExporterTest() {
    exporter_.reset();
    context_.reset();
    root_ = nullptr;
    host_.reset();
    headless::NodeTypes::instance().removePluginTypes();
}

BaseDocument* ExporterTest::document() const {
    return headless::toHost(host_->document());
}

BaseObject* ExporterTest::add(int32_t type, const char* name, BaseObject* parent) {
    std::unique_ptr<headless::Object> object = headless::createObject(type);
    object->name = name;
    return headless::toHost(&append(std::move(object), parent));
}

headless::Object& ExporterTest::append(std::unique_ptr<headless::Object> object, BaseObject* parent) {
    return parent ? headless::fromHost(parent)->appendChild(std::move(object))
                  : host_->document()->appendObject(std::move(object));
}

PolygonObject* ExporterTest::addQuad(const char* name, BaseObject* parent) {
    auto quad = headless::createPolygons(4, 1);
    quad->name = name;
    quad->points = {{0, 0, 0}, {0, 0, 1}, {1, 0, 1}, {1, 0, 0}};
    quad->polygons = {CPolygon(0, 1, 2, 3)};
    return static_cast<PolygonObject*>(headless::toHost(&append(std::move(quad), parent)));
}

PolygonObject* ExporterTest::addStrip(const char* name, int32_t polygonCount) {
    auto strip = headless::createPolygons(0, 0);
    strip->name = name;
    for (int32_t i = 0; i <= polygonCount; ++i) {
        strip->points.insert(strip->points.end(), {Vector(float(i), 0, 0), Vector(float(i), 0, 1)});
    }
    for (int32_t i = 0; i < polygonCount; ++i) {
        strip->polygons.emplace_back(2 * i, 2 * i + 1, 2 * i + 3, 2 * i + 2);
    }
    return static_cast<PolygonObject*>(headless::toHost(&append(std::move(strip), nullptr)));
}

BaseObject* ExporterTest::addCube(const char* name, BaseObject* parent) {
    return add(Ocube, name, parent);
}

BaseObject* ExporterTest::addInstance(const char* name, BaseObject* link, BaseObject* parent) {
    BaseObject* const instance = add(Oinstance, name, parent);
    instance->GetDataInstance()->SetLink(INSTANCEOBJECT_LINK, link);
    instance->GetDataInstance()->SetBool(INSTANCEOBJECT_RENDERINSTANCE, true);
    return instance;
}

BaseTag* ExporterTest::addTag(BaseObject* object, int32_t type) {
    return object->MakeTag(type);
}

BaseMaterial* ExporterTest::addMaterial(int32_t type, const char* name) {
    BaseMaterial* const material = BaseMaterial::Alloc(type);
    material->SetName(name);
    document()->InsertMaterial(material);
    return material;
}

BaseContainer& ExporterTest::addVideoPost() {
    BaseVideoPost* const videoPost = BaseVideoPost::Alloc(PLUGINID_RENDER_SETTINGS);
    document()->GetActiveRenderData()->InsertVideoPost(videoPost);
    return *videoPost->GetDataInstance();
}

TextureTag* ExporterTest::addTexture(BaseObject* object, const char* restriction) {
    auto* const tag = static_cast<TextureTag*>(object->MakeTag(Ttexture));
    tag->GetDataInstance()->SetLong(TEXTURETAG_PROJECTION, P_UVW);
    tag->GetDataInstance()->SetString(TEXTURETAG_RESTRICTION, restriction);
    return tag;
}

UVWTag* ExporterTest::addUvw(PolygonObject* object) {
    UVWTag* const tag = UVWTag::Alloc(object->GetPolygonCount());
    for (int32_t i = 0; i < object->GetPolygonCount(); ++i) {
        UVWStruct uvw;
        for (int32_t c = 0; c < 4; ++c) {
            (&uvw.a)[c] = Vector(float(i) + float(c) / 4.0f, float(c), 0.0f);
        }
        tag->Set(i, uvw);
    }
    object->InsertTag(tag, object->GetLastTag());
    return tag;
}

SelectionTag* ExporterTest::addSelection(PolygonObject* object, const char* name,
                                         const std::vector<int32_t>& polygons) {
    auto* const tag = static_cast<SelectionTag*>(object->MakeTag(Tpolygonselection));
    tag->SetName(name);
    for (const int32_t polygon : polygons) {
        tag->GetBaseSelect()->Select(polygon);
    }
    return tag;
}

void ExporterTest::hide(BaseObject* object) const {
    headless::fromHost(object)->renderMode = MODE_OFF;
}

void ExporterTest::setInvisible(BaseObject* object, bool isInvisible) {
    addTag(object, PLUGINID_COMPOSITING_TAG)
        ->GetDataInstance()
        ->SetBool(COMPOSITING_INVISIBLE_TO_CAMERA, isInvisible);
}

void ExporterTest::move(BaseObject* object, const Vector& offset) {
    Matrix matrix = object->GetMl();
    matrix.off = offset;
    object->SetMl(matrix);
}

void ExporterTest::scale(BaseObject* object, const Vector& factors) {
    Matrix matrix = object->GetMl();
    matrix.axisX = matrix.axisX * factors.x;
    matrix.axisY = matrix.axisY * factors.y;
    matrix.axisZ = matrix.axisZ * factors.z;
    object->SetMl(matrix);
}

ExportContext& ExporterTest::makeContext() {
    const Filename scenePath(String((folder() / "scene.qzs").string()));
    context_ =
        std::make_unique<ExportContext>(document(), scenePath, nullptr, options.frame, 640, 480,
                                        options.isAnimation, options.mergeVertices, options.verbose, false);
    context_->gpuRendering = options.gpuRendering;
    context_->overrideMaterials = options.overrideMaterials;
    return *context_;
}

void ExporterTest::exportScene() {
    ASSERT_TRUE(headless::buildCaches(*host_->document()));
    exporter_ = std::make_unique<SceneExporter>();
    exporter_->context = &makeContext();
    root_ = exporter_->exportScene();
    ASSERT_TRUE(root_);
    root_->checkValidity();
}

std::string ExporterTest::modelNames() const {
    std::string names;
    for (const Quenza::SceneNodeModel* const node : models()) {
        names += (names.empty() ? "" : " ") + string(node->getName());
    }
    return names;
}

std::vector<std::string> ExporterTest::layerNames() const {
    std::vector<std::string> names;
    for (const auto* const node : nodes<Quenza::SceneNodeRenderSettings>(Quenza::NODE_RENDER_SETTINGS)) {
        for (const auto& layer : node->layer_settings) {
            names.push_back(string(layer->name));
        }
    }
    return names;
}

Quenza::SceneNodeModel* ExporterTest::model(const std::string& name) const {
    for (Quenza::SceneNodeModel* const node : models()) {
        if (string(node->getName()) == name) {
            return node;
        }
    }
    ADD_FAILURE() << "There is no model " << name;
    return nullptr;
}

const Quenza::Mesh& ExporterTest::meshOf(const std::string& name) const {
    Quenza::SceneNode* const node = root_->getChildByUID(model(name)->geometry_uid);
    return *static_cast<Quenza::SceneNodeMesh*>(node)->mesh;
}
