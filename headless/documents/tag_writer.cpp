// SPDX-License-Identifier: MIT
#include "headless/documents/document_words.h"
#include "headless/documents/document_writing.h"

namespace headless {

namespace {

void writeCoordinate(const Vector& uvw, JsonWriter& json) {
    json.beginArray(true);
    json.real(uvw.x);
    json.real(uvw.y);
    if (uvw.z != 0.0f) {
        json.real(uvw.z);
    }
    json.endArray();
}

void writeUVW(const UVWTagNode& tag, JsonWriter& json) {
    json.key("uvw");
    json.beginArray();
    for (const UVWStruct& record : tag.records) {
        json.beginArray(true);
        for (const Vector* const corner : {&record.a, &record.b, &record.c}) {
            writeCoordinate(*corner, json);
        }
        if (!(record.d == record.c)) {
            writeCoordinate(record.d, json);
        }
        json.endArray();
    }
    json.endArray();
}

void writeSelection(const BaseSelect& selection, JsonWriter& json) {
    json.beginArray(true);
    int32_t from = 0, to = 0;
    for (int32_t i = 0; selection.GetRange(i, &from, &to); ++i) {
        if (from == to) {
            json.integer(from);
            continue;
        }
        json.beginArray();
        json.integer(from);
        json.integer(to);
        json.endArray();
    }
    json.endArray();
}

void writeTextureTag(const TextureTagNode& tag, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    if (const std::string* const material = writing.ids.idOf(tag.material())) {
        json.key("material");
        json.text(*material);
    }
    const GeData* const projection = changedValue(tag, TEXTURETAG_PROJECTION, DA_LONG, writing);
    const char* const word = projection ? nameOfValue(PROJECTIONS, projection->GetLong()) : nullptr;
    if (word) {
        json.key("projection");
        json.text(word);
    }
    const GeData* const restriction = changedValue(tag, TEXTURETAG_RESTRICTION, DA_STRING, writing);
    if (restriction) {
        json.key("selection");
        json.text(restriction->GetString().GetUtf8());
    }
    if (!(tag.matrix == Matrix())) {
        json.key("matrix");
        json.matrix(tag.matrix);
    }
    writeBody(tag,
              {word ? TEXTURETAG_PROJECTION : int32_t{0}, restriction ? TEXTURETAG_RESTRICTION : int32_t{0}},
              writing);
}

void writeTag(const Tag& tag, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    const bool isLong = tag.type() == Tuvw || (tag.animation && !tag.animation->tracks.empty());
    json.beginObject(!isLong);
    writeType(tag, writing);
    writeHead(tag, writing);
    switch (tag.type()) {
    case Ttexture:
        writeTextureTag(static_cast<const TextureTagNode&>(tag), writing);
        break;
    case Tuvw:
        writeUVW(static_cast<const UVWTagNode&>(tag), json);
        writeBody(tag, {}, writing);
        break;
    case Tpolygonselection:
        json.key("polygons");
        writeSelection(static_cast<const SelectionTagNode&>(tag).selection, json);
        writeBody(tag, {}, writing);
        break;
    default:
        writeBody(tag, {}, writing);
    }
    checkFinite(tag, writing);
    json.endObject();
}

} // namespace

void writeTags(const Object& object, DocumentWriting& writing) {
    if (object.tags().empty()) {
        return;
    }
    writing.json.key("tags");
    writing.json.beginArray();
    for (const Tag* tag = object.tags().first(); tag; tag = tag->next) {
        writeTag(*tag, writing);
    }
    writing.json.endArray();
}

} // namespace headless
