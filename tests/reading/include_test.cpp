// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"
#include "scene/scene_node_mesh.h"
#include "support/pipe.h"
#include "support/system_texts.h"

#include <algorithm>
#include <functional>
#include <pthread.h>

namespace Quenza {

namespace {

std::string include(const std::string& pathname) {
    return "<include><pathname>" + pathname + "</pathname></include>";
}

/// A path with the system's separator in the place of each "|", as the reader puts it between what it joins;
/// slashes stay.
std::string joined(std::string path) {
    std::replace(path.begin(), path.end(), '|', PlatformUtils::SEPARATOR);
    return path;
}

class Include : public SceneFiles {
protected:
    void putData(const std::string& name, const std::string& elements) {
        put(name, "<scenedata>" + elements + "</scenedata>");
    }
    /// Of a file, by its path from the scene as the includes give it.
    std::string path(const std::string& name) const {
        return "'" + joined(folder.path().toStdString() + "|" + name) + "'";
    }
    /// What stands behind a fault in that file.
    std::string in(const std::string& name) const { return "  (In the included file " + path(name) + ")"; }
};

/// Paths are those of the files that they stand in, and the order of the elements is that of the text.
TEST_F(Include, ReadsFilesInTheirPlace) {
    const auto mesh = [](const std::string& name) {
        return "<mesh><name>" + name + "</name><external><path>" + name + ".ply</path></external></mesh>";
    };
    putData("parts/a.qzs", mesh("a") + include("deep/b.qzs") + mesh("a2"));
    putData("parts/deep/b.qzs", mesh("b") + include("../../c.qzs"));
    putData("c.qzs", "<material><name>stone</name><null_material/></material>" + mesh("c"));
    putData("absolute/d.qzs", mesh("d"));
    const Ref<SceneNodeRoot> root =
        readElements(mesh("s") + include("parts/a.qzs") + include((folder / "absolute/d.qzs").toStdString()) +
                     mesh("s2") + "<sphere><radius>1</radius><material_name>stone</material_name></sphere>");
    std::string paths;
    for (const Ref<SceneNode>& node : root->getChildren())
        if (node->getType() == NODE_MESH)
            paths += static_cast<SceneNodeMesh&>(*node).path.toStdString() + " ";
    EXPECT_EQ(paths, joined("s.ply parts|a.ply parts|deep|b.ply parts|deep|../..|c.ply parts|a2.ply ") +
                         (folder / "absolute/d.ply").toStdString() + " s2.ply ");
}

TEST_F(Include, RefusesCirclesWithTheirChain) {
    put("scene.qzs", "<scene>" + include("a.qzs") + "</scene>");
    putData("a.qzs", include("./sub/../b.qzs"));
    std::filesystem::create_directory((folder / "sub").toStdString());
    const std::string a = path("a.qzs"), b = path("./sub/../b.qzs"), includes = " includes ";
    const struct {
        const char* back;
        std::string chain;
    } cases[] = {
        {"b.qzs", b + includes + path("./sub/..|b.qzs")},
        {"a.qzs", a + includes + b + includes + path("./sub/..|a.qzs")},
        {"scene.qzs",
         path("scene.qzs") + includes + a + includes + b + includes + path("./sub/..|scene.qzs")},
    };
    for (const auto& [back, chain] : cases) {
        putData("b.qzs", include(back));
        EXPECT_EQ(thrownMessage<QuenzaModelParserExcep>([&] { read(); }),
                  "Includes go in a circle: " + chain + "  (In element 'include', around line 1, column 12)" +
                      in("./sub/../b.qzs"));
    }
}

TEST_F(Include, FollowsLinksToFindCircles) {
#ifdef _WIN32
    GTEST_SKIP() << "only some may make links";
#endif
    std::filesystem::create_directory_symlink(folder.path().toStdString(), (folder / "loop").toStdString());
    putData("a.qzs", include("loop/a.qzs"));
    EXPECT_EQ(refusal(include("a.qzs")),
              "Includes go in a circle: " + path("a.qzs") + " includes " + path("loop/a.qzs") +
                  "  (In element 'include', around line 1, column 12)" + in("a.qzs"));
}

TEST_F(Include, RefusesWhatIsNoSceneData) {
    put("bad.qzs", "<scene/>");
    put("odd.qzs", "<scenedata><teapot/></scenedata>");
    put("deep/cut.qzs", "<scenedata><mesh></scenedata>");
    put("deep/nameless.qzs", "<scenedata>\n\n  <model><mesh_name>x</mesh_name></model></scenedata>");
    put("outer.qzs", "<scenedata>" + include("deep/nameless.qzs") + "</scenedata>");
    put("after.qzs", "<scenedata>" + include("empty.qzs") + "\n<camera><zoom/></camera></scenedata>");
    put("empty.qzs", "<scenedata/>");
    const struct {
        std::string element;
        std::string message;
    } cases[] = {
        {include("bad.qzs"), "Unknown root element 'scene'" + in("bad.qzs")},
        {include("odd.qzs"),
         "Unknown element type  (In element 'teapot', around line 1, column 12)" + in("odd.qzs")},
        {include("outer.qzs"),
         "Model tried to use undefined mesh 'x'.   (In element 'model', around line 3, column 3)" +
             in("deep/nameless.qzs")},
        {include("after.qzs"),
         "Found unexpected element 'zoom'  (In element 'zoom', around line 2, column 9)" + in("after.qzs")},
        {include("odd.qzs") + "<cube/>",
         "Unknown element type  (In element 'teapot', around line 1, column 12)" + in("odd.qzs")},
        {include("empty.qzs") + "<cube/>",
         "Unknown element type  (In element 'cube', around line 2, column 50)"},
        {include("deep/cut.qzs"), "failed to load XML doc from path " + path("deep/cut.qzs") +
                                      ": Error reading end tag.  (Line 1, column 18.)"},
        {include("none.qzs"), "Failed to open XML doc from path " + path("none.qzs") + ": " + noSuchFile()},
        {"<include/>", "could not find element 'pathname'  (In element 'include', around line 2, column 1)"},
        {"<include><path>a</path></include>",
         "Found unexpected element 'path'  (In element 'path', around line 2, column 10)"},
    };
    for (const auto& [element, message] : cases)
        EXPECT_EQ(refusal(element), message) << element;
    if (makePipe(folder / "pipe")) {
        EXPECT_EQ(refusal(include("pipe")),
                  "Failed to open XML doc from path " + path("pipe") +
                      ": not a file  (In element 'include', around line 2, column 1)");
    }
}

/// On a stack that would not hold a hundred bytes a file.
TEST_F(Include, GoesAsDeepAsTheFilesDo) {
    constexpr int DEPTH = 2000;
    constexpr std::size_t STACK_BYTES = std::size_t(192) << 10;
    for (int i = 0; i < DEPTH; ++i)
        putData(std::to_string(i), i + 1 < DEPTH ? include(std::to_string(i + 1)) : "<metadata/>");
    std::function<void()> action = [&] {
        EXPECT_EQ(readElements(include("0"))->getNumChildrenOfType(NODE_METADATA), 1u);
    };
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, STACK_BYTES), 0);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<std::function<void()>*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &action), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

/// Each file names the next one twice: without a limit 2^40 files would be read.
TEST_F(Include, RefusesEndlessRepetition) {
    putData("leaf", "");
    for (int i = 0; i < 40; ++i)
        putData(std::to_string(i), include(i + 1 < 40 ? std::to_string(i + 1) : "leaf") +
                                       include(i + 1 < 40 ? std::to_string(i + 1) : "leaf"));
    EXPECT_EQ(refusal(include("0")).substr(0, 58),
              "The scene includes the same files too often, the last bein");
    // What people do is fine.
    std::string twice;
    for (int i = 0; i < 500; ++i)
        twice += include("leaf");
    EXPECT_EQ(readElements(twice)->getChildren().size(), 2u);
}

} // namespace

} // namespace Quenza
