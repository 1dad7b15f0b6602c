// SPDX-License-Identifier: MIT
#include "materials/channel_description.h"

#include "host/description.h"
#include "host/general.h"
#include "materials/channels.h"
#include "materials/spectrum_numbers.h"

#include <initializer_list>

namespace {

struct Range {
    float min;
    float max;
    float step;
    float minSlider;
    float maxSlider;
};

constexpr float MANY = 1000000.0f;

constexpr Range FRACTION = {0.0f, 1.0f, 0.01f, 0.0f, 1.0f};
constexpr Range THICKNESS = {0.0f, MANY, 1.0f, 0.0f, 5000.0f};
constexpr Range GAMMA = {0.0f, 100.0f, 0.1f, 0.4f, 5.0f};
constexpr Range CURVE = {-MANY, MANY, 0.1f, -1.0f, 1.0f};
constexpr Range TEMPERATURE = {0.0f, 40000.0f, 10.0f, 0.0f, 10000.0f};
constexpr Range GAIN = {0.0f, MANY, 0.1f, 0.0f, 10.0f};
constexpr Range PEAK_MIN = {400.0f, 700.0f, 10.0f, 400.0f, 700.0f};
constexpr Range PEAK_WIDTH = {0.0f, 500.0f, 10.0f, 0.0f, 500.0f};
constexpr Range PEAK_VALUE = {0.0f, MANY, 1.0f, 0.0f, MANY};

/// Adds the parameters of one channel, with the labels that lie at their offsets in the string table.
class Builder {
public:
    Builder(const Channel& channel, Description& description)
        : channel_(channel), description_(description) {}

    void add(int32_t offset, int32_t dataType, BaseContainer properties, const char* unit = "") {
        properties.SetString(DESC_NAME, GeLoadString(offset) + unit);
        description_.SetParameter(channel_.base + offset, dataType, properties, channel_.group);
    }

    void addReal(int32_t offset, float preset, const Range& range, const char* unit = "") {
        add(offset, DTYPE_REAL, rangeOf(preset, range), unit);
    }

    void addPercent(int32_t offset, float preset, const Range& range) {
        BaseContainer properties = rangeOf(preset, range);
        properties.SetLong(DESC_UNIT, DESC_UNIT_PERCENT);
        add(offset, DTYPE_REAL, properties);
    }

private:
    static BaseContainer rangeOf(float preset, const Range& range) {
        BaseContainer properties;
        properties.SetReal(DESC_DEFAULT, preset);
        properties.SetReal(DESC_MIN, range.min);
        properties.SetReal(DESC_MAX, range.max);
        properties.SetReal(DESC_STEP, range.step);
        properties.SetReal(DESC_MINSLIDER, range.minSlider);
        properties.SetReal(DESC_MAXSLIDER, range.maxSlider);
        properties.SetLong(DESC_CUSTOMGUI, CUSTOMGUI_REALSLIDER);
        return properties;
    }

