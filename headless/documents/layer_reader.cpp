// SPDX-License-Identifier: MIT
#include "headless/documents/document_words.h"
#include "headless/documents/part_readers.h"

namespace headless {

namespace {

void readLayer(const JsonCursor& cursor, Layer* parent, int depth, DocumentReading& reading) {
    cursor.expectKeys({"id", "name", "view", "render", "manager", "children"});
    auto made = std::make_unique<Layer>();
    made->name = cursor.at("name").text();
    LayerData flags;
    for (const auto& [key, flag] : LAYER_FLAGS) {
        if (const auto value = cursor.find(key)) {
            flags.*flag = value->boolean();
        }
    }
    Layer& layer = parent ? parent->insertChild(std::move(made), parent->children().last())
                          : reading.document.appendLayer(std::move(made));
    layer.setOwnFlags(flags);
    const auto id = cursor.find("id");
    const JsonCursor& reference = id ? *id : cursor.at("name");
    if (!reading.layers.emplace(reference.text(), &layer).second) {
        reference.fail("there is a layer \"" + reference.text() + "\" already" +
                       (id ? "" : "; an \"id\" can tell them apart"));
    }
    const auto children = cursor.find("children");
    if (!children) {
        return;
    }
    if (depth == MAX_NESTING) {
        children->fail("layers are nested too deep");
    }
    for (size_t i = 0, count = children->arraySize(); i < count; ++i) {
        readLayer(children->at(i), &layer, depth + 1, reading);
    }
}

} // namespace

void readLayers(const JsonCursor& layers, DocumentReading& reading) {
    for (size_t i = 0, count = layers.arraySize(); i < count; ++i) {
        readLayer(layers.at(i), nullptr, 1, reading);
    }
}

} // namespace headless
