// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/json_cursor.h"
#include "headless/documents/link_table.h"
#include "headless/model/document.h"

#include <map>

namespace headless {

/// What the readers of a document's parts share.
struct DocumentReading {
    Document& document;
    LinkTable links;
    std::map<std::string, Layer*> layers;
};

/// Reads the array of objects with all below them into the document. Any depth.
void readObjects(const JsonCursor& objects, DocumentReading& reading);

/// Reads "tracks" of a node.
void readTracks(const JsonCursor& tracks, Node& node, DocumentReading& reading);

/// Reads one tag and puts it on the object behind its others.
void readTag(const JsonCursor& cursor, Object& object, DocumentReading& reading);

/// Reads "points" and "polygons".
std::unique_ptr<PolygonNode> readPolygons(const JsonCursor& object);

} // namespace headless
