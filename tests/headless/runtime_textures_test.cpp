// SPDX-License-Identifier: MIT
#include "host/general.h"

#include "runtime_fixture.h"
#include "support/temp_dir.h"
#include "support/user_profile.h"

// Texture search, presets, and the file calls beside them.

namespace headless {

namespace {

namespace fs = std::filesystem;

class TextureSearchTest : public RuntimeTest {
protected:
    TextureSearchTest() { start(); }

    std::string at(const std::string& name) const { return (dir_ / name).toStdString(); }
    void makeFile(const std::string& name, const std::string& content = "x") const {
        fs::create_directories(fs::path(at(name)).parent_path());
        Quenza::writeBytes(dir_ / name, content);
    }
    /// The found path below the folder, "(as it stands)", or "" when nothing was found.
    std::string find(const std::string& name, const std::string& extra = "") const {
        Filename found("untouched");
        const std::string extraPath = extra.empty() ? "" : at(extra);
        if (!GenerateTexturePath(Filename(String(at("document"))), Filename(String(name)),
                                 Filename(String(extraPath)), &found)) {
            EXPECT_EQ(found, Filename("untouched"));
            return "";
        }
        return found.Content() ? fs::path(found.GetUtf8()).lexically_relative(at("")).generic_string()
                               : "(as it stands)";
    }

    Quenza::TempDir dir_;
};

TEST_F(TextureSearchTest, PlacesComeInTheirOrder) {
#ifdef _WIN32
    const char* const separators = ";;";
#else
    const char* const separators = "::";
#endif
    const Quenza::Variable paths("QUENZA_HEADLESS_TEXTURES", at("first") + separators + at("second"));
    const char* const places[] = {"extra", "document", "document/tex", "first", "second"};
    for (const char* const place : places) {
        makeFile(std::string(place) + "/wood.jpg");
    }
    for (const char* const place : places) {
        EXPECT_EQ(find("wood.jpg", "extra"), std::string(place) + "/wood.jpg");
        fs::remove(at(std::string(place) + "/wood.jpg"));
    }
    EXPECT_EQ(find("wood.jpg", "extra"), "");
    EXPECT_EQ(find(""), "");
}

TEST_F(TextureSearchTest, NamesMayHaveFoldersOtherCaseAndBeFromElsewhere) {
    makeFile("document/maps/Oak.JPG");
    makeFile("document/oak.png");
    makeFile("document/both.png");
#ifndef _WIN32 // where case makes no other file
    makeFile("document/BOTH.png");
#endif
    makeFile("away/full.png");
    fs::create_directories(at("document/folder.png"));
    const std::pair<std::string, std::string> cases[] = {
        {"maps/Oak.JPG", "document/maps/Oak.JPG"},
#ifdef _WIN32 // where each spelling is the file's name
        {"MAPS\\oak.jpg", "document/MAPS/oak.jpg"},
        {"gone/OAK.png", "document/OAK.png"},
#else
        {"MAPS\\oak.jpg", "document/maps/Oak.JPG"},
        {"gone/OAK.png", "document/oak.png"},
#endif
        {"C:\\Textures\\oak.png", "document/oak.png"},
        {"/other/machine/oak.png", "document/oak.png"},
        {at("away/full.png"), "away/full.png"},
        {"both.png", "document/both.png"},
#ifndef _WIN32
        {"BOTH.png", "document/BOTH.png"},
        {"Both.png", "document/BOTH.png"},
#endif
        {"folder.png", ""},
        {"maps", ""},
        {"none.png", ""},
    };
    for (const auto& [name, expected] : cases) {
        EXPECT_EQ(find(name), expected) << name;
    }
}

TEST_F(TextureSearchTest, PresetsLieBelowTheirFolder) {
    const Quenza::Variable presets("QUENZA_HEADLESS_PRESETS", at("presets"));
    makeFile("presets/tex.lib4d/wood/oak.jpg", "oak");
    makeFile("secret.txt");
    EXPECT_EQ(find("preset://tex.lib4d/wood/oak.jpg"), "(as it stands)");
    EXPECT_EQ(find("preset://tex.lib4d\\wood\\oak.jpg"), "(as it stands)");
    EXPECT_EQ(find("preset://tex.lib4d/none.jpg"), "");
    EXPECT_EQ(find("preset://../secret.txt"), "");
    EXPECT_EQ(find("preset:///" + at("secret.txt")), "");
    const Filename copy(String(at("copy.jpg")));
    EXPECT_TRUE(GeFExist("preset://tex.lib4d/wood/oak.jpg"));
    EXPECT_TRUE(GeFCopyFile("preset://tex.lib4d/wood/oak.jpg", copy, false));
    EXPECT_EQ(Quenza::fileBytes(dir_ / "copy.jpg"), "oak");
    EXPECT_FALSE(GeFCopyFile("preset://../secret.txt", copy, true));
}

} // namespace

} // namespace headless
