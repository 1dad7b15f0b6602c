// SPDX-License-Identifier: MIT
#include "headless/documents/parameter_reader.h"
#include "headless/documents/part_readers.h"

namespace headless {

const NodeTypeInfo& readType(const JsonCursor& cursor, NodeKind kind, const char* what) {
    const std::string name = cursor.json().is_string() ? cursor.text() : std::to_string(cursor.integer());
    const NodeTypeInfo* const type = NodeTypes::instance().findByName(kind, name);
    if (!type) {
        cursor.fail(std::string("unknown ") + what + " type \"" + name +
                    "\"; is the plug-in that defines it loaded?");
    }
    return *type;
}

void readCommon(const JsonCursor& cursor, Node& node, DocumentReading& reading) {
    if (const auto id = cursor.find("id")) {
        reading.links.define(*id, node);
    }
    if (const auto name = cursor.find("name")) {
        node.name = name->text();
    }
    if (const auto layer = cursor.find("layer")) {
        const auto found = reading.layers.find(layer->text());
        if (found == reading.layers.end()) {
            layer->fail("the document has no layer \"" + layer->text() + "\"");
        }
        node.setLayer(found->second);
    }
    if (const auto parameters = cursor.find("parameters")) {
        readParameters(*parameters, node, reading.links);
    }
    if (const auto tracks = cursor.find("tracks")) {
        readTracks(*tracks, node, reading);
    }
}

} // namespace headless
