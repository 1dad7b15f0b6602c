// SPDX-License-Identifier: MIT
#include "headless/model/node_types.h"

#include "headless/model/builtin_types.h"
#include "headless/model/handles.h"
#include "host/plugin_data.h"

#include <algorithm>
#include <charconv>

namespace headless {

namespace {

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&lower](char x, char y) { return lower(x) == lower(y); });
}

ParameterKind kindOf(const resources::Entry& entry) {
    using resources::EntryKind;
    switch (entry.kind) {
    case EntryKind::boolean:
        return ParameterKind::boolean;
    case EntryKind::integer:
        return ParameterKind::integer;
    case EntryKind::real:
        return ParameterKind::real;
    case EntryKind::vector:
    case EntryKind::colour:
        return ParameterKind::vector;
    case EntryKind::string:
        return ParameterKind::string;
    case EntryKind::filename:
        return ParameterKind::filename;
    case EntryKind::link:
    case EntryKind::shaderLink:
        return ParameterKind::link;
    case EntryKind::time:
        return ParameterKind::time;
    case EntryKind::inExclude:
        return ParameterKind::inExclude;
    default:
        return ParameterKind::other;
    }
}

Parameter parameterOf(const ParameterPreset& preset) {
    return {preset.id, preset.name, preset.kind};
}

Parameter parameterOf(const NodeTypeInfo& type, const resources::Entry& entry) {
    return {entry.id, entry.symbol, kindOf(entry), type.description, &entry};
}

/// Null unless the type is known and of the kind.
const NodeTypeInfo* knownType(int32_t id, NodeKind kind) {
    const NodeTypeInfo* const type = NodeTypes::instance().find(id);
    return type && type->kind == kind ? type : nullptr;
}

void setPresets(Node& node, const NodeTypeInfo& type) {
    for (const ParameterPreset& preset : type.presets) {
        if (!preset.stored) {
            continue;
        }
        switch (preset.kind) {
        case ParameterKind::boolean:
        case ParameterKind::integer:
            node.data.SetLong(preset.id, static_cast<int32_t>(preset.preset[0]));
            break;
        case ParameterKind::real:
            node.data.SetReal(preset.id, preset.preset[0]);
            break;
        case ParameterKind::vector:
            node.data.SetVector(preset.id, {preset.preset[0], preset.preset[1], preset.preset[2]});
            break;
        default:
            break;
        }
    }
}

template <class T>
std::unique_ptr<T> withDefaults(std::unique_ptr<T> node, const NodeTypeInfo& type) {
    setPresets(*node, type);
    attachPluginData(*node);
    return node;
}

} // namespace

NodeTypes& NodeTypes::instance() {
    static NodeTypes types;
    return types;
}

NodeTypes::NodeTypes() {
    for (const NodeTypeInfo& type : builtinTypes()) {
        types_.emplace(type.id, type);
    }
}

bool NodeTypes::add(NodeTypeInfo type) {
    const std::lock_guard lock(mutex_);
    const int32_t id = type.id;
    return types_.emplace(id, std::move(type)).second;
}

void NodeTypes::removePluginTypes() {
    const std::lock_guard lock(mutex_);
    std::erase_if(types_, [](const auto& entry) { return entry.second.allocator != nullptr; });
}

const NodeTypeInfo* NodeTypes::find(int32_t id) const {
    const std::lock_guard lock(mutex_);
    const auto found = types_.find(id);
    return found == types_.end() ? nullptr : &found->second;
}

const NodeTypeInfo* NodeTypes::findByName(NodeKind kind, std::string_view name) const {
    int32_t id = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), id);
    const bool isNumber = error == std::errc() && end == name.data() + name.size();
    const std::lock_guard lock(mutex_);
    for (const auto& [number, type] : types_) {
        if (type.kind == kind && (isNumber ? number == id : equalIgnoringCase(type.name, name))) {
            return &type;
        }
    }
    return nullptr;
}

std::vector<const NodeTypeInfo*> NodeTypes::all() const {
    const std::lock_guard lock(mutex_);
    std::vector<const NodeTypeInfo*> all;
    for (const auto& [number, type] : types_) {
        all.push_back(&type);
    }
    return all;
}

