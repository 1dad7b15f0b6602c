// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/mutex.h"
#include "scene/scene_node.h"

namespace Quenza {

class SceneNodeBackgroundSettings;
class SceneNodeMetaData;

/// The whole scene: hands out UIDs, binds references and writes the scene file.
class SceneNodeRoot : public SceneNode {
public:
    SceneNodeRoot();
    ~SceneNodeRoot() override;

    u32 getType() const override { return NODE_ROOT; }
    Ref<SceneNode> clone() const override;
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) override;
    void doVisit(SceneVisitor& visitor) override;

    /// First direct child of that type, or null.
    Ref<SceneNode> getCamera() const { return firstChildOfType(NODE_CAMERA); }
    Ref<SceneNode> getRenderSettings() const { return firstChildOfType(NODE_RENDER_SETTINGS); }
    Ref<SceneNode> getToneMapping() const { return firstChildOfType(NODE_TONEMAPPING); }
    Ref<SceneNodeBackgroundSettings> getBackgroundSettings() const;
    Ref<SceneNodeMetaData> getMetaData() const;
    SceneNode* getCameraPointer() const { return firstChildOfType(NODE_CAMERA); }
    SceneNode* getRenderSettingsPointer() const { return firstChildOfType(NODE_RENDER_SETTINGS); }
    SceneNode* getToneMappingPointer() const { return firstChildOfType(NODE_TONEMAPPING); }

    /// Append the direct children of that type.
    void getMedia(Vector<Ref<SceneNode>>& out) const { appendChildrenOfType(NODE_MEDIUM, out); }
    void getMaterials(Vector<Ref<SceneNode>>& out) const { appendChildrenOfType(NODE_MATERIAL, out); }

    /// Clears the flags of the direct children that changed no later than `last_stamp`.
    void clearFlagsUpTo(u64 last_stamp);

    /// Loads what nodes hold only as paths, relative to the folder of `path`, then binds references.
    void finalise(const String& path);
    bool isFinalised() const { return finalised; }

    /// Guards the tree while a renderer's thread reads it.
    Mutex& getMutex() { return mutex; }

    u32 allocateUID() { return ++next_uid; }
    void setNextUID(u32 last_used) { next_uid = last_used; }

    /// Puts the nodes in the place of the children with the same UIDs, and adds those that have none.
    void replaceNodes(const Vector<Ref<SceneNode>>& nodes);

    /// Throws when two children share a UID or a node of which a scene has one is there twice.
    void checkValidity() const;

    /// Writes the scene file and, beside it, the mesh files. The scene file appears whole or not at all: on
    /// failure, a full disk included, this throws and an earlier file of that name is left as it was.
    void writeToXMLFile(const String& path, bool write_absolute_paths, ProgressListener* progress,
                        bool release_meshes = false);

    u32 next_uid = 0; ///< The last one handed out.
    Mutex mutex;
    bool finalised = false;

private:
    SceneNode* firstChildOfType(u32 type) const;
    void appendChildrenOfType(u32 type, Vector<Ref<SceneNode>>& out) const;
};

} // namespace Quenza
