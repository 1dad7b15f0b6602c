// SPDX-License-Identifier: MIT
#include "materials/file_names.h"

#include "materials/material_fixture.h"

namespace {

using FileNames = MaterialTest;

TEST_F(FileNames, AreLegalOnEveryPlatform) {
    const struct {
        const char* stem;
        const char* expected;
    } cases[] = {
        {"Oak wood, old (1)", "Oak wood, old (1)_7.jpg"},
        {"M\xC3\xBCller \xE6\x9C\xA8", "M\xC3\xBCller \xE6\x9C\xA8_7.jpg"},
        {"../../etc/passwd", ".._.._etc_passwd_7.jpg"},
        {"C:\\Windows\\x", "C__Windows_x_7.jpg"},
        {"a<b>c:d\"e|f?g*h", "a_b_c_d_e_f_g_h_7.jpg"},
        {"tab\tline\nbell\a\x7f", "tab_line_bell___7.jpg"},
        {"bad \xC3 utf \xFF", "bad _ utf __7.jpg"},
        // A device's name before the first dot takes the whole name.
        {"CON", "CON_7.jpg"},
        {"con.old", "_con.old_7.jpg"},
        {"Nul .x", "_Nul .x_7.jpg"},
        {"com1.x", "_com1.x_7.jpg"},
        {"LPT\xC2\xB2.x", "_LPT\xC2\xB2.x_7.jpg"},
        {"COM.x", "COM.x_7.jpg"},
        {"COM10.x", "COM10.x_7.jpg"},
        {"CONSOLE.x", "CONSOLE.x_7.jpg"},
        {"dots...", "dots..._7.jpg"},
        {"", "_7.jpg"},
    };
    for (const auto& [stem, expected] : cases) {
        EXPECT_EQ(legalFileName(stem, "_7.jpg").GetUtf8(), expected) << stem;
    }
    EXPECT_EQ(legalFileName("dots. .", "").GetUtf8(), "dots___");
    EXPECT_EQ(legalFileName("", "").GetUtf8(), "_");
    EXPECT_EQ(legalFileName("aux", "").GetUtf8(), "_aux");
    EXPECT_EQ(legalFileName(String(std::string("a\0b", 3)), ".png").GetUtf8(), "a_b.png");
}

TEST_F(FileNames, OfLongNamesAreShortAndDiffer) {
    const std::string longName(3000, 'n');
    const std::string name = legalFileName(longName, "_7_absorption_layer.jpg").GetUtf8();
    EXPECT_LE(name.size(), 120u);
    EXPECT_TRUE(name.starts_with("nnnn"));
    EXPECT_TRUE(name.ends_with("_7_absorption_layer.jpg"));
    EXPECT_NE(name, legalFileName(longName + "m", "_7_absorption_layer.jpg").GetUtf8());
    // No character is cut in two.
    std::string umlauts;
    for (int i = 0; i < 1500; ++i) {
        umlauts += "\xC3\xA4";
    }
    for (const char* const pad : {"", "x"}) {
        const String cut = legalFileName(pad + umlauts, "_7.jpg");
        EXPECT_EQ(cut.GetUtf8().find("\xC3_"), std::string::npos) << pad;
    }
}

} // namespace