std::optional<Parameter> findParameter(int32_t typeId, int32_t id) {
    const NodeTypeInfo* const type = NodeTypes::instance().find(typeId);
    if (!type) {
        return std::nullopt;
    }
    for (const ParameterPreset& preset : type->presets) {
        if (preset.id == id) {
            return parameterOf(preset);
        }
    }
    const resources::Entry* const entry = type->description ? type->description->find(id) : nullptr;
    return entry ? std::optional(parameterOf(*type, *entry)) : std::nullopt;
}

std::optional<Parameter> findParameter(int32_t typeId, std::string_view name) {
    const NodeTypeInfo* const type = NodeTypes::instance().find(typeId);
    if (!type) {
        return std::nullopt;
    }
    for (const ParameterPreset& preset : type->presets) {
        if (name == preset.name) {
            return parameterOf(preset);
        }
    }
    const resources::Entry* const entry = type->description ? type->description->findSymbol(name) : nullptr;
    return entry ? std::optional(parameterOf(*type, *entry)) : std::nullopt;
}

std::unique_ptr<Object> createObject(int32_t id) {
    const NodeTypeInfo* const type = knownType(id, NodeKind::object);
    if (!type) {
        return nullptr;
    }
    std::unique_ptr<Object> object =
        id == Opolygon ? std::make_unique<PolygonNode>(0, 0) : std::make_unique<Object>(id);
    object->name = type->name;
    return withDefaults(std::move(object), *type);
}

std::unique_ptr<Tag> createTag(int32_t id) {
    const NodeTypeInfo* const type = knownType(id, NodeKind::tag);
    if (!type) {
        return nullptr;
    }
    std::unique_ptr<Tag> tag;
    switch (id) {
    case Ttexture:
        tag = std::make_unique<TextureTagNode>();
        break;
    case Tuvw:
        tag = std::make_unique<UVWTagNode>();
        break;
    case Tpolygonselection:
        tag = std::make_unique<SelectionTagNode>();
        break;
    default:
        tag = std::make_unique<Tag>(id);
    }
    return withDefaults(std::move(tag), *type);
}

std::unique_ptr<Material> createMaterial(int32_t id) {
    const NodeTypeInfo* const type = knownType(id, NodeKind::material);
    if (!type) {
        return nullptr;
    }
    auto material = std::make_unique<Material>(id);
    material->name = type->name;
    return withDefaults(std::move(material), *type);
}

std::unique_ptr<Shader> createShader(int32_t id) {
    const NodeTypeInfo* const type = knownType(id, NodeKind::shader);
    return type ? withDefaults(std::make_unique<Shader>(id), *type) : nullptr;
}

std::unique_ptr<VideoPost> createVideoPost(int32_t id) {
    const NodeTypeInfo* const type = knownType(id, NodeKind::videoPost);
    if (!type) {
        return nullptr;
    }
    auto videoPost = std::make_unique<VideoPost>(id);
    videoPost->name = type->name;
    return withDefaults(std::move(videoPost), *type);
}

std::unique_ptr<PolygonNode> createPolygons(size_t pointCount, size_t polygonCount) {
    auto polygons = std::make_unique<PolygonNode>(pointCount, polygonCount);
    polygons->name = NodeTypes::instance().find(Opolygon)->name;
    return polygons;
}

std::unique_ptr<RenderDataNode> createRenderData() {
    const NodeTypeInfo* const type = NodeTypes::instance().find(ID_RENDERDATA);
    auto renderData = std::make_unique<RenderDataNode>();
    renderData->name = type->name;
    return withDefaults(std::move(renderData), *type);
}

void attachPluginData(Node& node) {
    const NodeTypeInfo* const type = NodeTypes::instance().find(node.type());
    if (!type || !type->allocator) {
        return;
    }
    if (NodeData* const data = type->allocator()) {
        node.setPluginData(std::unique_ptr<NodeData>(data));
        data->Init(toHost(&node));
    }
}

} // namespace headless
