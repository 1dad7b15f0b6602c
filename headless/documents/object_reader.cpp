// SPDX-License-Identifier: MIT
#include "headless/documents/document_units.h"
#include "headless/documents/document_words.h"
#include "headless/documents/parameter_reader.h"
#include "headless/documents/part_readers.h"
#include "headless/import/import_model.h"

#include <deque>

namespace headless {

namespace {

/// The children of an object that are still to be read.
struct Level {
    JsonCursor object;
    std::optional<JsonCursor> children;
    Object* parent;
    size_t next = 0;
};

/// Brings a model file's objects below `parent` and its materials into the document.
void insertModel(const JsonCursor& path, Object& parent, const std::string& id, DocumentReading& reading) {
    const std::string file = readPath(path).GetUtf8();
    const std::unique_ptr<Document> model =
        importModel(file, reading.warnings, reading.modelTextures.next(file));
    while (Material* const material = model->materials().first()) {
        reading.document.appendMaterial(
            std::unique_ptr<Material>(static_cast<Material*>(removeNode(*material).release())));
    }
    while (Object* const object = model->objects().first()) {
        parent.appendChild(std::unique_ptr<Object>(static_cast<Object*>(removeNode(*object).release())));
    }
    for (Object* object = parent.nextInBranch(parent); object; object = object->nextInBranch(parent)) {
        reading.links.defineImported(id + "/" + object->name, *object);
    }
}

std::unique_ptr<Object> makeObject(const JsonCursor& cursor) {
    const bool isModel = cursor.has("model");
    const bool hasPolygons = cursor.has("polygons") || cursor.has("points") || cursor.has("brokenEdges");
    if (isModel && hasPolygons) {
        cursor.fail("a \"model\" has no \"points\", \"polygons\" or \"brokenEdges\" of its own");
    }
    const int32_t implied = isModel ? Onull : hasPolygons ? Opolygon : 0;
    const auto type = cursor.find("type");
    const int32_t id =
        type || implied == 0 ? readType(cursor.at("type"), NodeKind::object, "object").id : implied;
    if (implied != 0 && id != implied) {
        type->fail(isModel ? "an object with a \"model\" is a Null" : "only a Polygon object has points");
    }
    return hasPolygons ? readPolygons(cursor) : createObject(id);
}

void readTransform(const JsonCursor& cursor, Object& object) {
    if (const auto matrix = cursor.find("matrix")) {
        object.matrix = readMatrix(*matrix);
        return;
    }
    LocalTransform transform;
    if (const auto position = cursor.find("position")) {
        transform.position = readVector(*position);
    }
    if (const auto rotation = cursor.find("rotation")) {
        transform.rotation = readAngles(*rotation);
    }
    if (const auto scale = cursor.find("scale")) {
        transform.scale = readVector(*scale);
    }
    object.matrix = transform.matrix();
}

void readModes(const JsonCursor& cursor, Object& object) {
    if (const auto render = cursor.find("render")) {
        object.renderMode = static_cast<uint8_t>(readWord(*render, RENDER_MODES));
    }
    if (const auto editor = cursor.find("editor")) {
        object.editorMode = static_cast<uint8_t>(readWord(*editor, RENDER_MODES));
    }
    if (const auto enabled = cursor.find("enabled")) {
        object.enabled = enabled->boolean();
    }
}

Object& readObject(const JsonCursor& cursor, Object* parent, DocumentReading& reading) {
    cursor.expectKeys({"type", "id", "name", "matrix", "position", "rotation", "scale", "render", "editor",
                       "enabled", "layer", "parameters", "tags", "tracks", "points", "polygons",
                       "brokenEdges", "model", "children"});
    std::unique_ptr<Object> made = makeObject(cursor);
    Object& object =
        parent ? parent->appendChild(std::move(made)) : reading.document.appendObject(std::move(made));
    readTransform(cursor, object);
    readModes(cursor, object);
    readCommon(cursor, object, reading);
    if (const auto tags = cursor.find("tags")) {
        for (size_t i = 0, count = tags->arraySize(); i < count; ++i) {
            readTag(tags->at(i), object, reading);
        }
    }
    if (const auto model = cursor.find("model")) {
        const auto id = cursor.find("id");
        insertModel(*model, object, id ? id->text() : std::string(), reading);
    }
    return object;
}

} // namespace

void readObjects(const JsonCursor& objects, DocumentReading& reading) {
    // A deque: cursors point to the ones that they came from.
    std::deque<Level> levels;
    levels.push_back({objects, objects, nullptr});
    while (!levels.empty()) {
        Level& level = levels.back();
        if (!level.children || level.next == level.children->arraySize()) {
            levels.pop_back();
            continue;
        }
        const JsonCursor child = level.children->at(level.next++);
        Object& object = readObject(child, level.parent, reading);
        levels.push_back({child, std::nullopt, &object});
        levels.back().children = levels.back().object.find("children");
    }
}

} // namespace headless
