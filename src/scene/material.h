// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/map.h"
#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/uid.h"
#include "foundation/vector.h"
#include "scene/material_fields.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/shader_info.h"
#include "scene/texture.h"
#include "scene/xml_write_options.h"

#include <functional>

namespace Quenza {

class SceneNode;

/// How a surface reflects, transmits and emits light. A SceneNodeMaterial gives it a place in the scene;
/// several nodes may share one material.
class Material : public RefCounted {
public:
    /// What is fixed for a class.
    struct Kind {
        u32 type;
        const char* element;    ///< The type element of the file.
        const char* class_name; ///< For messages.
    };

    virtual String getTypeName() const { return kind_.element; }
    /// The TYPE of the class.
    virtual u32 getType() const { return kind_.type; }
    /// The highest light layer that the material emits on.
    virtual u32 getLayer();
    /// Takes part in a visit for the node `owner`: files in the dependency modes, stored UIDs in the bind and
    /// offset modes. `owner` is null for a material outside the tree, such as the background's, which can
    /// then refer to no other node. Throws QuenzaException when a node that is referred to is missing or of
    /// the wrong type.
    virtual void bind(SceneVisitor& visitor, SceneNodeMaterial* owner);
    /// True when `node` is referred to, in whatever depth. Only bound references are followed; cycles end.
    virtual bool usesNode(SceneNode* node);
    /// The valid UIDs of all references, in the order of the file.
    virtual Vector<SceneNodeUID> getReferencedUIDs();
    /// True when this material or one that it refers to moves the surface.
    virtual bool hasDisplacement();
    /// Writes the children of the type element, which stands at `depth`.
    virtual void writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options);

    /// Writes the type element at `depth`, and behind it the flags that are set.
    void writeFrameToXML(OStream& stream, u32 depth, const XMLWriteOptions& options);
    /// Presents all fields of the body to a walk.
    void presentFields(MaterialFields& fields) { describe(fields); }
    /// Points bound references to their replacements in `map`, where it holds one of the right type.
    void rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& map);

    String name;
    Vector<Texture> textures;           ///< What the parameters' texture indices select from.
    Ref<ShaderInfo> shared_shader_info; ///< Source that the parameters' shaders share; may be null.
    bool backface_emit = false;
    bool shadow_catcher = false;

protected:
    explicit Material(const Kind& kind) : kind_(kind) {}

    /// Presents the fields of the body.
    virtual void describe(MaterialFields&) {}

private:
    /// True when `test` holds for a node that is reached by bound references. Each material is entered once.
    bool anyUsedNode(const std::function<bool(SceneNodeMaterial&)>& test);
    bool movesSurface();

    const Kind& kind_; ///< A constant of the class.
};

} // namespace Quenza
