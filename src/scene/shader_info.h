// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vector.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/shader_param.h"
#include "scene/texture.h"
#include "scene/xml_write_options.h"

namespace Quenza {

/// A shader program with what it refers to.
class ShaderInfo : public RefCounted {
public:
    ShaderInfo() = default;
    explicit ShaderInfo(const String& source) : shader(source) {}

    /// True without params, includes and source; textures alone don't make a shader.
    bool isEmpty() const { return params.empty() && includes.empty() && shader.empty(); }
    /// Writes params, includes, textures and source without a frame of their own.
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const;
    /// Takes part in the dependency modes of a visit with its includes and textures.
    void visit(SceneVisitor& visitor);

    Vector<Ref<ShaderParam>> params;
    Vector<String> includes; ///< Paths.
    Vector<Texture> textures;
    String shader; ///< QSL source.
};

} // namespace Quenza
