// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/json_cursor.h"
#include "headless/documents/link_table.h"
#include "headless/documents/model_texture_folders.h"
#include "headless/model/node_types.h"

#include <map>
#include <vector>

namespace headless {

/// What the readers of a document's parts share.
struct DocumentReading {
    Document& document;
    LinkTable links{};
    /// By id, or by name for those without one.
    std::map<std::string, Layer*> layers{};
    std::vector<std::string> warnings{};
    /// Where images from inside model files go, as for `importModel`.
    ModelTextureFolders modelTextures{};
};

/// Layers below layers and shaders below shaders end at this depth; objects have no limit.
inline constexpr int MAX_NESTING = 100;

/// The type that a number or a host's name stands for; fails at the cursor for an unknown one. `what` names
/// the kind.
const NodeTypeInfo& readType(const JsonCursor& cursor, NodeKind kind, const char* what);
/// Reads "id", "name", "layer", "parameters" and "tracks", which most kinds of nodes may have.
void readCommon(const JsonCursor& cursor, Node& node, DocumentReading& reading);
void readTracks(const JsonCursor& tracks, Node& node, DocumentReading& reading);

void readLayers(const JsonCursor& layers, DocumentReading& reading);
void readMaterials(const JsonCursor& materials, DocumentReading& reading);
void readRenderSetups(const JsonCursor& setups, DocumentReading& reading);
/// Reads the objects with all below them.
void readObjects(const JsonCursor& objects, DocumentReading& reading);
/// Reads one tag and puts it on the object behind its others.
void readTag(const JsonCursor& cursor, Object& object, DocumentReading& reading);
/// Makes an object of "points", "polygons" and "brokenEdges".
std::unique_ptr<PolygonNode> readPolygons(const JsonCursor& object);

} // namespace headless
