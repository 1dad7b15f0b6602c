// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_write_options.h"

namespace Quenza {

class WavelengthDependentParam;
class WavelengthIndependentParam;

/// A quantity of a material or medium: a constant, a shader or a texture.
class Param : public RefCounted {
public:
    /// Writes one element, named after the form of the parameter. The element around it is the caller's.
    virtual void writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) const = 0;
    /// The form: one of the numbers of the family.
    virtual u32 getType() const = 0;
    /// Takes part in the dependency modes of a visit.
    virtual void visit(SceneVisitor&) {}
};

/// A parameter that may serve another family.
class ConvertibleParam : public Param {
public:
    /// This parameter as a wavelength-independent one; null when it has no such form. Constants are copied,
    /// shader forms share their ShaderInfo, texture forms keep the index.
    virtual Ref<WavelengthIndependentParam> cloneWavelengthIndependent() const;
    /// Likewise as a wavelength-dependent one; a single number becomes a uniform spectrum.
    virtual Ref<WavelengthDependentParam> cloneWavelengthDependent() const;
};

/// A spectrum: albedo, emission, transmittance.
class WavelengthDependentParam : public ConvertibleParam {
public:
    static constexpr u32 CONSTANT = 0;
    static constexpr u32 SHADER = 1;
    static constexpr u32 TEXTURE = 2;
};

/// A number: exponent, roughness, weight.
class WavelengthIndependentParam : public ConvertibleParam {
public:
    static constexpr u32 CONSTANT = 0;
    static constexpr u32 SHADER = 1;
    static constexpr u32 TEXTURE = 2;
};

/// A height in metres, or a blend factor.
class DisplacementParam : public ConvertibleParam {
public:
    static constexpr u32 CONSTANT = 0;
    static constexpr u32 SHADER = 1;
    static constexpr u32 TEXTURE = 2;
};

/// A quantity inside a medium.
class VolumeParam : public ConvertibleParam {
public:
    static constexpr u32 CONSTANT = 0;
    static constexpr u32 SHADER = 1;
    static constexpr u32 VOXEL = 2;
};

/// A vector: the normal map. It has no constant form, so its numbers start with the shader.
class Vec3Param : public Param {
public:
    static constexpr u32 SHADER = 0;
    static constexpr u32 TEXTURE = 1;
};

} // namespace Quenza
