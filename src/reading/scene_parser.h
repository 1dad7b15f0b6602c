// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "reading/include_stack.h"
#include "reading/parser_state.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_root.h"

class TiXmlElement;

namespace Quenza {

class XMLElementReader;

/// Reads a scene file into nodes. One parser serves one scene and one thread. Every failure is a
/// QuenzaModelParserExcep; reading stops at the first.
class QuenzaModelParser {
public:
    struct Context {
        /// The renderer's folder, with `inifile.xml`; empty: there is no such layer of settings.
        String base_directory;
    };

    /// Makes the scene of the file. References by UID are bound and mesh files loaded by
    /// SceneNodeRoot::finalise alone. The root has background settings and settings, default ones if need be.
    /// `root` is set when all is read.
    ///
    /// Settings come in layers: the library's defaults, then `inifile.xml`, then the scene's, then
    /// `extra_settings`, which is the inside of a `renderer_settings` element or empty. A scene with several
    /// `renderer_settings` has as many layers, the later above the earlier; they become one node.
    void parseScene(Ref<SceneNodeRoot>& root, const String& scene_path, const Context& context,
                    const String& extra_settings);

    /// Makes the nodes of a material file, which has the children of a scene below `scenedata` or `scene`,
    /// and binds their references. Settings in it have no layers. `root` is set when all is read.
    void parseMaterialFile(Ref<SceneNodeRoot>& root, const String& path);

    /// The settings of "<directory>/inifile.xml", only those that the file sets. The file has to be there.
    Ref<SceneNodeRenderSettings> readIniFile(const String& directory);

    /// The settings of a `--settings` argument: the inside of a `renderer_settings` element.
    Ref<SceneNodeRenderSettings> readExtraSettings(const String& text);

    /// Reads one child of `scene` and appends what it makes: no node, one, or several. An `include` gives the
    /// nodes of all the files that it leads to. Nodes without a UID get theirs from the root that they are
    /// added to. Also for the children of material files.
    void parseElement(const TiXmlElement& element, NodeList& nodes);

    /// For callers that read the document themselves: its path, for relative paths in it.
    void setScenePath(const String& path);

private:
    NodeList readSceneFile(const String& scene_path);
    NodeList readChildren(XMLElementReader& file);
    void readElement(const TiXmlElement& element, NodeList& nodes);
    Ref<SceneNodeRenderSettings> readIniSettings(const String& directory);
    void completeSettings(NodeList& nodes, const Context& context, const String& extra_settings);

    ParserState state_;
    IncludeStack includes_;
};

} // namespace Quenza
