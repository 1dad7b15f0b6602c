// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/map.h"
#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "foundation/vector.h"
#include "scene/xml_write_options.h"

namespace Quenza {

class OStream;
class SceneNodeMaterial;
class SceneNodeMedium;
class SceneNodeRoot;
class SceneVisitor;

/// Values of SceneNode::getType().
enum SceneNodeType : u32 {
    NODE_ROOT = 0,
    NODE_CAMERA = 1,
    NODE_RENDER_SETTINGS = 2,
    NODE_MATERIAL = 3,
    NODE_MESH = 4,
    NODE_MODEL = 5,
    NODE_SPHERE = 6,
    NODE_MEDIUM = 7,
    NODE_TONEMAPPING = 8,
    NODE_RECTANGLE_LIGHT = 9, ///< Reserved: no class has it.
    NODE_BACKGROUND_SETTINGS = 10,
    NODE_METADATA = 11,
    NODE_PARAMETRIC_SURFACE = 12,
    NODE_SCATTER = 13,
    NODE_SECTION_PLANE = 14,
};

/// Name of a node type for people, or "Unknown type".
const char* getNodeTypeName(u32 type);

/// A node of the scene tree: identifier, name, children and the walk over them. Scene space is right-handed
/// with Z up and lengths in metres. In the scenes of the exporter all nodes hang directly below the root;
/// nodes refer to each other by fields of their own.
///
/// Failures are QuenzaExceptions. Children aren't locked: while a renderer works on the tree, changes are
/// made under the root's mutex.
class SceneNode : public ThreadSafeRefCounted {
public:
    SceneNode() = default;
    /// Children that outlive their parent are detached.
    ~SceneNode() override;
    virtual u32 getType() const = 0;
    virtual void setName(const String& new_name) { name = new_name; }
    virtual const String& getName() const { return name; }
    virtual bool isSameNode(SceneNode* other) const { return this == other; }
    /// A detached copy without children, or null where a class doesn't offer one.
    virtual Ref<SceneNode> clone() const = 0;
    /// Swaps references to nodes whose UID `nodes` holds, when the new node has the right type.
    virtual void rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes);
    virtual void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) = 0;
    virtual void doVisit(SceneVisitor& visitor) = 0;
    /// For callers in other modules: the visitor lives on this library's heap until destroyVisitor.
    virtual SceneVisitor* createVisitor(u32 mode, const String& path, const String& base_path);
    virtual void destroyVisitor(SceneVisitor* visitor);
    /// Highest light layer that the node itself uses.
    virtual u32 getHighestLayerIndex() const { return 0; }
    virtual bool usesNode(SceneNode* node) const;
    virtual Vector<SceneNodeUID> getReferencedUIDs() const { return {}; }
    /// Compares this node alone; isEqual compares trees.
    virtual bool doIsEqual(const SceneNode& other) const;

    /// Below a root the child gets a UID if it has none; a preset UID uses up a number as well. UIDs that are
    /// in use are not refused, see SceneNodeRoot::checkValidity.
    void addChild(const Ref<SceneNode>& child);
    void removeChild(const Ref<SceneNode>& child);
    const Vector<Ref<SceneNode>>& getChildren() const { return children; }

    SceneNodeUID getUID() const { return uid; }
    void setUID(SceneNodeUID new_uid) { uid = new_uid; }
    u32 getFlags() const { return flags; }
    void setFlags(u32 new_flags) { flags = new_flags; }
    bool testFlags(u32 mask) const { return (flags & mask) != 0; }
    u64 getStamp() const { return stamp; }
    void setStamp(u64 new_stamp) { stamp = new_stamp; }
    SceneNode* getParent() const { return parent; }
    /// The top of the parent chain if that is a root, else null.
    SceneNodeRoot* getRoot();

    /// This node or a direct child, else null.
    SceneNode* getChildByUID(SceneNodeUID wanted);
    /// Throw when there is no such node or it is of another type.
    SceneNodeMaterial* getMaterial(SceneNodeUID wanted);
    SceneNodeMedium* getMedium(SceneNodeUID wanted);

    /// Visits this node, then all below it in order.
    void visitAll(SceneVisitor& visitor);
    u32 highestLayerIndexInTree() const;
    bool usesNodeInTree(SceneNode* node) const;
    bool isEqual(const SceneNode& other) const;
    /// Among direct children.
    u64 getNumChildrenOfType(u32 type) const;
    /// Appends the nodes of this tree whose type is in `types` and whose lowered name contains the query,
    /// until `out` holds 64. The query is not lowered here.
    void findByName(const String& lowercase_query, Vector<SceneNode*>& out, const Vector<u32>& types);

    /// Takes the next number of the root's change count; callers set `flags` to 1 first.
    void markChanged();
    String toXMLString();
    /// UID, name, flags and stamp.
    void copyBaseFieldsTo(SceneNode& target) const;
    void writeUIDAndName(OStream& stream, u32 depth) const;

    SceneNode* parent = nullptr; ///< Not owned. Null for a root and for a detached node.
    String name;
    SceneNodeUID uid;
    u32 flags = 0; ///< Bit 0: changed since the renderer last took the node.
    u64 stamp = 0; ///< The root's change count at the last change.
    Vector<Ref<SceneNode>> children;
    Map<SceneNodeUID, SceneNode*> uid_map; ///< Direct children, not owned.

protected:
    /// Puts `nodes` in the place of the children with their UIDs and has all children rebind.
    void rebindChildren(const Map<SceneNodeUID, Ref<SceneNode>>& nodes);

private:
    SceneNode* top();
};

} // namespace Quenza
