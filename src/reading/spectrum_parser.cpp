// SPDX-License-Identifier: MIT
#include "reading/spectrum_parser.h"

#include "foundation/text_cursor.h"
#include "foundation/types.h"
#include "foundation/vector.h"
#include "reading/element_table.h"
#include "reading/parser_state.h"
#include "reading/xml_values.h"

#include <array>
#include <string>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

constexpr i32 MAX_VALUES = 1000000;

/// The visible range that a tabulated spectrum must cover, metres. Writers multiply nanometres by 1e-9, which
/// makes 400 nm come out a last digit too long, so the limits have that much room.
constexpr double ROUNDING = 1e-12;
constexpr double LATEST_START = 0.4e-6 * (1 + ROUNDING);
constexpr double EARLIEST_END = 0.7e-6 * (1 - ROUNDING);

/// `count` numbers, and no more, in the child `values`.
Vector<double> parseValues(const TiXmlElement& element, u64 count) {
    const std::string text = elementText(childElement(element, "values"));
    TextCursor cursor(text);
    Vector<double> values;
    cursor.skipWhitespace();
    for (double value; values.size() < count && cursor.parseDouble(value);) {
        values.push_back(value);
        const char* const number_end = cursor.position();
        cursor.skipWhitespace();
        if (!cursor.atEnd() && cursor.position() == number_end)
            break;
    }
    if (values.size() != count || !cursor.atEnd())
        throwParserError("Syntax error while parsing data.", element);
    return values;
}

Ref<Spectrum> parseRGB(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"rgb", "gamma"});
    Ref<RGBSpectrum> spectrum = new RGBSpectrum;
    spectrum->rgb = parseVec3(element, "rgb");
    spectrum->gamma = parseOptionalDouble(element, "gamma", spectrum->gamma);
    return spectrum;
}

Ref<Spectrum> parseBlackBody(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"temperature", "gain"});
    Ref<BlackBodySpectrum> spectrum = new BlackBodySpectrum;
    spectrum->temperature = parseDouble(element, "temperature");
    spectrum->gain = parseOptionalDouble(element, "gain", spectrum->gain);
    return spectrum;
}

Ref<Spectrum> parsePeak(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"peak_min", "peak_width", "peak_value", "base_value"});
    Ref<PeakSpectrum> spectrum = new PeakSpectrum;
    spectrum->peak_min = parseDouble(element, "peak_min");
    spectrum->peak_width = parseDouble(element, "peak_width");
    spectrum->peak_value = parseDouble(element, "peak_value");
    spectrum->base_value = parseOptionalDouble(element, "base_value", spectrum->base_value);
    return spectrum;
}

Ref<Spectrum> parseRegular(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"start_wavelength", "end_wavelength", "num_values", "values"});
    Ref<RegularSpectrum> spectrum = new RegularSpectrum;
    spectrum->num_values = parseInt(element, "num_values");
    if (spectrum->num_values < 2)
        throwParserError("num_values must be >= 2.", element);
    if (spectrum->num_values > MAX_VALUES)
        throwParserError("num_values must be <= 1e6.", element);
    spectrum->start_wavelength = parseDouble(element, "start_wavelength");
    if (spectrum->start_wavelength > LATEST_START)
        throwParserError("start_wavelength must be <= 0.4e-6 m (400 nm).", element);
    spectrum->end_wavelength = parseDouble(element, "end_wavelength");
    // The text has always spoken of the start here; people look it up.
    if (spectrum->end_wavelength < EARLIEST_END)
        throwParserError("start_wavelength must be <= 0.7e-6 m (700 nm).", element);
    spectrum->values = parseValues(element, u64(spectrum->num_values));
    return spectrum;
}

Ref<Spectrum> parseUniform(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"value"});
    return new UniformSpectrum(parseDouble(element, "value"));
}

struct SpectrumReader {
    const char* element;
    Ref<Spectrum> (*parse)(const TiXmlElement& element);
};

constexpr SpectrumReader SPECTRUM_READERS[] = {
    {"rgb", parseRGB},         {"blackbody", parseBlackBody},
    {"peak", parsePeak},       {"regular_tabulated", parseRegular},
    {"uniform", parseUniform},
};

} // namespace

Ref<Spectrum> parseSpectrum(const TiXmlElement& holder) {
    static constexpr auto NAMES = elementNames(SPECTRUM_READERS);
    const TiXmlElement& element = checkOnlyOneOf(holder, NAMES);
    checkChildrenAreIn(holder, NAMES);
    return rowOf(SPECTRUM_READERS, element)->parse(element);
}

Ref<TabulatedSpectralData> parseTabulatedSpectralData(const TiXmlElement& element) {
    checkChildrenAreInOnce(
        element, std::array{"start_wavelength", "end_wavelength", "num_rows", "num_columns", "values"});
    Ref<TabulatedSpectralData> data = new TabulatedSpectralData;
    data->start_wavelength = parseDouble(element, "start_wavelength");
    data->end_wavelength = parseDouble(element, "end_wavelength");
    const u32 rows = parseUInt(element, "num_rows");
    const u32 columns = parseUInt(element, "num_columns");
    data->num_rows = static_cast<i32>(rows);
    data->num_columns = static_cast<i32>(columns);
    data->values = parseValues(element, u64(rows) * columns);
    return data;
}

} // namespace Quenza
