// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace engine {

/// The measured complex refractive index n + ik of a substance, by wavelength.
///
/// Its file is a text: a line for each wavelength with three numbers, the wavelength, n and k, apart by
/// blanks or commas. The wavelengths rise, or fall. Lines that begin with ";" or "#" are comments.
/// Wavelengths are in micrometres, nanometres or Angstrom: the one of the three in which the table covers
/// most of visible light.
class NKTable {
public:
    /// Null with the reason in `fault` when the text is no such table or leaves visible light out.
    static std::shared_ptr<const NKTable> parse(std::string_view text, std::string& fault);
    /// The same of a file.
    static std::shared_ptr<const NKTable> load(const std::string& path, std::string& fault);

    struct Index {
        double n, k;
    };
    /// Between two entries on the straight line; beyond the ends as there.
    Index at(double nanometres) const;

private:
    struct Entry {
        double nanometres, n, k;
    };
    std::vector<Entry> entries_; ///< By rising wavelength; never empty.
};

} // namespace engine
