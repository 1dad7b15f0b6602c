// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "foundation/vec.h"
#include "foundation/vector.h"
#include "scene/ostream.h"

namespace Quenza {

/// A spectral distribution as the scene carries it; evaluating it is the renderer's affair.
class Spectrum : public RefCounted {
public:
    virtual void writeToXML(OStream& stream, u32 depth) const = 0;
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    virtual Ref<Spectrum> clone() const = 0;
};

/// Black body radiation.
class BlackBodySpectrum : public Spectrum {
public:
    static constexpr u32 TYPE = 0;

    BlackBodySpectrum() = default;
    BlackBodySpectrum(double temperature_, double gain_) : temperature(temperature_), gain(gain_) {}

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<Spectrum> clone() const override { return new BlackBodySpectrum(*this); }

    double temperature = 6500.0; ///< Kelvin.
    double gain = 1.0;
};

/// One value within a band of wavelengths, another one outside it.
class PeakSpectrum : public Spectrum {
public:
    static constexpr u32 TYPE = 1;

    PeakSpectrum() = default;
    PeakSpectrum(double peak_min_, double peak_width_, double peak_value_, double base_value_)
        : peak_min(peak_min_), peak_width(peak_width_), peak_value(peak_value_), base_value(base_value_) {}

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<Spectrum> clone() const override { return new PeakSpectrum(*this); }

    double peak_min = 0.0;   ///< Wavelength at which the band starts.
    double peak_width = 0.0; ///< In the unit of `peak_min`.
    double peak_value = 0.0;
    double base_value = 0.0;
};

/// A colour whose gamma has not been applied.
class RGBSpectrum : public Spectrum {
public:
    static constexpr u32 TYPE = 2;

    RGBSpectrum() = default;
    RGBSpectrum(const Vec3d& rgb_, double gamma_) : rgb(rgb_), gamma(gamma_) {}

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<Spectrum> clone() const override { return new RGBSpectrum(*this); }

    Vec3d rgb{0.0, 0.0, 0.0};
    double gamma = 2.2;
};

/// Values at equal steps from the start to the end wavelength, both in metres.
class RegularSpectrum : public Spectrum {
public:
    static constexpr u32 TYPE = 3;

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<Spectrum> clone() const override { return new RegularSpectrum(*this); }

    double start_wavelength = 0.0;
    double end_wavelength = 0.0;
    i32 num_values = 0; ///< Kept by whoever fills `values`; written as it stands.
    Vector<double> values;
};

/// The same value at every wavelength.
class UniformSpectrum : public Spectrum {
public:
    static constexpr u32 TYPE = 4;

    UniformSpectrum() = default;
    explicit UniformSpectrum(double value_) : value(value_) {}

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Ref<Spectrum> clone() const override { return new UniformSpectrum(*this); }

    double value = 0.0;
};

} // namespace Quenza
