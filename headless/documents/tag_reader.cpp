// SPDX-License-Identifier: MIT
#include "headless/documents/document_words.h"
#include "headless/documents/object_reader.h"
#include "headless/documents/parameter_reader.h"
#include "headless/model/node_types.h"

namespace headless {

namespace {

void readSelection(const JsonCursor& cursor, SelectionTagNode& tag) {
    for (size_t i = 0, count = cursor.arraySize(); i < count; ++i) {
        const JsonCursor element = cursor.at(i);
        if (element.json().is_array()) {
            element.expectCount(2);
            const int32_t from = element.at(size_t{0}).integer(0);
            tag.selection.SelectRange(from, element.at(size_t{1}).integer(from));
        } else {
            tag.selection.Select(element.integer(0));
        }
    }
}

void readUVW(const JsonCursor& cursor, UVWTagNode& tag) {
    tag.records.resize(cursor.arraySize());
    for (size_t i = 0; i < tag.records.size(); ++i) {
        const JsonCursor polygon = cursor.at(i);
        const size_t corners = polygon.arraySize();
        if (corners != 3 && corners != 4) {
            polygon.fail("three or four corners [u, v] are expected");
        }
        Vector uvw[4];
        for (size_t corner = 0; corner < corners; ++corner) {
            const JsonCursor pair = polygon.at(corner);
            pair.expectCount(2);
            uvw[corner] = Vector(pair.at(size_t{0}).real(), pair.at(size_t{1}).real(), 0.0f);
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

const NodeTypeInfo& tagType(const JsonCursor& cursor) {
    const NodeTypeInfo* const type = NodeTypes::instance().findByName(
        NodeKind::tag, cursor.json().is_string() ? cursor.text() : std::to_string(cursor.integer()));
    if (!type) {
        cursor.fail("unknown tag type " + cursor.json().dump() + "; is the plug-in that defines it loaded?");
    }
    return *type;
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
    const int32_t type = tagType(cursor.at("type")).id;
    checkOwnKeys(cursor, type);
    Tag& tag = object.appendTag(createTag(type));
    if (const auto id = cursor.find("id")) {
        reading.links.define(*id, tag);
    }
    if (const auto name = cursor.find("name")) {
        tag.name = name->text();
    }
    if (type == Ttexture) {
        readTexture(cursor, static_cast<TextureTagNode&>(tag), reading);
    }
    if (const auto uvw = cursor.find("uvw")) {
        readUVW(*uvw, static_cast<UVWTagNode&>(tag));
    }
    if (const auto polygons = cursor.find("polygons")) {
        readSelection(*polygons, static_cast<SelectionTagNode&>(tag));
    }
    if (const auto parameters = cursor.find("parameters")) {
        readParameters(*parameters, tag, reading.links);
    }
    if (const auto tracks = cursor.find("tracks")) {
        readTracks(*tracks, tag, reading);
    }
}

} // namespace headless
