// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/scene_diff.h"

#include "foundation/string_utils.h"
#include "reading/node_elements.h"
#include "scene/mesh_file.h"
#include "scene/ostream.h"
#include "scene/scene_node_mesh.h"
#include "tools/quenza-scene/element_diff.h"

#include <cstdio>
#include <map>
#include <tuple>

namespace scene_tool {

namespace {

using namespace Quenza;

/// What two nodes have in common that go together.
using Key = std::tuple<u32, u32, std::string, u32>; // type, UID, name, turn

std::vector<Key> keysOf(const SceneNodeRoot& root, bool ignore_uids) {
    std::vector<Key> keys;
    std::map<Key, u32> met;
    for (const Ref<SceneNode>& node : root.getChildren()) {
        Key key{node->getType(), 0, "", 0};
        if (!isSingleNodeType(node->getType())) {
            if (ignore_uids)
                std::get<2>(key) = node->getName().toStdString();
            else
                std::get<1>(key) = node->getUID().value();
        }
        std::get<3>(key) = met[key]++;
        keys.push_back(key);
    }
    return keys;
}

/// Text with the digits of a scene file: what the file can't tell apart is no difference.
class FileTextStream : public BufferOStream {
public:
    void writeDouble(double value) override {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%g", value);
        writeString(digits);
    }
};

std::string titleOf(const SceneNode& node) {
    return std::string(nodeElementName(node.getType())) + " " + toString(node.getUID().value()) + " \"" +
           node.getName().toStdString() + "\"";
}

/// The node as it would be written, its own mesh named by what is in it.
std::string textOf(SceneNode& node) {
    if (auto* const mesh_node = dynamic_cast<SceneNodeMesh*>(&node); mesh_node && mesh_node->mesh)
        mesh_node->releaseMesh(getMeshFileName(*mesh_node->mesh));
    FileTextStream stream;
    node.writeToXML(stream, 0, XMLWriteOptions());
    return stream.getBuffer().toStdString();
}

class SceneDiff {
public:
    SceneDiff(SceneNodeRoot& a, SceneNodeRoot& b, bool ignore_uids)
        : a_(a), b_(b), ignore_uids_(ignore_uids), keys_a_(keysOf(a, ignore_uids)),
          keys_b_(keysOf(b, ignore_uids)) {}

    std::vector<std::string> run() {
        std::map<Key, SceneNode*> partners;
        for (u64 i = 0; i < keys_b_.size(); ++i)
            partners[keys_b_[i]] = b_.getChildren()[i].getPointer();
        std::vector<std::pair<SceneNode*, SceneNode*>> pairs;
        for (u64 i = 0; i < keys_a_.size(); ++i) {
            const auto partner = partners.extract(keys_a_[i]);
            pairs.emplace_back(a_.getChildren()[i].getPointer(), partner ? partner.mapped() : nullptr);
        }
        if (ignore_uids_)
            for (const auto& [node, partner] : pairs)
                if (partner)
                    uids_.emplace(partner->getUID().value(), node->getUID().value());
        for (const auto& [node, partner] : pairs)
            comparePair(*node, partner);
        for (u64 i = 0; i < keys_b_.size(); ++i)
            if (partners.contains(keys_b_[i]))
                lines_.push_back("+ " + titleOf(*b_.getChildren()[i]));
        return std::move(lines_);
    }

private:
    void comparePair(SceneNode& node, SceneNode* partner) {
        if (!partner) {
            lines_.push_back("- " + titleOf(node));
            return;
        }
        const std::string title = titleOf(node);
        for (const std::string& difference :
             diffElements(textOf(node), textOf(*partner), ignore_uids_ ? &uids_ : nullptr))
            lines_.push_back("~ " + title + ": " + difference);
    }

    SceneNodeRoot& a_;
    SceneNodeRoot& b_;
    bool ignore_uids_;
    std::vector<Key> keys_a_;
    std::vector<Key> keys_b_;
    UIDMap uids_;
    std::vector<std::string> lines_;
};

} // namespace

std::vector<std::string> diffScenes(SceneNodeRoot& a, SceneNodeRoot& b, bool ignore_uids) {
    return SceneDiff(a, b, ignore_uids).run();
}

} // namespace scene_tool
