// SPDX-License-Identifier: MIT
#include "engine/photometry_ies.h"

#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "foundation/string_utils.h"
#include "foundation/text_cursor.h"
#include "foundation/types.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace engine {

namespace {

constexpr Quenza::u64 MAX_IES_BYTES = 16u << 20;
constexpr int MAX_ANGLES = 4096;
constexpr double DEGREE = std::numbers::pi / 180.0;
constexpr float TYPE_C = 1;

/// The numbers behind the keywords: blanks, line ends or commas stand between them.
class Numbers {
public:
    explicit Numbers(std::string_view text) : cursor_(text) {}

    /// Throws with the name of what is missing.
    float next(const char* what) {
        cursor_.skipWhitespace();
        if (!cursor_.atEnd() && cursor_.peek() == ',')
            cursor_.advance();
        cursor_.skipWhitespace();
        float value = 0;
        if (!cursor_.parseFloat(value))
            throw Quenza::QuenzaException(std::string("a number is missing: ") + what);
        return value;
    }
    int count(const char* what) {
        const float value = next(what);
        if (!(value >= 1 && value <= float(MAX_ANGLES)) || value != std::floor(value))
            throw Quenza::QuenzaException(std::string("a bad number: ") + what);
        return int(value);
    }
    std::vector<float> many(size_t size, const char* what) {
        // A number takes two characters: what isn't there takes no memory.
        if (size > size_t(cursor_.end() - cursor_.position()) / 2 + 1)
            throw Quenza::QuenzaException(std::string("a number is missing: ") + what);
        std::vector<float> values(size);
        for (float& value : values)
            value = next(what);
        return values;
    }
    std::vector<float> rising(size_t size, const char* what) {
        std::vector<float> values = many(size, what);
        for (size_t i = 1; i < size; ++i)
            if (!(values[i] > values[i - 1]))
                throw Quenza::QuenzaException(std::string("they don't rise: ") + what);
        return values;
    }

private:
    Quenza::TextCursor cursor_;
};

std::string_view nextLine(std::string_view& text) {
    const size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    while (!line.empty() && Quenza::TextCursor::isWhitespace(line.back()))
        line.remove_suffix(1);
    return line;
}

/// Leaves `text` behind the line of the lamp's tilt, whose value it returns.
std::string_view skipToTilt(std::string_view& text) {
    constexpr std::string_view TILT = "TILT=";
    while (!text.empty()) {
        const std::string_view line = nextLine(text);
        if (line.substr(0, TILT.size()) == TILT)
            return line.substr(TILT.size());
    }
    throw Quenza::QuenzaException("it has no line TILT=");
}

void skipTilt(std::string_view tilt, Numbers& numbers) {
    if (tilt == "NONE")
        return;
    if (tilt != "INCLUDE")
        throw Quenza::QuenzaException("the tilt in another file is not supported: " + std::string(tilt));
    // The lamp burns in the position of the measurement: the first pair has the factor 1.
    numbers.next("lamp to luminaire geometry");
    const size_t pairs = size_t(numbers.count("number of tilt angles"));
    numbers.many(pairs, "tilt angles");
    numbers.many(pairs, "tilt factors");
}

void checkRange(bool good, const char* what) {
    if (!good)
        throw Quenza::QuenzaException(what);
}

size_t segmentOf(const std::vector<float>& angles, double angle) {
    const auto above = std::upper_bound(angles.begin(), angles.end(), float(angle));
    const size_t index = size_t(above - angles.begin());
    return std::min(index > 0 ? index - 1 : 0, angles.size() - 2);
}

double fraction(const std::vector<float>& angles, size_t segment, double angle) {
    const double low = double(angles[segment]);
    return std::clamp((angle - low) / (double(angles[segment + 1]) - low), 0.0, 1.0);
}

} // namespace

std::shared_ptr<const IESDistribution> IESDistribution::load(const std::string& path, std::string& fault) {
    try {
        if (Quenza::FileUtils::getFileSize(path) > MAX_IES_BYTES) {
            fault = "the file is too long";
            return nullptr;
        }
        return parse(Quenza::FileUtils::readEntireFile(path), fault);
    } catch (const Quenza::MessageExcep& e) {
        fault = e.what();
        return nullptr;
    }
}

