// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "scene/ostream.h"
#include "scene/param.h"
#include "scene/scene_visitor.h"
#include "scene/xml_write_options.h"

namespace Quenza {

/// How light spreads when it scatters inside a medium.
class PhaseFunction : public RefCounted {
public:
    virtual void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const = 0;
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    /// Takes part in the dependency modes of a visit.
    virtual void visit(SceneVisitor&) {}
};

/// The same in every direction.
class UniformPhaseFunction : public PhaseFunction {
public:
    static constexpr u32 TYPE = 0;

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return TYPE; }
};

/// Forward to backward scattering by the mean cosine g.
class HenyeyGreensteinPhaseFunction : public PhaseFunction {
public:
    static constexpr u32 TYPE = 1;

    void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const override;
    u32 getType() const override { return TYPE; }
    void visit(SceneVisitor& visitor) override;

    Ref<VolumeParam> g_spectrum;
};

} // namespace Quenza
