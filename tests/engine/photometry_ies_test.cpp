// SPDX-License-Identifier: MIT
#include "engine/photometry_ies.h"

#include "support/system_texts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace engine;

namespace {

constexpr float IES_DEGREE = 3.14159265f / 180;
const std::string HEADER = "IESNA:LM-63-2002\n[TEST] 1\nTILT=NONE\n";

std::shared_ptr<const IESDistribution> good(const std::string& text) {
    std::string fault;
    const auto result = IESDistribution::parse(text, fault);
    EXPECT_TRUE(result) << fault;
    return result;
}

std::string faultOf(const std::string& text) {
    std::string fault;
    return IESDistribution::parse(text, fault) ? "no fault" : fault;
}

} // namespace

TEST(PhotometryIES, IntegratesToItsLumens) {
    // 100 cd in all directions: 400 pi lm. Multiplier and ballast factor count.
    const auto sphere = good(HEADER + "1 1000 2 3 1 1 2 0 0 0\n0.5 1 10\n0 90 180\n0\n100 100 100\n");
    EXPECT_NEAR(sphere->lumens(), 400 * 3.14159265, 0.01);
    EXPECT_NEAR(sphere->at(1.0f, 2.0f), 1 / (4 * 3.14159265f), 1e-6f);
    EXPECT_NEAR(sphere->at(180 * IES_DEGREE, 0), sphere->maximum(), 1e-6f);
    // A cosine: the flux is pi times the intensity at nadir. Nothing above what was measured.
    std::string cosine = HEADER + "1 -1 1 91 1 1 2 0 0 0\n1 1 10\n";
    for (int i = 0; i <= 90; ++i)
        cosine += std::to_string(i) + (i % 10 == 0 ? "\r\n" : " ");
    cosine += "0\n";
    for (int i = 0; i <= 90; ++i)
        cosine += std::to_string(std::abs(100 * std::cos(float(i) * IES_DEGREE))) + ",";
    const auto lambert = good(cosine);
    EXPECT_NEAR(lambert->lumens(), 100 * 3.14159265, 0.1);
    EXPECT_NEAR(lambert->at(0, 0), 1 / 3.14159265f, 1e-4f);
    EXPECT_NEAR(lambert->at(60 * IES_DEGREE, 5), 0.5f / 3.14159265f, 1e-4f);
    EXPECT_EQ(lambert->at(91 * IES_DEGREE, 0), 0.0f);
}

TEST(PhotometryIES, InterpolatesAndMirrorsHorizontalAngles) {
    const auto sides = [](const std::string& angles, const std::string& candelas, int count) {
        const auto d = good(HEADER + "1 1 1 2 " + std::to_string(count) + " 1 2 0 0 0 1 1 1\n0 180\n" +
                            angles + "\n" + candelas);
        std::vector<float> found;
        for (const float h : {0.0f, 45.0f, 90.0f, 135.0f, 180.0f, 225.0f, 270.0f, 315.0f, 360.0f, -90.0f})
            found.push_back(std::round(d->at(90 * IES_DEGREE, h * IES_DEGREE) * float(d->lumens()) * 100) /
                            100);
        return found;
    };
    using Values = std::vector<float>;
    EXPECT_EQ(sides("0 90", "1 1 3 3", 2), (Values{1, 2, 3, 2, 1, 2, 3, 2, 1, 3}));
    EXPECT_EQ(sides("0 90 180", "1 1 3 3 5 5", 3), (Values{1, 2, 3, 4, 5, 4, 3, 2, 1, 3}));
    EXPECT_EQ(sides("90 180 270", "1 1 3 3 5 5", 3), (Values{3, 2, 1, 2, 3, 4, 5, 4, 3, 5}));
    EXPECT_EQ(sides("0 90 180 270 360", "1 1 3 3 5 5 7 7 1 1", 5), (Values{1, 2, 3, 4, 5, 6, 7, 4, 1, 7}));
}

TEST(PhotometryIES, ATiltWithinTheFileIsPassedOver) {
    EXPECT_NEAR(good("TILT=INCLUDE\n1\n2\n0 90\n1 0.9\n1 1 1 2 1 1 2 0 0 0 1 1 1 0 180 0 5 5")->lumens(),
                20 * 3.14159265, 0.01);
}

TEST(PhotometryIES, EveryBadFileHasItsText) {
    const std::string body = "1 1 1 2 1 1 2 0 0 0 1 1 1 0 180 0 5 5";
    ASSERT_EQ(faultOf(HEADER + body), "no fault");
    const struct {
        std::string text;
        const char* fault;
    } cases[] = {
        {"", "it has no line TILT="},
        {"IESNA:LM-63-2002\n" + body, "it has no line TILT="},
        {"TILT=lamp.tlt\n" + body, "the tilt in another file is not supported: lamp.tlt"},
        {"TILT=INCLUDE\n1 99999 ", "a bad number: number of tilt angles"},
        {HEADER + "1 x", "a number is missing: lumens per lamp"},
        {HEADER + "1 1 1 2.5 1 1 2 0 0 0 1 1 1", "a bad number: number of vertical angles"},
        {HEADER + "1 1 1 -2 1 1 2 0 0 0 1 1 1", "a bad number: number of vertical angles"},
        {HEADER + "1 1 1 2 4097 1 2 0 0 0 1 1 1", "a bad number: number of horizontal angles"},
        {HEADER + "1 1 1 4096 4096 1 2 0 0 0 1 1 1 0 1", "a number is missing: vertical angles"},
        {HEADER + "1 1 1 2 1 3 2 0 0 0 1 1 1 0 180 0 5 5", "only photometry of type C is supported"},
        {HEADER + "1 1 1 2 1 1 2 0 0 0 1 1 1 180 0 0 5 5", "they don't rise: vertical angles"},
        {HEADER + "1 1 1 2 1 1 2 0 0 0 1 1 1 0 190 0 5 5",
         "the vertical angles are not within 0 to 180 degrees"},
        {HEADER + "1 1 1 1 1 1 2 0 0 0 1 1 1 0 0 5", "the vertical angles are not within 0 to 180 degrees"},
        {HEADER + "1 1 1 2 1 1 2 0 0 0 1 1 1 0 180 -9 5 5",
         "the horizontal angles are not within 0 to 360 degrees"},
        {HEADER + "1 1 1 2 1 1 2 0 0 0 1 1 1 0 180 0 5", "a number is missing: candela values"},
        {HEADER + "1 1 1 2 1 1 2 0 0 0 1 1 1 0 180 0 5 -5", "a candela value is negative or too large"},
        {HEADER + "1 1 1 2 1 1 2 0 0 0 1 1 1 0 180 0 0 0", "it gives no light"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(faultOf(c.text), c.fault) << c.text;
    std::string fault;
    EXPECT_FALSE(IESDistribution::load("/nowhere/x.ies", fault));
    EXPECT_EQ(fault, "CreateFile failed: " + Quenza::noSuchFolder());
}

TEST(PhotometryIES, EveryShorterFileEndsInAFaultOrIsWhole) {
    const std::string text = Quenza::fileBytes(QUENZA_SOURCE_DIR "/presets/default.ies");
    const size_t last_number = text.find_last_not_of(" \r\n");
    for (size_t length = 0; length + 2 < last_number; ++length)
        EXPECT_NE(faultOf(text.substr(0, length)), "no fault") << length;
}
