// SPDX-License-Identifier: MIT
#include "headless/documents/document_units.h"
#include "headless/documents/document_words.h"
#include "headless/documents/document_writing.h"

namespace headless {

namespace {

void writeTransform(const Matrix& matrix, JsonWriter& json) {
    const std::optional<LocalTransform> parts = partsOf(matrix);
    if (!parts) {
        json.key("matrix");
        json.matrix(matrix);
        return;
    }
    if (!(parts->position == Vector())) {
        json.key("position");
        json.vector(parts->position);
    }
    if (!(parts->rotation == Vector())) {
        json.key("rotation");
        json.beginArray(true);
        for (const float angle : {parts->rotation.x, parts->rotation.y, parts->rotation.z}) {
            json.number(degreesOf(angle));
        }
        json.endArray();
    }
    if (!(parts->scale == Vector(1.0f, 1.0f, 1.0f))) {
        json.key("scale");
        json.vector(parts->scale);
    }
}

void writeMode(const char* key, uint8_t mode, JsonWriter& json) {
    const char* const word = mode == MODE_UNDEF ? nullptr : nameOfValue(RENDER_MODES, mode);
    if (word) {
        json.key(key);
        json.text(word);
    }
}

void writePolygons(const PolygonNode& object, JsonWriter& json) {
    json.key("points");
    json.beginArray();
    for (const Vector& point : object.points) {
        json.vector(point);
    }
    json.endArray();
    json.key("polygons");
    json.beginArray();
    for (const CPolygon& polygon : object.polygons) {
        json.beginArray(true);
        for (const int32_t corner : {polygon.a, polygon.b, polygon.c}) {
            json.integer(corner);
        }
        if (!polygon.IsTriangle()) {
            json.integer(polygon.d);
        }
        json.endArray();
    }
    json.endArray();
    if (object.brokenEdges.GetCount() == 0) {
        return;
    }
    json.key("brokenEdges");
    json.beginArray(true);
    int32_t from = 0, to = 0;
    for (int32_t i = 0; object.brokenEdges.GetRange(i, &from, &to); ++i) {
        for (int32_t edge = from; edge <= to; ++edge) {
            json.integer(edge);
        }
    }
    json.endArray();
}

/// All but the children.
void writeObject(const Object& object, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    writeType(object, writing);
    writeHead(object, writing);
    writeTransform(object.matrix, json);
    writeMode("render", object.renderMode, json);
    writeMode("editor", object.editorMode, json);
    if (!object.enabled) {
        json.key("enabled");
        json.boolean(false);
    }
    writeBody(object, {}, writing);
    if (const PolygonNode* const polygons = asPolygons(&object)) {
        writePolygons(*polygons, json);
    }
    writeTags(object, writing);
    checkFinite(object, writing);
}

} // namespace

void writeObjects(DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    const Object* object = writing.document.objects().first();
    if (!object) {
        return;
    }
    json.key("objects");
    json.beginArray();
    while (object) {
        json.beginObject();
        writeObject(*object, writing);
        if (const Object* const child = object->children().first()) {
            json.key("children");
            json.beginArray();
            object = child;
            continue;
        }
        json.endObject();
        while (!object->next && object->parent()) {
            object = object->parent();
            json.endArray();
            json.endObject();
        }
        object = object->next;
    }
    json.endArray();
}

} // namespace headless