    const Channel& channel_;
    Description& description_;
};

BaseContainer withDefault(const GeData& preset) {
    BaseContainer properties;
    properties.SetData(DESC_DEFAULT, preset);
    return properties;
}

void addSpectrum(Builder& page, const Channel& channel) {
    BaseContainer types;
    types.SetString(MAT_SPECTRUM_RGB, "RGB");
    types.SetString(MAT_SPECTRUM_BLACKBODY, "Blackbody");
    types.SetString(MAT_SPECTRUM_PEAK, "Peak");
    types.SetString(MAT_SPECTRUM_UNIFORM, "Uniform");
    types.SetString(MAT_SPECTRUM_TABULATED, "Tabulated");
    BaseContainer type = withDefault(GeData(int32_t{MAT_SPECTRUM_UNIFORM}));
    type.SetContainer(DESC_CYCLE, types);
    page.add(MAT_OFFSET_TYPE, DTYPE_LONG, type);

    page.add(MAT_OFFSET_RGB_SEPARATOR, DTYPE_SEPARATOR, {});
    page.add(MAT_OFFSET_COLOUR, DTYPE_COLOR, withDefault(GeData(Vector(0.8f, 0.8f, 0.8f))));
    page.addPercent(MAT_OFFSET_BRIGHTNESS, 0.8f, FRACTION);
    page.addReal(MAT_OFFSET_GAMMA, 2.2f, GAMMA);
    page.add(MAT_OFFSET_BLACKBODY_SEPARATOR, DTYPE_SEPARATOR, {});
    page.addReal(MAT_OFFSET_TEMPERATURE, 6500.0f, TEMPERATURE);
    page.addReal(MAT_OFFSET_GAIN, 1.0f, GAIN);
    page.add(MAT_OFFSET_PEAK_SEPARATOR, DTYPE_SEPARATOR, {});
    page.addReal(MAT_OFFSET_PEAK_MIN, 450.0f, PEAK_MIN);
    page.addReal(MAT_OFFSET_PEAK_WIDTH, 200.0f, PEAK_WIDTH);
    page.addReal(MAT_OFFSET_PEAK_VALUE, 1.0f, PEAK_VALUE);
    page.addReal(MAT_OFFSET_BASE_VALUE, 0.0f, PEAK_VALUE);
    page.add(MAT_OFFSET_UNIFORM_SEPARATOR, DTYPE_SEPARATOR, {});
    page.addReal(MAT_OFFSET_UNIFORM, channel.presetValue, GAIN);
}

/// The type whose parameters are shown. Without a table the colour stands in for Tabulated, as it does in the
/// scene.
int32_t shownType(const SpectrumNumbers& numbers, const BaseContainer& data) {
    switch (const int32_t type = data.GetLong(numbers.type, MAT_SPECTRUM_RGB)) {
    case MAT_SPECTRUM_BLACKBODY:
    case MAT_SPECTRUM_PEAK:
    case MAT_SPECTRUM_UNIFORM:
        return type;
    case MAT_SPECTRUM_TABULATED:
        return numbers.tabValues != 0 ? type : int32_t{MAT_SPECTRUM_RGB};
    default:
        return MAT_SPECTRUM_RGB;
    }
}

void show(bool isShown, std::initializer_list<int32_t> ids, Description& description) {
    for (const int32_t id : ids) {
        description.Hide(id, !isShown);
    }
}

} // namespace

void describeNumberedChannel(const Channel& channel, Description& description) {
    Builder page(channel, description);
    if (channel.constant == ConstantForm::SPECTRUM) {
        addSpectrum(page, channel);
    } else if (channel.id == ChannelId::COATING_THICKNESS) {
        page.addReal(MAT_OFFSET_VALUE, channel.presetValue, THICKNESS, " (\u00B5m)");
    } else {
        page.addReal(MAT_OFFSET_VALUE, channel.presetValue, FRACTION);
    }
    page.add(MAT_OFFSET_SHADER, DTYPE_TEXTURE, {});
    page.addReal(MAT_OFFSET_TEXTURE_GAMMA, channel.presetTextureGamma, GAMMA);
    page.addReal(MAT_OFFSET_A, 0.0f, CURVE);
    page.addReal(MAT_OFFSET_B, channel.presetB, CURVE);
    page.addReal(MAT_OFFSET_C, 0.0f, CURVE);
    if (channel.smooth != 0) {
        page.add(MAT_OFFSET_SMOOTH, DTYPE_BOOL, withDefault(GeData(false)));
    }
}

void showSpectrumType(const SpectrumNumbers& numbers, const BaseContainer& data, Description& description) {
    const int32_t type = shownType(numbers, data);
    show(type == MAT_SPECTRUM_RGB, {numbers.colour, numbers.scale, numbers.gamma}, description);
    show(type == MAT_SPECTRUM_BLACKBODY, {numbers.temperature, numbers.gain}, description);
    show(type == MAT_SPECTRUM_PEAK,
         {numbers.peakMin, numbers.peakWidth, numbers.peakValue, numbers.baseValue}, description);
    show(type == MAT_SPECTRUM_UNIFORM, {numbers.uniform}, description);
    show(type == MAT_SPECTRUM_TABULATED, {numbers.tabStart, numbers.tabEnd, numbers.tabValues}, description);
}

void showChannelSpectrum(const Channel& channel, const BaseContainer& data, Description& description) {
    const SpectrumNumbers numbers = channelSpectrum(channel.base);
    showSpectrumType(numbers, data, description);
    const int32_t type = shownType(numbers, data);
    const int32_t base = channel.base;
    show(type == MAT_SPECTRUM_RGB, {base + MAT_OFFSET_RGB_SEPARATOR}, description);
    show(type == MAT_SPECTRUM_BLACKBODY, {base + MAT_OFFSET_BLACKBODY_SEPARATOR}, description);
    show(type == MAT_SPECTRUM_PEAK, {base + MAT_OFFSET_PEAK_SEPARATOR}, description);
    show(type == MAT_SPECTRUM_UNIFORM, {base + MAT_OFFSET_UNIFORM_SEPARATOR}, description);
}
