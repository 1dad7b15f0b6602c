// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "scene/ostream.h"
#include "scene/param.h"
#include "scene/phase_function.h"
#include "scene/scene_visitor.h"
#include "scene/xml_write_options.h"

namespace Quenza {

/// What fills the inside of a closed surface. A SceneNodeMedium gives it a place in the scene.
class Medium : public RefCounted {
public:
    /// Writes the type element with all that is in it, at `depth`.
    virtual void writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const = 0;
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    /// Takes part in the dependency modes of a visit.
    virtual void visit(SceneVisitor&) {}

    String name;
    i32 precedence = 10; ///< Where media overlap, the highest wins.
};

class SubsurfaceScattering : public RefCounted {
public:
    /// Writes the elements without a frame of their own.
    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const;
    void visit(SceneVisitor& visitor);

    Ref<VolumeParam> scattering_coefficient; ///< Per metre; may be null.
    Ref<PhaseFunction> phase_function;       ///< May be null.
};

class BasicMedium : public Medium {
public:
    static constexpr u32 TYPE = 0;

    void writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return TYPE; }
    void visit(SceneVisitor& visitor) override;

    double ior = 1.3;
    double cauchy_b_coeff = 0.0;
    double step_size = 0.01;                         ///< Metres, of the march through a varying medium.
    Ref<VolumeParam> absorption_coefficient;         ///< Per metre; may be null.
    Ref<SubsurfaceScattering> subsurface_scattering; ///< May be null.
};

/// Inner layer of the skin.
class Dermis : public Medium {
public:
    static constexpr u32 TYPE = 1;

    void writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return TYPE; }

    double hemoglobin_fraction = 0.05;
};

/// Outer layer of the skin.
class Epidermis : public Medium {
public:
    static constexpr u32 TYPE = 2;

    void writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return TYPE; }

    double melanin_fraction = 0.25;
    double melanin_type_blend = 0.5;
};

/// The air around a planet.
class Atmosphere : public Medium {
public:
    static constexpr u32 TYPE = 3;

    void writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return TYPE; }

    Vec3d center{0.0, 0.0, 0.0}; ///< Of the planet, scene space, metres.
    double turbidity = 2.0;
};

} // namespace Quenza
