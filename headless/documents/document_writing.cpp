// SPDX-License-Identifier: MIT
#include "headless/documents/document_writing.h"

#include "headless/documents/document_error.h"

#include <algorithm>
#include <set>

namespace headless {

namespace {

std::map<const Layer*, LayerName> nameLayers(const Document& document) {
    std::map<const Layer*, LayerName> names;
    std::set<std::string> taken;
    for (const Node* const node : nodesOf(document)) {
        if (node->kind() != NodeKind::layer) {
            continue;
        }
        const std::string base = node->name.empty() ? "Layer" : node->name;
        std::string reference = base;
        for (int number = 2; !taken.insert(reference).second; ++number) {
            reference = base + " " + std::to_string(number);
        }
        names[static_cast<const Layer*>(node)] = {reference, reference != node->name};
    }
    return names;
}

std::unique_ptr<Node> makePrototype(const Node& node) {
    switch (node.kind()) {
    case NodeKind::object:
        return createObject(node.type());
    case NodeKind::tag:
        return createTag(node.type());
    case NodeKind::material:
        return createMaterial(node.type());
    case NodeKind::shader:
        return createShader(node.type());
    case NodeKind::videoPost:
        return createVideoPost(node.type());
    case NodeKind::renderData:
        return createRenderData();
    default:
        return nullptr;
    }
}

const char* kindName(NodeKind kind) {
    switch (kind) {
    case NodeKind::object:
        return "object";
    case NodeKind::tag:
        return "tag";
    case NodeKind::material:
        return "material";
    case NodeKind::shader:
        return "shader";
    case NodeKind::videoPost:
        return "video post";
    default:
        return "render setup";
    }
}

} // namespace

DocumentWriting::DocumentWriting(const Document& source, const std::string& targetFile)
    : document(source), file(targetFile), ids(source), layers(nameLayers(source)) {}

const Node& DocumentWriting::prototypeOf(const Node& node) {
    std::unique_ptr<Node>& prototype = prototypes_[{node.kind(), node.type()}];
    if (!prototype) {
        prototype = makePrototype(node);
    }
    if (!prototype) {
        // Of a plug-in that isn't loaded.
        prototype = node.makeEmpty();
    }
    return *prototype;
}

void writeType(const Node& node, DocumentWriting& writing) {
    writing.json.key("type");
    const NodeTypeInfo* const type = NodeTypes::instance().find(node.type());
    // Names of plug-ins' types may be translated.
    if (type && !type->allocator) {
        writing.json.text(type->name);
    } else {
        writing.json.integer(node.type());
    }
}

void writeHead(const Node& node, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    if (const std::string* const id = writing.ids.idOf(&node)) {
        json.key("id");
        json.text(*id);
    }
    if (node.name != writing.prototypeOf(node).name) {
        json.key("name");
        json.text(node.name);
    }
    if (const auto layer = writing.layers.find(node.layer()); layer != writing.layers.end()) {
        json.key("layer");
        json.text(layer->second.reference);
    }
}

void writeBody(const Node& node, std::initializer_list<int32_t> written, DocumentWriting& writing) {
    JsonWriter& json = writing.json;
    const BaseContainer& defaults = writing.prototypeOf(node).data;
    std::vector<int32_t> changed;
    for (int32_t i = 0; i < node.data.GetCount(); ++i) {
        const int32_t id = node.data.GetIndexId(i);
        const GeData& value = node.data.GetIndexData(i);
        const GeData* const preset = defaults.FindData(id);
        if ((!preset || !(*preset == value)) && hasForm(value) &&
            std::find(written.begin(), written.end(), id) == written.end()) {
            changed.push_back(id);
        }
    }
    // The order that reading has, whenever a plug-in set a parameter.
    std::ranges::sort(changed);
    if (!changed.empty()) {
        constexpr size_t FIT_ON_ONE_LINE = 3;
        json.key("parameters");
        json.beginObject(changed.size() <= FIT_ON_ONE_LINE);
        for (const int32_t id : changed) {
            json.key(parameterKey(node, id));
            writeValue(node, id, *node.data.FindData(id), writing);
        }
        json.endObject();
    }
    writeTracks(node, writing);
}

void checkFinite(const Node& node, DocumentWriting& writing) {
    if (!writing.json.allFinite()) {
        throw DocumentError(writing.file, std::string("the ") + kindName(node.kind()) + " \"" + node.name +
                                              "\" can't be saved: it holds a number that isn't finite");
    }
}

const GeData* changedValue(const Node& node, int32_t id, int32_t dataType, DocumentWriting& writing) {
    const GeData* const value = node.data.FindData(id);
    if (!value || value->GetType() != dataType) {
        return nullptr;
    }
    const GeData* const preset = writing.prototypeOf(node).data.FindData(id);
    return preset && *preset == *value ? nullptr : value;
}

} // namespace headless
