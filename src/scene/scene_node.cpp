// SPDX-License-Identifier: MIT
#include "scene/scene_node.h"

#include "foundation/string_utils.h"
#include "scene/ostream.h"
#include "scene/scene_node_root.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <algorithm>

namespace Quenza {

namespace {

constexpr u64 MAX_FOUND_BY_NAME = 64;

const char* const NODE_TYPE_NAMES[] = {
    "Root",
    "Camera",
    "Render Settings",
    "Material",
    "Mesh",
    "Object",
    "Sphere",
    "Medium",
    "Tone Mapping",
    "Rectangle Light",
    "Background Settings",
    "Metadata",
    "Parametric Surface",
    "Scatter",
    "Section Plane",
};

} // namespace

const char* getNodeTypeName(u32 type) {
    return type < std::size(NODE_TYPE_NAMES) ? NODE_TYPE_NAMES[type] : "Unknown type";
}

SceneNode::~SceneNode() {
    for (const Ref<SceneNode>& child : children)
        if (child && child->parent == this)
            child->parent = nullptr;
}

void SceneNode::rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>&) {}

SceneVisitor* SceneNode::createVisitor(u32 mode, const String& path, const String& base_path) {
    SceneVisitor* visitor = new SceneVisitor;
    visitor->mode = mode;
    visitor->path = path;
    visitor->base_path = base_path;
    return visitor;
}

void SceneNode::destroyVisitor(SceneVisitor* visitor) {
    delete visitor;
}

bool SceneNode::usesNode(SceneNode*) const {
    return false;
}

bool SceneNode::doIsEqual(const SceneNode& other) const {
    return uid == other.uid && getName() == other.getName();
}

void SceneNode::addChild(const Ref<SceneNode>& child) {
    children.push_back(child);
    child->parent = this;
    if (SceneNodeRoot* root = getRoot()) {
        if (child->uid.isValid())
            root->next_uid = std::max(root->next_uid + 1, child->uid.value());
        else
            child->uid = SceneNodeUID(root->allocateUID());
    }
    uid_map.insert(child->uid, child.getPointer());
}

void SceneNode::removeChild(const Ref<SceneNode>& child) {
    // A copy: `child` may be one of the entries that go.
    const Ref<SceneNode> removed = child; // NOLINT(performance-unnecessary-copy-initialization)
    Vector<Ref<SceneNode>> kept;
    kept.reserve(children.size());
    for (const Ref<SceneNode>& entry : children)
        if (!(entry == removed))
            kept.push_back(entry);
    children = std::move(kept);
    uid_map.erase(removed->uid);
    if (removed->parent == this)
        removed->parent = nullptr;
}

SceneNode* SceneNode::top() {
    SceneNode* node = this;
    while (node->parent)
        node = node->parent;
    return node;
}

SceneNodeRoot* SceneNode::getRoot() {
    SceneNode* node = top();
    return node->getType() == NODE_ROOT ? static_cast<SceneNodeRoot*>(node) : nullptr;
}

SceneNode* SceneNode::getChildByUID(SceneNodeUID wanted) {
    if (uid == wanted)
        return this;
    SceneNode** found = uid_map.find(wanted);
    return found ? *found : nullptr;
}

void SceneNode::visitAll(SceneVisitor& visitor) {
    doVisit(visitor);
    for (u64 i = 0; i < children.size(); ++i)
        children[i]->visitAll(visitor);
}

u32 SceneNode::highestLayerIndexInTree() const {
    u32 highest = getHighestLayerIndex();
    for (const Ref<SceneNode>& child : children)
        highest = std::max(highest, child->highestLayerIndexInTree());
    return highest;
}

bool SceneNode::usesNodeInTree(SceneNode* node) const {
    return usesNode(node) ||
           std::any_of(children.begin(), children.end(),
                       [node](const Ref<SceneNode>& child) { return child->usesNodeInTree(node); });
}

bool SceneNode::isEqual(const SceneNode& other) const {
    if (!doIsEqual(other) || children.size() != other.children.size())
        return false;
    for (u64 i = 0; i < children.size(); ++i)
        if (children[i]->getType() != other.children[i]->getType() ||
            !children[i]->isEqual(*other.children[i]))
            return false;
    return true;
}

u64 SceneNode::getNumChildrenOfType(u32 type) const {
    return u64(std::count_if(children.begin(), children.end(),
                             [type](const Ref<SceneNode>& child) { return child->getType() == type; }));
}

void SceneNode::findByName(const String& lowercase_query, Vector<SceneNode*>& out, const Vector<u32>& types) {
    if (std::find(types.begin(), types.end(), getType()) != types.end() &&
        toLowerCase(getName().view()).find(lowercase_query.view()) != std::string::npos)
        out.push_back(this);
    for (const Ref<SceneNode>& child : children) {
        if (out.size() >= MAX_FOUND_BY_NAME)
            return;
        child->findByName(lowercase_query, out, types);
    }
}

void SceneNode::markChanged() {
    if (SceneNodeRoot* root = getRoot())
        stamp = ++root->stamp;
}

String SceneNode::toXMLString() {
    BufferOStream stream;
    writeToXML(stream, 0, XMLWriteOptions());
    return stream.getBuffer();
}

void SceneNode::copyBaseFieldsTo(SceneNode& target) const {
    target.uid = uid;
    target.setName(getName());
    target.flags = flags;
    target.stamp = stamp;
}

void SceneNode::writeUIDAndName(OStream& stream, u32 depth) const {
    writeUIntElement(stream, depth, "uid", uid.value());
    writeStringElement(stream, depth, "name", getName());
}

void SceneNode::rebindChildren(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    for (Ref<SceneNode>& child : children) {
        const Ref<SceneNode>* replacement = nodes.find(child->uid);
        if (!replacement || !*replacement)
            continue;
        child->parent = nullptr;
        child = *replacement;
        child->parent = this;
        uid_map.insert(child->uid, child.getPointer());
    }
    for (const Ref<SceneNode>& child : children)
        child->rebindReferences(nodes);
}

} // namespace Quenza
