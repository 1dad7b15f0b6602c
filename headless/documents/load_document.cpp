// SPDX-License-Identifier: MIT
#include "headless/documents/load_document.h"

#include "foundation/string_utils.h"
#include "headless/documents/document_words.h"
#include "headless/documents/object_reader.h"
#include "headless/documents/parameter_reader.h"
#include "headless/import/import_model.h"
#include "headless/model/node_types.h"

namespace headless {

namespace {

void readHead(const JsonCursor& root) {
    root.expectKeys({"format", "version", "unit", "fps", "frame", "frames", "layers", "materials", "objects",
                     "camera", "renderData"});
    const JsonCursor format = root.at("format");
    if (format.text() != DOCUMENT_FORMAT) {
        format.fail(std::string("this is no document: \"") + DOCUMENT_FORMAT + "\" is expected");
    }
    const JsonCursor version = root.at("version");
    if (version.integer() != DOCUMENT_VERSION) {
        version.fail("version " + std::to_string(version.integer()) +
                     " is unknown; this program reads version " + std::to_string(DOCUMENT_VERSION));
    }
}

void readTimes(const JsonCursor& root, Document& document) {
    if (const auto fps = root.find("fps")) {
        document.setFps(fps->integer(1, 10000));
    }
    const int32_t fps = document.fps();
    document.time = BaseTime(0, fps);
    document.minTime = BaseTime(0, fps);
    document.maxTime = BaseTime(3.0 * fps, fps);
    if (const auto frame = root.find("frame")) {
        document.time = BaseTime(frame->integer(), fps);
    }
    if (const auto frames = root.find("frames")) {
        frames->expectCount(2);
        document.minTime = BaseTime(frames->at(size_t{0}).integer(), fps);
        document.maxTime = BaseTime(frames->at(size_t{1}).integer(), fps);
    }
}

void readLayer(const JsonCursor& cursor, Layer* parent, DocumentReading& reading) {
    cursor.expectKeys({"name", "view", "render", "manager", "children"});
    auto made = std::make_unique<Layer>();
    made->name = cursor.at("name").text();
    LayerData flags;
    static constexpr struct {
        const char* key;
        bool LayerData::*flag;
    } FLAGS[] = {
        {"view", &LayerData::view}, {"render", &LayerData::render}, {"manager", &LayerData::manager}};
    for (const auto& entry : FLAGS) {
        if (const auto value = cursor.find(entry.key)) {
            flags.*entry.flag = value->boolean();
        }
    }
    Layer& layer = parent ? parent->insertChild(std::move(made), parent->children().last())
                          : reading.document.appendLayer(std::move(made));
    layer.setOwnFlags(flags);
    if (!reading.layers.emplace(layer.name, &layer).second) {
        cursor.fail("there is a layer \"" + layer.name + "\" already");
    }
    if (const auto children = cursor.find("children")) {
        for (size_t i = 0, count = children->arraySize(); i < count; ++i) {
            readLayer(children->at(i), &layer, reading);
        }
    }
}

template <class Made>
std::unique_ptr<Made> makeByType(const JsonCursor& cursor, NodeKind kind,
                                 std::unique_ptr<Made> (*make)(int32_t)) {
    const std::string name = cursor.json().is_string() ? cursor.text() : std::to_string(cursor.integer());
    const NodeTypeInfo* const type = NodeTypes::instance().findByName(kind, name);
    if (!type) {
        cursor.fail("unknown type \"" + name + "\"; is the plug-in that defines it loaded?");
    }
    return make(type->id);
}

void readCommon(const JsonCursor& cursor, Node& node, DocumentReading& reading) {
    if (const auto id = cursor.find("id")) {
        reading.links.define(*id, node);
    }
    if (const auto name = cursor.find("name")) {
        node.name = name->text();
    }
    if (const auto parameters = cursor.find("parameters")) {
        readParameters(*parameters, node, reading.links);
    }
    if (const auto tracks = cursor.find("tracks")) {
        readTracks(*tracks, node, reading);
    }
}

void readMaterial(const JsonCursor& cursor, DocumentReading& reading) {
    cursor.expectKeys({"type", "id", "name", "parameters", "tracks", "shaders"});
    std::unique_ptr<Material> made = cursor.has("type")
                                         ? makeByType(cursor.at("type"), NodeKind::material, createMaterial)
                                         : createMaterial(Mmaterial);
    Material& material = reading.document.appendMaterial(std::move(made));
    if (const auto shaders = cursor.find("shaders")) {
        for (size_t i = 0, count = shaders->arraySize(); i < count; ++i) {
            const JsonCursor shader = shaders->at(i);
            shader.expectKeys({"type", "id", "name", "parameters", "tracks"});
            readCommon(shader,
                       material.insertShader(makeByType(shader.at("type"), NodeKind::shader, createShader),
                                             material.shaders().last()),
                       reading);
        }
    }
    readCommon(cursor, material, reading);
}

std::unique_ptr<VideoPost> makeVideoPost(const JsonCursor& cursor) {
    // The render settings of a plug-in that isn't loaded are kept: a plain node holds their parameters.
    if (cursor.json().is_number() && !NodeTypes::instance().find(cursor.integer())) {
        return std::make_unique<VideoPost>(cursor.integer());
    }
    return makeByType(cursor, NodeKind::videoPost, createVideoPost);
}

void readRenderData(const JsonCursor& cursor, RenderDataNode& renderData, DocumentReading& reading) {
    cursor.expectKeys(
        {"name", "active", "width", "height", "fps", "sequence", "from", "to", "parameters", "videoPosts"});
    BaseContainer& data = renderData.data;
    static constexpr struct {
        const char* key;
        int32_t id;
    } SIZES[] = {{"width", RDATA_XRES}, {"height", RDATA_YRES}};
    for (const auto& size : SIZES) {
        if (const auto value = cursor.find(size.key)) {
            data.SetLong(size.id, value->integer(1, 65536));
        }
    }
    const int32_t documentFps = reading.document.fps();
    data.SetReal(RDATA_FRAMERATE, static_cast<float>(documentFps));
    if (const auto fps = cursor.find("fps")) {
        data.SetReal(RDATA_FRAMERATE, static_cast<float>(fps->integer(1, 10000)));
    }
    if (const auto sequence = cursor.find("sequence")) {
        data.SetLong(RDATA_FRAMESEQUENCE, readWord(*sequence, FRAME_SEQUENCES));
    }
    if (const auto from = cursor.find("from")) {
        data.SetTime(RDATA_FRAMEFROM, BaseTime(from->integer(), documentFps));
    }
    if (const auto to = cursor.find("to")) {
        data.SetTime(RDATA_FRAMETO, BaseTime(to->integer(), documentFps));
    }
    readCommon(cursor, renderData, reading);
    if (const auto videoPosts = cursor.find("videoPosts")) {
        for (size_t i = 0, count = videoPosts->arraySize(); i < count; ++i) {
            const JsonCursor entry = videoPosts->at(i);
            entry.expectKeys({"type", "id", "name", "enabled", "parameters", "tracks"});
            VideoPost& videoPost = renderData.appendVideoPost(makeVideoPost(entry.at("type")));
            const auto enabled = entry.find("enabled");
            if (enabled && !enabled->boolean()) {
                videoPost.info |= BIT_VPDISABLED;
            }
            readCommon(entry, videoPost, reading);
        }
    }
}

void readRenderSetups(const JsonCursor& setups, DocumentReading& reading) {
    Document& document = reading.document;
    for (size_t i = 0, count = setups.arraySize(); i < count; ++i) {
        const JsonCursor setup = setups.at(i);
        // A new document has one already.
        RenderDataNode& renderData =
            i == 0 && document.activeRenderData()
                ? *document.activeRenderData()
                : document.insertRenderData(std::make_unique<RenderDataNode>(), document.renderData().last());
        readRenderData(setup, renderData, reading);
        const auto active = setup.find("active");
        if (active && active->boolean()) {
            document.setActiveRenderData(renderData);
        }
    }
}

void readScene(const JsonCursor& root, DocumentReading& reading) {
    if (const auto layers = root.find("layers")) {
        for (size_t i = 0, count = layers->arraySize(); i < count; ++i) {
            readLayer(layers->at(i), nullptr, reading);
        }
    }
    if (const auto materials = root.find("materials")) {
        for (size_t i = 0, count = materials->arraySize(); i < count; ++i) {
            readMaterial(materials->at(i), reading);
        }
    }
    if (const auto objects = root.find("objects")) {
        readObjects(*objects, reading);
    }
    if (const auto camera = root.find("camera")) {
        Document& document = reading.document;
        reading.links.link(*camera, Obase, [&document](Node& node) {
            document.view().setSceneCamera(static_cast<Object*>(&node));
        });
    }
    if (const auto setups = root.find("renderData")) {
        readRenderSetups(*setups, reading);
    }
    reading.links.resolve();
}

void setOrigin(Document& document, const std::string& file) {
    const Filename path{String(file)};
    document.path = path.GetDirectory();
    document.fileName = path.GetFile();
}

} // namespace

LoadedDocument loadDocument(const std::string& file) {
    const Json json = loadJson(file);
    const JsonCursor root(json, file);
    readHead(root);
    LoadedDocument loaded;
    loaded.document = std::make_unique<Document>();
    setOrigin(*loaded.document, file);
    if (const auto unit = root.find("unit")) {
        loaded.unit = readWord(*unit, UNITS);
    }
    readTimes(root, *loaded.document);
    DocumentReading reading{*loaded.document, {}, {}};
    readScene(root, reading);
    return loaded;
}

LoadedDocument openDocument(const std::string& file) {
    const Filename path{String(file)};
    if (path.CheckSuffix("json")) {
        return loadDocument(file);
    }
    LoadedDocument loaded;
    loaded.document = importModel(file);
    return loaded;
}

} // namespace headless
