// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "foundation/vector.h"
#include "scene/scene_node.h"

#include <map>
#include <string>

class TiXmlElement;

namespace Quenza {

class SceneNodeMaterial;
class SceneNodeMedium;
class SceneNodeMesh;

/// The one exception of reading scenes. Its text names what is wrong and, for whatever lies within the
/// document, the element with its line and column.
class QuenzaModelParserExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};
using SceneParserExcep = QuenzaModelParserExcep;

/// Throws QuenzaModelParserExcep with the message and the element's context behind it.
[[noreturn]] void throwParserError(const std::string& message, const TiXmlElement& element);

using NodeList = Vector<Ref<SceneNode>>;

/// What the element readers share while one scene is read.
struct ParserState {
    ParserState();
    ~ParserState();
    ParserState(const ParserState&) = delete;
    ParserState& operator=(const ParserState&) = delete;

    String scene_dir; ///< Folder of the scene file.
    /// Folder of the file that is being read as seen from the scene's; empty while that is the scene itself.
    String base_from_scene;

    /// By name, aliases among them. The last of several materials of one name counts.
    std::map<std::string, Ref<SceneNodeMaterial>> materials;
    std::map<std::string, Ref<SceneNodeMesh>> meshes;
    std::map<std::string, Ref<SceneNodeMedium>> media;

    double white_point_x = 0; ///< Override of the settings' white point; both zero means none.
    double white_point_y = 0;
    Vector<String> layer_names; ///< From `layer_name` elements.
    u32 num_rectangle_lights = 0;

    /// A path of the file that is being read, in the form that nodes hold: relative to the scene's folder, or
    /// absolute when an absolute path led here. In the scene file itself paths stay as they are written.
    String resolvePath(const String& path) const;

    /// Throws "Material '...' is not defined. " with the context of `element`.
    Ref<SceneNodeMaterial> findMaterial(const std::string& name, const TiXmlElement& element) const;

    /// Null when there is no such mesh.
    Ref<SceneNodeMesh> findMesh(const std::string& name) const;

    /// Reads `material_name` or `material_uid` below `element`. A name must be known already and gives the
    /// node; a UID may be that of a node further on, and is left to binding. Returns false when neither child
    /// is there.
    bool parseMaterialReference(const TiXmlElement& element, Ref<SceneNodeMaterial>& node, SceneNodeUID& uid,
                                const char* name_child = "material_name",
                                const char* uid_child = "material_uid") const;

    /// Enters a mesh by its name: "Mesh with name '...' already defined; mesh names must be unique. ".
    void enterMesh(const Ref<SceneNodeMesh>& mesh, const TiXmlElement& element);
};

/// Reads the children `uid` and `name`, both optional. A node without a UID gets one when it joins the scene.
void parseUIDAndName(const TiXmlElement& element, SceneNode& node);

} // namespace Quenza
