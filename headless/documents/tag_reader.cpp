// SPDX-License-Identifier: MIT
#include "headless/documents/document_words.h"
#include "headless/documents/parameter_reader.h"
#include "headless/documents/part_readers.h"

namespace headless {

namespace {

/// `polygons` is the object that carries the tag; null for a generator, whose polygons aren't known yet.
void readSelection(const JsonCursor& cursor, SelectionTagNode& tag, const PolygonNode* polygons) {
    const int32_t last = polygons ? static_cast<int32_t>(polygons->polygons.size()) - 1 : INT32_MAX;
    for (size_t i = 0, count = cursor.arraySize(); i < count; ++i) {
        const JsonCursor element = cursor.at(i);
        if (element.json().is_array()) {
            element.expectCount(2);
            const int32_t from = element.at(size_t{0}).integer(0, last);
            tag.selection.SelectRange(from, element.at(size_t{1}).integer(from, last));
        } else {
            tag.selection.Select(element.integer(0, last));
        }
    }
}

Vector readTextureCoordinate(const JsonCursor& cursor) {
    if (cursor.arraySize() == 3) {
        return readVector(cursor);
    }
    cursor.expectCount(2);
    return {cursor.at(size_t{0}).real(), cursor.at(size_t{1}).real(), 0.0f};
}

void readUVW(const JsonCursor& cursor, UVWTagNode& tag, const PolygonNode* polygons) {
    if (polygons) {
        cursor.expectCount(polygons->polygons.size());
    }
    tag.records.resize(cursor.arraySize());
    for (size_t i = 0; i < tag.records.size(); ++i) {
        const JsonCursor polygon = cursor.at(i);
        const size_t corners = polygon.arraySize();
        if (corners != 3 && corners != 4) {
            polygon.fail("three or four corners [u, v] are expected");
        }
        Vector uvw[4];
        for (size_t corner = 0; corner < corners; ++corner) {
            uvw[corner] = readTextureCoordinate(polygon.at(corner));
        }
        tag.records[i] = {uvw[0], uvw[1], uvw[2], corners == 4 ? uvw[3] : uvw[2]};
    }
}

void readTexture(const JsonCursor& cursor, TextureTagNode& tag, DocumentReading& reading) {
    if (const auto material = cursor.find("material")) {
        reading.links.link(*material, Mbase,
                           [&tag](Node& node) { tag.setMaterial(static_cast<Material*>(&node)); });
    }
    if (const auto projection = cursor.find("projection")) {
        tag.data.SetLong(TEXTURETAG_PROJECTION, readWord(*projection, PROJECTIONS));
    }
    if (const auto selection = cursor.find("selection")) {
        tag.data.SetString(TEXTURETAG_RESTRICTION, String(selection->text()));
    }
    if (const auto matrix = cursor.find("matrix")) {
        tag.matrix = readMatrix(*matrix);
    }
}

/// Keys that only some types have.
void checkOwnKeys(const JsonCursor& cursor, int32_t type) {
    static constexpr struct {
        const char* key;
        int32_t type;
    } OWN_KEYS[] = {{"material", Ttexture},  {"projection", Ttexture},
                    {"selection", Ttexture}, {"matrix", Ttexture},
                    {"uvw", Tuvw},           {"polygons", Tpolygonselection}};
    for (const auto& own : OWN_KEYS) {
        if (own.type != type && cursor.has(own.key)) {
            cursor.fail(std::string("a tag of this type has no \"") + own.key + "\"");
        }
    }
}

} // namespace

void readTag(const JsonCursor& cursor, Object& object, DocumentReading& reading) {
    cursor.expectKeys({"type", "id", "name", "layer", "parameters", "tracks", "material", "projection",
                       "selection", "matrix", "uvw", "polygons"});
    const int32_t type = readType(cursor.at("type"), NodeKind::tag, "tag").id;
    checkOwnKeys(cursor, type);
    Tag& tag = object.appendTag(createTag(type));
    const PolygonNode* const carrier = asPolygons(&object);
    if (type == Ttexture) {
        readTexture(cursor, static_cast<TextureTagNode&>(tag), reading);
    }
    if (const auto uvw = cursor.find("uvw")) {
        readUVW(*uvw, static_cast<UVWTagNode&>(tag), carrier);
    }
    if (const auto polygons = cursor.find("polygons")) {
        readSelection(*polygons, static_cast<SelectionTagNode&>(tag), carrier);
    }
    readCommon(cursor, tag, reading);
}

} // namespace headless
