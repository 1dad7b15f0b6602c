// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "scene/xml_write_options.h"

namespace Quenza {

class OStream;
class SceneVisitor;

/// The opening of a camera's lens, which gives highlights out of focus their form.
class ApertureShape : public RefCounted {
public:
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    /// The element "aperture_shape".
    virtual void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const = 0;
    /// Collects and maps the shape's files.
    virtual void doVisit(SceneVisitor& visitor);
};

class ApertureCircular : public ApertureShape {
public:
    static constexpr u32 TYPE = 0;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
};

/// Blades as of an iris. Lengths are in multiples of the aperture radius.
class ApertureGenerated : public ApertureShape {
public:
    static constexpr u32 TYPE = 1;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;

    i32 num_blades = 6;
    double blade_offset = 0.4;
    double blade_curvature_radius = 3.0;
    double start_angle = 0.2; ///< Radians.
};

/// Lets light through where an image is bright.
class ApertureImage : public ApertureShape {
public:
    static constexpr u32 TYPE = 2;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    void doVisit(SceneVisitor& visitor) override;

    String path;
};

} // namespace Quenza
