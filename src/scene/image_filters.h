// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"

namespace Quenza {

class OStream;

// The cubic filters are those of Mitchell and Netravali (1988): their B is `blur`, their C is `ring`.

/// Spreads a sample over the pixels around it.
class SplatFilter : public RefCounted {
public:
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    /// The element "splat_filter".
    virtual void writeToXML(OStream& stream, u32 depth) const = 0;
    virtual Ref<SplatFilter> clone() const = 0;
};

class SplatFilterFastBox : public SplatFilter {
public:
    static constexpr u32 TYPE = 0;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth) const override;
    Ref<SplatFilter> clone() const override;
};

class SplatFilterRadial : public SplatFilter {
public:
    static constexpr u32 TYPE = 1;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth) const override;
    Ref<SplatFilter> clone() const override;
};

class SplatFilterMNCubic : public SplatFilter {
public:
    static constexpr u32 TYPE = 2;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth) const override;
    Ref<SplatFilter> clone() const override;

    double ring = 0.6;
    double blur = 0.2;
};

class SplatFilterBox : public SplatFilter {
public:
    static constexpr u32 TYPE = 3;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth) const override;
    Ref<SplatFilter> clone() const override;
};

/// Makes the image's pixels of the finer ones that are rendered.
class DownsizeFilter : public RefCounted {
public:
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    /// The element "downsize_filter".
    virtual void writeToXML(OStream& stream, u32 depth) const = 0;
    virtual Ref<DownsizeFilter> clone() const = 0;
};

class DownsizeFilterGaussian : public DownsizeFilter {
public:
    static constexpr u32 TYPE = 0;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth) const override;
    Ref<DownsizeFilter> clone() const override;
};

class DownsizeFilterMNCubic : public DownsizeFilter {
public:
    static constexpr u32 TYPE = 1;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth) const override;
    Ref<DownsizeFilter> clone() const override;

    double ring = 0;
    double blur = 1;
    /// In pixels of the image. The default is a float's value, as scene files show: 1.600000023841858.
    double radius = double(1.6f);
};

class DownsizeFilterSharp : public DownsizeFilter {
public:
    static constexpr u32 TYPE = 2;

    u32 getType() const override { return TYPE; }
    void writeToXML(OStream& stream, u32 depth) const override;
    Ref<DownsizeFilter> clone() const override;
};

} // namespace Quenza
