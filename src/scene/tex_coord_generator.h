// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "scene/ostream.h"
#include "scene/rotation.h"

namespace Quenza {

/// Where a texture takes its coordinates from.
class TexCoordGenerator : public RefCounted {
public:
    virtual void writeToXML(OStream& stream, u32 depth) const = 0;
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    /// A rotation is shared with the copy.
    virtual Ref<TexCoordGenerator> clone() const = 0;
};

/// A UV set of the surface, transformed: matrix * uv + translation.
class UVTexCoordGenerator : public TexCoordGenerator {
public:
    static constexpr u32 TYPE = 0;

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<TexCoordGenerator> clone() const override { return new UVTexCoordGenerator(*this); }

    Matrix2d matrix{{1.0, 0.0, 0.0, 1.0}};
    Vec2d translation{0.0, 0.0};
};

/// Longitude and latitude of the direction, after the rotation.
class SphericalTexCoordGenerator : public TexCoordGenerator {
public:
    static constexpr u32 TYPE = 1;

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<TexCoordGenerator> clone() const override { return new SphericalTexCoordGenerator(*this); }

    Ref<Rotation> rotation; ///< Null writes an empty element.
};

/// The same for environment maps.
class SphericalEnvTexCoordGenerator : public TexCoordGenerator {
public:
    static constexpr u32 TYPE = 2;

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<TexCoordGenerator> clone() const override { return new SphericalEnvTexCoordGenerator(*this); }

    Ref<Rotation> rotation; ///< Null writes an empty element.
};

} // namespace Quenza
