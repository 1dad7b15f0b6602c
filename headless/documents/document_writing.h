// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/json_writer.h"
#include "headless/documents/node_ids.h"
#include "headless/model/node_types.h"

#include <initializer_list>
#include <map>
#include <memory>

namespace headless {

/// What a document calls a layer by.
struct LayerName {
    std::string reference;
    /// False when the layer's name does.
    bool needsId;
};

/// What the writers of a document's parts share.
struct DocumentWriting {
    DocumentWriting(const Document& source, const std::string& targetFile);

    const Document& document;
    const std::string& file;
    JsonWriter json{};
    NodeIds ids;
    std::map<const Layer*, LayerName> layers{};

    /// A new node of the node's type, which tells what needn't be written.
    const Node& prototypeOf(const Node& node);

private:
    std::map<std::pair<NodeKind, int32_t>, std::unique_ptr<Node>> prototypes_{};
};

void writeType(const Node& node, DocumentWriting& writing);
/// "id", "name" and "layer", where there is something to tell.
void writeHead(const Node& node, DocumentWriting& writing);
/// "parameters" and "tracks"; `written` are parameters that have keys of their own.
void writeBody(const Node& node, std::initializer_list<int32_t> written, DocumentWriting& writing);

/// To be called when all of a node is written: DocumentError when one of its numbers isn't finite.
void checkFinite(const Node& node, DocumentWriting& writing);

/// The node's value of that number and type when it differs from a new node's, else null.
const GeData* changedValue(const Node& node, int32_t id, int32_t dataType, DocumentWriting& writing);
/// A key for the parameter: its name where the node's type declares one.
std::string parameterKey(const Node& node, int32_t id);
/// False, and nothing is written, for a value that the format has no form for.
bool hasForm(const GeData& value);
void writeValue(const Node& node, int32_t id, const GeData& value, DocumentWriting& writing);

void writeTracks(const Node& node, DocumentWriting& writing);
void writeTags(const Object& object, DocumentWriting& writing);
void writeLayers(DocumentWriting& writing);
void writeMaterials(DocumentWriting& writing);
void writeObjects(DocumentWriting& writing);
void writeRenderSetups(DocumentWriting& writing);

} // namespace headless
