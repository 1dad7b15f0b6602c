// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace {

/// The lines of the file, which end with CR LF throughout.
std::vector<std::string> readLines(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path;
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        EXPECT_TRUE(!line.empty() && line.back() == '\r') << line;
        EXPECT_LE(line.size(), 257u) << "a line holds 256 characters without its end";
        line.pop_back();
        EXPECT_EQ(line.find_first_not_of("\t !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[]_"
                                         "abcdefghijklmnopqrstuvwxyz"),
                  std::string::npos)
            << line;
        lines.push_back(line);
    }
    return lines;
}

/// A photometric file of IESNA LM-63-2002 with one plane of angles.
struct Photometry {
    std::vector<std::string> keywords;
    double lamps = 0, lumens = 0, multiplier = 0;
    std::vector<double> vertical;
    std::vector<double> candela;

    explicit Photometry(const std::string& path) {
        const std::vector<std::string> lines = readLines(path);
        EXPECT_EQ(lines.at(0), "IESNA:LM-63-2002");
        size_t next = 1;
        while (lines.at(next)[0] == '[') {
            const size_t end = lines[next].find("] ");
            EXPECT_NE(end, std::string::npos) << lines[next];
            keywords.push_back(lines[next++].substr(1, end - 1));
        }
        EXPECT_EQ(lines.at(next++), "TILT=NONE");
        std::vector<double> numbers;
        for (; next < lines.size(); ++next) {
            std::istringstream line(lines[next]);
            for (double number; line >> number;) {
                numbers.push_back(number);
            }
            EXPECT_TRUE(line.eof()) << "no number: " << lines[next];
        }
        read(numbers);
    }

private:
    void read(const std::vector<double>& numbers) {
        lamps = numbers.at(0);
        lumens = numbers.at(1);
        multiplier = numbers.at(2);
        const auto angles = static_cast<size_t>(numbers.at(3));
        EXPECT_EQ(numbers.at(4), 1.0) << "one horizontal angle: the same all around";
        EXPECT_EQ(numbers.at(5), 1.0) << "type C: vertical angles from straight down";
        EXPECT_EQ(numbers.at(6), 2.0) << "metres";
        EXPECT_EQ(numbers.at(10), 1.0) << "ballast factor";
        EXPECT_EQ(numbers.at(11), 1.0) << "reserved, always 1";
        ASSERT_EQ(numbers.size(), 13 + angles + 1 + angles);
        const auto first = numbers.begin() + 13;
        const auto count = static_cast<std::ptrdiff_t>(angles);
        vertical.assign(first, first + count);
        EXPECT_EQ(first[count], 0.0) << "the horizontal angle";
        candela.assign(first + count + 1, numbers.end());
    }
};

/// Lumens, with intensity linear in the solid angle between two vertical angles.
double flux(const Photometry& file) {
    double sum = 0;
    const auto cosine = [&](size_t i) { return std::cos(file.vertical[i] * std::numbers::pi / 180); };
    for (size_t i = 0; i + 1 < file.vertical.size(); ++i) {
        sum +=
            2 * std::numbers::pi * (cosine(i) - cosine(i + 1)) * (file.candela[i] + file.candela[i + 1]) / 2;
    }
    return sum * file.multiplier;
}

} // namespace

TEST(DefaultIES, IsAWholePhotometricFileOfAFortyDegreeSpot) {
    const Photometry file(QUENZA_SOURCE_DIR "/presets/default.ies");
    for (const char* const required : {"TEST", "TESTLAB", "ISSUEDATE", "MANUFAC"}) {
        EXPECT_EQ(std::count(file.keywords.begin(), file.keywords.end(), required), 1) << required;
    }
    EXPECT_EQ(file.vertical.front(), 0.0);
    EXPECT_EQ(file.vertical.back(), 90.0);
    for (size_t i = 1; i < file.vertical.size(); ++i) {
        EXPECT_GT(file.vertical[i], file.vertical[i - 1]);
        EXPECT_LE(file.candela[i], file.candela[i - 1]);
        EXPECT_GE(file.candela[i], 0.0);
        if (file.vertical[i] == 20.0) {
            EXPECT_NEAR(file.candela[i] / file.candela[0], 0.5, 0.005) << "the edge of the beam";
        }
    }
    EXPECT_NEAR(flux(file), file.lamps * file.lumens, 0.01 * file.lumens);
}
