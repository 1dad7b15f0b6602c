// SPDX-License-Identifier: MIT
#include "scene/scene_node_root.h"

#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "scene/ostream.h"
#include "scene/scene_node_background_settings.h"
#include "scene/scene_node_metadata.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <cstdio>

namespace Quenza {

namespace {

constexpr f32 PROGRESS_STEP = 0.01f;

/// Nodes of which a scene has at most one, by their names in messages.
struct Singleton {
    u32 type;
    const char* name;
};
constexpr Singleton SINGLETONS[] = {
    {NODE_RENDER_SETTINGS, "SceneNodeRenderSettings"},
    {NODE_TONEMAPPING, "SceneNodeToneMapping"},
    {NODE_CAMERA, "SceneNodeCamera"},
    {NODE_BACKGROUND_SETTINGS, "SceneNodeBackgroundSettings"},
    {NODE_METADATA, "SceneNodeMetaData"},
};

void writeScene(SceneNodeRoot& root, OFStream& stream, const XMLWriteOptions& options) {
    try {
        stream.writeString("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n");
        root.writeToXML(stream, 0, options);
    } catch (const QuenzaException&) {
        throw;
    } catch (...) {
        throw QuenzaException("An unhandled error has occured.");
    }
}

} // namespace

SceneNodeRoot::SceneNodeRoot() {
    uid = SceneNodeUID(0);
    name = "Scene";
}

SceneNodeRoot::~SceneNodeRoot() = default;

Ref<SceneNode> SceneNodeRoot::clone() const {
    std::printf("SceneNodeRoot::clone() not yet implemented\n");
    return nullptr;
}

void SceneNodeRoot::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    writeOpenTag(stream, depth, "scene");
    const u64 count = children.size();
    f32 reported = 0;
    for (u64 i = 0; i < count; ++i) {
        children[i]->writeToXML(stream, depth + 1, options);
        if (i + 1 < count)
            stream.writeString("\n");
        const f32 fraction = f32(i) / f32(count);
        if (options.progress && fraction - reported > PROGRESS_STEP) {
            options.progress->progress(fraction);
            reported = fraction;
        }
    }
    writeCloseTag(stream, depth, "scene");
}

void SceneNodeRoot::doVisit(SceneVisitor&) {}

SceneNode* SceneNodeRoot::firstChildOfType(u32 type) const {
    for (const Ref<SceneNode>& child : children)
        if (child->getType() == type)
            return child.getPointer();
    return nullptr;
}

void SceneNodeRoot::appendChildrenOfType(u32 type, Vector<Ref<SceneNode>>& out) const {
    for (const Ref<SceneNode>& child : children)
        if (child->getType() == type)
            out.push_back(child);
}

Ref<SceneNodeBackgroundSettings> SceneNodeRoot::getBackgroundSettings() const {
    return static_cast<SceneNodeBackgroundSettings*>(firstChildOfType(NODE_BACKGROUND_SETTINGS));
}

Ref<SceneNodeMetaData> SceneNodeRoot::getMetaData() const {
    return static_cast<SceneNodeMetaData*>(firstChildOfType(NODE_METADATA));
}

void SceneNodeRoot::clearFlagsUpTo(u64 last_stamp) {
    for (const Ref<SceneNode>& child : children)
        if (child->stamp <= last_stamp)
            child->flags = 0;
}

void SceneNodeRoot::finalise(const String& path) {
    SceneVisitor loading;
    loading.mode = SceneVisitor::LOAD;
    loading.path = path;
    loading.base_path = FileUtils::getDirectory(path);
    visitAll(loading);

    SceneVisitor binding;
    binding.mode = SceneVisitor::BIND;
    visitAll(binding);
    finalised = true;
}

void SceneNodeRoot::replaceNodes(const Vector<Ref<SceneNode>>& nodes) {
    Map<SceneNodeUID, Ref<SceneNode>> by_uid;
    for (const Ref<SceneNode>& node : nodes)
        by_uid.insert(node->getUID(), node);
    rebindChildren(by_uid);
    for (const Ref<SceneNode>& node : nodes)
        if (!getChildByUID(node->getUID()))
            addChild(node);
}

void SceneNodeRoot::checkValidity() const {
    Map<SceneNodeUID, Ref<SceneNode>> by_uid;
    for (const Ref<SceneNode>& child : children) {
        if (const Ref<SceneNode>* first = by_uid.find(child->getUID()))
            throw QuenzaException("Two nodes sharing the same UID " + child->getUID().toString() + ":\n" +
                                  (*first)->getName() + ", " + child->getName());
        by_uid.insert(child->getUID(), child);
    }
    for (const Singleton& singleton : SINGLETONS)
        if (getNumChildrenOfType(singleton.type) > 1)
            throw QuenzaException(String("getNumChildrenOfType(") + singleton.name + ") > 1");
}

void SceneNodeRoot::writeToXMLFile(const String& path, bool write_absolute_paths, ProgressListener* progress,
                                   bool release_meshes) {
    OFStream stream(path);
    XMLWriteOptions options;
    options.scene_path = path;
    options.base_path = FileUtils::getDirectory(path);
    options.write_absolute_paths = write_absolute_paths;
    options.progress = progress;
    options.release_meshes = release_meshes;
    writeScene(*this, stream, options);
    if (!stream.commit())
        throw QuenzaException("Failed to write scene file '" + path + "'. " + stream.failureReason());
}

} // namespace Quenza
