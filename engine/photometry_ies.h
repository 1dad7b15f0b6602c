// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace engine {

/// The light distribution of a luminaire, from a file in the form IES LM-63 (1986 to 2002), type C
/// photometry.
class IESDistribution {
public:
    /// Null with the reason in `fault` when the file can't be read.
    static std::shared_ptr<const IESDistribution> load(const std::string& path, std::string& fault);
    static std::shared_ptr<const IESDistribution> parse(std::string_view text, std::string& fault);

    /// Intensity per lumen that the luminaire sends out: the integral over all directions is 1. `vertical` is
    /// the angle from the axis that the luminaire shines along (nadir), `horizontal` the one around it; both
    /// in radians.
    float at(float vertical, float horizontal) const;

    /// The luminous flux of the distribution, integrated from its candelas.
    double lumens() const { return lumens_; }
    /// The greatest value of at().
    float maximum() const { return maximum_; }

private:
    float candela(double vertical_degrees, double horizontal_degrees) const;
    double foldHorizontal(double degrees) const;
    double integrate() const;

    std::vector<float> vertical_, horizontal_; ///< Degrees, rising.
    std::vector<float> candelas_;              ///< By horizontal, then vertical angle.
    double lumens_ = 0;
    float maximum_ = 0;
};

} // namespace engine
