// SPDX-License-Identifier: MIT
#pragma once

#include "reading/scene_parser.h"
#include "scene/scene_visitor.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {

/// Scene files in a folder of the test's own.
class SceneFiles : public ::testing::Test {
protected:
    /// Writes a file; "scene.qzs" is the scene that is read.
    void put(const std::string& name, const std::string& text) {
        const std::filesystem::path path = (folder / name).toStdString();
        std::filesystem::create_directories(path.parent_path());
        writeBytes(path.string(), text);
    }

    Ref<SceneNodeRoot> read(const QuenzaModelParser::Context& context = {}, const String& settings = "") {
        Ref<SceneNodeRoot> root;
        QuenzaModelParser().parseScene(root, folder / "scene.qzs", context, settings);
        return root;
    }
    /// A scene of these elements, each on a line of its own from line 2 on.
    Ref<SceneNodeRoot> readElements(const std::string& elements) {
        put("scene.qzs", "<scene>\n" + elements + "</scene>\n");
        return read();
    }
    /// Why such a scene is refused. The one class of exceptions is part of it.
    std::string refusal(const std::string& elements) {
        return thrownMessage<QuenzaModelParserExcep>([&] { readElements(elements); });
    }

    /// Resolves stored UIDs without loading anything.
    static void bind(SceneNodeRoot& root) {
        SceneVisitor visitor;
        root.visitAll(visitor);
    }
    static SceneNode* nodeNamed(const SceneNodeRoot& root, const std::string& name) {
        for (const Ref<SceneNode>& node : root.getChildren())
            if (node->getName() == String(name))
                return node.getPointer();
        return nullptr;
    }
    template <class Node>
    static Node& only(const SceneNodeRoot& root, u32 type) {
        EXPECT_EQ(root.getNumChildrenOfType(type), 1u);
        for (const Ref<SceneNode>& node : root.getChildren())
            if (node->getType() == type)
                return static_cast<Node&>(*node);
        throw QuenzaException("the scene has no such node");
    }
    static std::string xmlOf(SceneNode& node) { return node.toXMLString().toStdString(); }
    /// The node's elements behind `uid` and `name`, without white space between them.
    static std::string bodyOf(SceneNode& node) {
        std::string text = xmlOf(node);
        std::string body;
        for (const char c : text)
            if (c != '\n' && c != '\t')
                body += c;
        const std::size_t start = body.find("</name>") + 7;
        return body.substr(start, body.rfind("</") - start);
    }

    TempDir folder;
};

/// A triangle with two materials, the first of which is used.
inline constexpr const char* TRIANGLE =
    "<mesh><name>tri</name><embedded_2><used_material_name>red</used_material_name>"
    "<used_material_name>blue</used_material_name>"
    "<vertex pos=\"0 0 0\"/><vertex pos=\"1 0 0\"/><vertex pos=\"0 1 0\"/>"
    "<triangle v=\"0 1 2\" m=\"1\"/></embedded_2></mesh>\n";
inline constexpr const char* MATERIALS =
    "<material><uid>11</uid><name>red</name><null_material/></material>\n"
    "<material><uid>12</uid><name>blue</name><null_material/></material>\n";

} // namespace Quenza