std::shared_ptr<const IESDistribution> IESDistribution::parse(std::string_view text, std::string& fault) {
    try {
        auto result = std::make_shared<IESDistribution>();
        const std::string_view tilt = skipToTilt(text);
        Numbers numbers(text);
        skipTilt(tilt, numbers);
        numbers.next("number of lamps");
        numbers.next("lumens per lamp");
        const float multiplier = numbers.next("candela multiplier");
        const size_t verticals = size_t(numbers.count("number of vertical angles"));
        const size_t horizontals = size_t(numbers.count("number of horizontal angles"));
        checkRange(numbers.next("photometric type") == TYPE_C, "only photometry of type C is supported");
        for (const char* what : {"units", "width", "length", "height"})
            numbers.next(what);
        const float ballast = numbers.next("ballast factor");
        numbers.next("ballast lamp photometric factor");
        numbers.next("input watts");
        result->vertical_ = numbers.rising(verticals, "vertical angles");
        result->horizontal_ = numbers.rising(horizontals, "horizontal angles");
        checkRange(verticals >= 2 && result->vertical_.front() >= 0 && result->vertical_.back() <= 180,
                   "the vertical angles are not within 0 to 180 degrees");
        checkRange(result->horizontal_.front() >= 0 && result->horizontal_.back() <= 360,
                   "the horizontal angles are not within 0 to 360 degrees");
        result->candelas_ = numbers.many(verticals * horizontals, "candela values");
        for (float& candela : result->candelas_) {
            candela *= multiplier * ballast;
            checkRange(candela >= 0 && candela < 1e20f, "a candela value is negative or too large");
        }
        result->lumens_ = result->integrate();
        checkRange(result->lumens_ > 0, "it gives no light");
        result->maximum_ =
            *std::max_element(result->candelas_.begin(), result->candelas_.end()) / float(result->lumens_);
        return result;
    } catch (const Quenza::QuenzaException& e) {
        fault = e.what();
        return nullptr;
    }
}

/// Into the measured angles: a file that ends at 90 or 180 degrees leaves out what is symmetrical.
double IESDistribution::foldHorizontal(double degrees) const {
    const double last = double(horizontal_.back());
    degrees = std::fmod(degrees, 360.0);
    if (degrees < 0)
        degrees += 360.0;
    if (last <= 180.0 && degrees > 180.0)
        degrees = 360.0 - degrees;
    if (last <= 90.0 && degrees > 90.0)
        degrees = 180.0 - degrees;
    // From 90 to 270 degrees: symmetrical about the plane of 90 and 270.
    if (double(horizontal_.front()) >= 90.0 && (degrees < 90.0 || degrees > 270.0))
        degrees = degrees < 90.0 ? 180.0 - degrees : 540.0 - degrees;
    return degrees;
}

float IESDistribution::candela(double vertical_degrees, double horizontal_degrees) const {
    // Single floats of radians miss a bound by a little.
    constexpr double TOLERANCE = 1e-3;
    if (vertical_degrees < double(vertical_.front()) - TOLERANCE ||
        vertical_degrees > double(vertical_.back()) + TOLERANCE)
        return 0.0f;
    const size_t rows = vertical_.size();
    const size_t v = segmentOf(vertical_, vertical_degrees);
    const double tv = fraction(vertical_, v, vertical_degrees);
    const auto along = [&](size_t h) {
        const float* const column = &candelas_[h * rows + v];
        return double(column[0]) * (1 - tv) + double(column[1]) * tv;
    };
    if (horizontal_.size() == 1)
        return float(along(0));
    const double folded = foldHorizontal(horizontal_degrees);
    const size_t h = segmentOf(horizontal_, folded);
    const double th = fraction(horizontal_, h, folded);
    return float(along(h) * (1 - th) + along(h + 1) * th);
}

/// The midpoint rule over the sphere, half a degree by two.
double IESDistribution::integrate() const {
    constexpr int ROWS = 360;
    constexpr int COLUMNS = 180;
    const int columns = horizontal_.size() == 1 ? 1 : COLUMNS;
    double sum = 0;
    for (int i = 0; i < ROWS; ++i) {
        const double low = i * 180.0 / ROWS;
        const double high = (i + 1) * 180.0 / ROWS;
        const double band = std::cos(low * DEGREE) - std::cos(high * DEGREE);
        for (int j = 0; j < columns; ++j)
            sum += band * double(candela((low + high) / 2, (j + 0.5) * 360.0 / columns));
    }
    return sum * 2 * std::numbers::pi / columns;
}

float IESDistribution::at(float vertical, float horizontal) const {
    return candela(double(vertical) / DEGREE, double(horizontal) / DEGREE) / float(lumens_);
}

} // namespace engine
