// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

namespace engine {

/// The response of a film or digital camera: display value (0 to 1, as encoded for a display) of a relative
/// exposure, whose 1 is saturation, for each channel.
class CameraResponse {
public:
    /// The stated default: the sRGB encoding of 1 - exp(-1.1025 x), which keeps 0.18 and has a soft shoulder
    /// instead of a hard limit.
    CameraResponse();

    /// Reads the curves of a text file. Numbers stand in one of two forms:
    /// - rows of two or four columns: exposure, then the value of all channels or of red, green and blue;
    /// - rows of any length under headings, in turns the exposures and the values of a curve; one curve
    /// serves all
    ///   channels, of three and more the first three are red, green and blue.
    /// Exposures must rise. False with the reason in `fault` when it can't be read; the response is unchanged
    /// then.
    bool load(const std::string& path, std::string& fault);

    /// False for the default.
    bool isMeasured() const { return !curves_[0].exposures.empty(); }
    float operator()(int channel, float exposure) const;

private:
    struct Curve {
        std::vector<float> exposures, values;
    };
    static bool readCurves(const std::string& text, std::vector<Curve>& curves);

    std::array<Curve, 3> curves_; ///< Empty for the default.
};

} // namespace engine
