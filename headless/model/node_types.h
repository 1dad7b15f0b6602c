// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"
#include "headless/resources/description.h"
#include "host/registration.h"

#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <string_view>

namespace headless {

enum class ParameterKind : uint8_t {
    boolean,
    integer,
    real,
    vector,
    string,
    filename,
    link,
    time,
    inExclude,
    /// A kind that a document can't set by name.
    other
};

/// A parameter of a built-in type. `preset` is what a new node's container gets: the first number of it for
/// numbers and flags. Nothing is stored for the kinds behind `vector`, nor when `stored` is false.
struct ParameterPreset {
    int32_t id;
    const char* name;
    ParameterKind kind;
    float preset[3] = {0.0f, 0.0f, 0.0f};
    bool stored = true;
};

/// A parameter, whoever declares it. `name` is the symbol of its number, such as "RS_HALT_SPP".
struct Parameter {
    int32_t id;
    std::string_view name;
    ParameterKind kind;
    /// For a parameter of a plug-in's type: its entry, with its choices and range.
    const resources::Description* description = nullptr;
    const resources::Entry* entry = nullptr;
};

/// A type of nodes that can be made.
struct NodeTypeInfo {
    int32_t id = 0;
    NodeKind kind = NodeKind::object;
    /// The host's name of the type, and of new objects of it.
    std::string name;
    std::span<const ParameterPreset> presets;

    // Of types that a plug-in registered.
    NodeDataAllocator allocator = nullptr;
    int32_t flags = 0;
    std::string descriptionName;
    /// Borrowed; null when the plug-in has none.
    const resources::Description* description = nullptr;
};

/// All types of nodes, those of the host and those that a plug-in registered. One per process.
class NodeTypes {
public:
    static NodeTypes& instance();

    /// False when the number is taken.
    bool add(NodeTypeInfo type);
    /// Forgets what plug-ins registered. No node of such a type may be left.
    void removePluginTypes();
    /// Null for an unknown number. Valid until the type is removed.
    const NodeTypeInfo* find(int32_t id) const;
    /// A type by its number as text or its host's name ("Cube"), ignoring case; of one kind.
    const NodeTypeInfo* findByName(NodeKind kind, std::string_view name) const;
    std::vector<const NodeTypeInfo*> all() const;

private:
    NodeTypes();

    mutable std::mutex mutex_;
    std::map<int32_t, NodeTypeInfo> types_;
};

/// A parameter of a type by number or by name; nothing when the type declares none such.
std::optional<Parameter> findParameter(int32_t type, int32_t id);
std::optional<Parameter> findParameter(int32_t type, std::string_view name);

// New nodes with their type's defaults. Null for a number that isn't of a known type of that kind.
std::unique_ptr<Object> createObject(int32_t type);
std::unique_ptr<Tag> createTag(int32_t type);
std::unique_ptr<Material> createMaterial(int32_t type);
std::unique_ptr<Shader> createShader(int32_t type);
std::unique_ptr<VideoPost> createVideoPost(int32_t type);

std::unique_ptr<PolygonNode> createPolygons(size_t pointCount, size_t polygonCount);
std::unique_ptr<RenderDataNode> createRenderData();

/// Makes the plug-in's instance of a node of a registered type and lets it set the node's defaults; a node of
/// another type is left alone.
void attachPluginData(Node& node);

} // namespace headless
