// SPDX-License-Identifier: MIT
#include "headless/documents/object_reader.h"

#include "headless/documents/document_words.h"
#include "headless/documents/parameter_reader.h"
#include "headless/import/import_model.h"
#include "headless/model/node_types.h"
#include "headless/model/rotation.h"

#include <deque>
#include <numbers>

namespace headless {

namespace {

/// The children of an object that are still to be read.
struct Level {
    JsonCursor object;
    std::optional<JsonCursor> children;
    Object* parent;
    size_t next = 0;
};

const NodeTypeInfo& objectType(const JsonCursor& cursor) {
    const Json& json = cursor.json();
    const NodeTypeInfo* const type = NodeTypes::instance().findByName(
        NodeKind::object, json.is_string() ? cursor.text() : std::to_string(cursor.integer()));
    if (!type) {
        cursor.fail("unknown object type " + json.dump() + "; is the plug-in that defines it loaded?");
    }
    return *type;
}

/// Brings a model file's objects below `parent` and its materials into the document.
void insertModel(const JsonCursor& path, Object& parent, const std::string& id, DocumentReading& reading) {
    const std::unique_ptr<Document> model = importModel(readPath(path).GetUtf8());
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
    if (cursor.has("polygons") || cursor.has("points")) {
        return readPolygons(cursor);
    }
    if (cursor.has("model")) {
        return createObject(Onull);
    }
    return createObject(objectType(cursor.at("type")).id);
}

void readTransform(const JsonCursor& cursor, Object& object) {
    if (const auto matrix = cursor.find("matrix")) {
        object.matrix = readMatrix(*matrix);
        return;
    }
    MatrixParts parts = splitMatrix(Matrix());
    if (const auto position = cursor.find("position")) {
        parts.position = readVector(*position);
    }
    if (const auto rotation = cursor.find("rotation")) {
        parts.rotation = rotationFromHPB(readVector(*rotation) * (std::numbers::pi_v<float> / 180.0f));
    }
    if (const auto scale = cursor.find("scale")) {
        parts.scale = readVector(*scale);
    }
    // Joined by hand: each axis keeps the sign of its own scale.
    object.matrix = Matrix(parts.position, parts.rotation.axisX * parts.scale.x,
                           parts.rotation.axisY * parts.scale.y, parts.rotation.axisZ * parts.scale.z);
}

void readModes(const JsonCursor& cursor, Object& object, const DocumentReading& reading) {
    if (const auto render = cursor.find("render")) {
        object.renderMode = static_cast<uint8_t>(readWord(*render, RENDER_MODES));
    }
    if (const auto editor = cursor.find("editor")) {
        object.editorMode = static_cast<uint8_t>(readWord(*editor, RENDER_MODES));
    }
    if (const auto enabled = cursor.find("enabled")) {
        object.enabled = enabled->boolean();
    }
    if (const auto layer = cursor.find("layer")) {
        const auto found = reading.layers.find(layer->text());
        if (found == reading.layers.end()) {
            layer->fail("the document has no layer \"" + layer->text() + "\"");
        }
        object.setLayer(found->second);
    }
}

Object& readObject(const JsonCursor& cursor, Object* parent, DocumentReading& reading) {
    cursor.expectKeys({"type", "id", "name", "matrix", "position", "rotation", "scale", "render", "editor",
                       "enabled", "layer", "parameters", "tags", "tracks", "points", "polygons",
                       "brokenEdges", "model", "children"});
    std::unique_ptr<Object> made = makeObject(cursor);
    Object& object =
        parent ? parent->appendChild(std::move(made)) : reading.document.appendObject(std::move(made));
    std::string id;
    if (const auto idCursor = cursor.find("id")) {
        reading.links.define(*idCursor, object);
        id = idCursor->text();
    }
    if (const auto name = cursor.find("name")) {
        object.name = name->text();
    }
    readTransform(cursor, object);
    readModes(cursor, object, reading);
    if (const auto parameters = cursor.find("parameters")) {
        readParameters(*parameters, object, reading.links);
    }
    if (const auto tags = cursor.find("tags")) {
        for (size_t i = 0, count = tags->arraySize(); i < count; ++i) {
            readTag(tags->at(i), object, reading);
        }
    }
    if (const auto tracks = cursor.find("tracks")) {
        readTracks(*tracks, object, reading);
    }
    if (const auto model = cursor.find("model")) {
        insertModel(*model, object, id, reading);
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
