// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "scene/ostream.h"

namespace Quenza {

/// A named value that a shader's source can call as a function.
class ShaderParam : public RefCounted {
public:
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    virtual Ref<ShaderParam> clone() const = 0;
    virtual void writeToXML(OStream& stream, u32 depth) const = 0;
    /// Sets `out` to the definition that gives the shader this value. Throws QuenzaException when the name
    /// holds anything but digits, ASCII letters and underscores.
    virtual void getShaderFunction(String& out) const = 0;

    String name;
    String description;

protected:
    void writeNameAndDescription(OStream& stream, u32 depth) const;
    /// "def param<name>() <type> : <value>" and a line end.
    String definition(const char* type, const std::string& value) const;
};

class RealShaderParam : public ShaderParam {
public:
    static constexpr u32 TYPE = 0;

    u32 getType() const override { return TYPE; }
    Ref<ShaderParam> clone() const override { return new RealShaderParam(*this); }
    void writeToXML(OStream& stream, u32 depth) const override;
    void getShaderFunction(String& out) const override;

    double min = 0.0;
    double max = 0.0;
    double value = 0.0;
};

class IntShaderParam : public ShaderParam {
public:
    static constexpr u32 TYPE = 1;

    u32 getType() const override { return TYPE; }
    Ref<ShaderParam> clone() const override { return new IntShaderParam(*this); }
    void writeToXML(OStream& stream, u32 depth) const override;
    void getShaderFunction(String& out) const override;

    i32 min = 0;
    i32 max = 0;
    i32 value = 0;
};

class Colour3ShaderParam : public ShaderParam {
public:
    static constexpr u32 TYPE = 3;

    u32 getType() const override { return TYPE; }
    Ref<ShaderParam> clone() const override { return new Colour3ShaderParam(*this); }
    void writeToXML(OStream& stream, u32 depth) const override;
    void getShaderFunction(String& out) const override;

    Vec3d value{0.0, 0.0, 0.0};
};

} // namespace Quenza
