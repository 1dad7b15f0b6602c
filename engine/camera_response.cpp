// SPDX-License-Identifier: MIT
#include "engine/camera_response.h"

#include "engine/srgb.h"
#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "foundation/text_cursor.h"
#include "foundation/types.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace engine {

namespace {

constexpr Quenza::u64 MAX_RESPONSE_BYTES = 4u << 20;

/// The numbers of a line; false when something else stands on it.
bool numbersOf(std::string_view line, std::vector<float>& numbers) {
    Quenza::TextCursor cursor(line);
    for (cursor.skipWhitespace(); !cursor.atEnd(); cursor.skipWhitespace()) {
        float number = 0;
        if (!cursor.parseFloat(number))
            return false;
        numbers.push_back(number);
    }
    return true;
}

/// Rows of numbers between headings.
struct Block {
    std::vector<std::vector<float>> rows;

    bool isTable() const {
        const size_t columns = rows.front().size();
        return rows.size() > 1 && (columns == 2 || columns == 4) &&
               std::all_of(rows.begin(), rows.end(), [&](const auto& row) { return row.size() == columns; });
    }
    std::vector<float> column(size_t index) const {
        std::vector<float> values;
        for (const auto& row : rows)
            values.push_back(row[index]);
        return values;
    }
    std::vector<float> all() const {
        std::vector<float> values;
        for (const auto& row : rows)
            values.insert(values.end(), row.begin(), row.end());
        return values;
    }
};

std::vector<Block> blocksOf(std::string_view text) {
    std::vector<Block> blocks;
    bool open = false;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\n'), text.size());
        std::vector<float> numbers;
        const bool heading = !numbersOf(text.substr(0, end), numbers);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (heading) {
            open = false;
        } else if (!numbers.empty()) {
            if (!open)
                blocks.emplace_back();
            open = true;
            blocks.back().rows.push_back(std::move(numbers));
        }
    }
    return blocks;
}

bool isCurve(const std::vector<float>& exposures, const std::vector<float>& values) {
    if (exposures.size() < 2 || exposures.size() != values.size())
        return false;
    for (size_t i = 1; i < exposures.size(); ++i)
        if (!(exposures[i] > exposures[i - 1]))
            return false;
    return std::all_of(values.begin(), values.end(), [](float v) { return v >= -0.01f && v <= 1.01f; });
}

} // namespace

CameraResponse::CameraResponse() = default;

bool CameraResponse::readCurves(const std::string& text, std::vector<Curve>& curves) {
    const std::vector<Block> blocks = blocksOf(text);
    if (blocks.size() == 1 && blocks.front().isTable()) {
        const Block& table = blocks.front();
        for (size_t column = 1; column < table.rows.front().size(); ++column)
            curves.push_back({table.column(0), table.column(column)});
    } else {
        for (size_t i = 0; i + 1 < blocks.size(); i += 2)
            curves.push_back({blocks[i].all(), blocks[i + 1].all()});
    }
    return (curves.size() == 1 || curves.size() >= 3) &&
           std::all_of(curves.begin(), curves.end(),
                       [](const Curve& curve) { return isCurve(curve.exposures, curve.values); });
}

bool CameraResponse::load(const std::string& path, std::string& fault) {
    std::vector<Curve> curves;
    try {
        if (Quenza::FileUtils::getFileSize(path) > MAX_RESPONSE_BYTES) {
            fault = "the file is too long";
            return false;
        }
        if (!readCurves(Quenza::FileUtils::readEntireFile(path), curves)) {
            fault = "it holds no response curves";
            return false;
        }
    } catch (const Quenza::MessageExcep& e) {
        fault = e.what();
        return false;
    }
    for (size_t channel = 0; channel < 3; ++channel)
        curves_[channel] = curves[curves.size() == 1 ? 0 : channel];
    return true;
}

float CameraResponse::operator()(int channel, float exposure) const {
    const Curve& curve = curves_[size_t(channel)];
    if (curve.exposures.empty())
        return srgbEncode(1.0f - std::exp(-1.1025f * std::max(exposure, 0.0f)));
    const auto above = std::upper_bound(curve.exposures.begin(), curve.exposures.end(), exposure);
    if (above == curve.exposures.begin())
        return std::clamp(curve.values.front(), 0.0f, 1.0f);
    if (above == curve.exposures.end())
        return std::clamp(curve.values.back(), 0.0f, 1.0f);
    const size_t i = size_t(above - curve.exposures.begin());
    const float t = (exposure - curve.exposures[i - 1]) / (curve.exposures[i] - curve.exposures[i - 1]);
    return std::clamp(curve.values[i - 1] + t * (curve.values[i] - curve.values[i - 1]), 0.0f, 1.0f);
}

} // namespace engine
