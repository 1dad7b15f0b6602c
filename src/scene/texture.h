// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/tex_coord_generator.h"
#include "scene/xml_write_options.h"

namespace Quenza {

/// An image and how a parameter reads it. The value of a texel t, raised to the power `exponent`, is
/// a * t * t + b * t + c. A plain value; copies share the generator.
struct Texture {
    /// Writes the element "texture".
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const;
    /// Takes part in the dependency modes of a visit with its path.
    void visit(SceneVisitor& visitor);

    String path;
    double a = 0.0;
    double b = 1.0;
    double c = 0.0;
    i32 uv_set_index = 0;
    double exponent = 2.2;
    Ref<TexCoordGenerator> tex_coord_generation; ///< May be null.
    bool smooth = false;
};

} // namespace Quenza
