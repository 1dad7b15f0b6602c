// SPDX-License-Identifier: MIT
#include "headless/runtime_fixture.h"

#include "headless/model/handles.h"
#include "headless/runtime/files.h"
#include "host/basedraw.h"
#include "support/temp_dir.h"

#include <filesystem>

namespace headless {
namespace {

namespace fs = std::filesystem;
using World = RuntimeTest;

TEST(ClockTest, ReadsDates) {
    for (const char* const wrong :
         {"", "2026-11-24", "2026-11-24 09:05", "2026-11-24 09:05:07 ", "2026-11-24T09:05:07",
          "26-11-24 09:05:07", "2026-13-01 00:00:00", "2025-02-29 00:00:00", "2026-01-01 24:00:00",
          "2026-01-01 00:60:00", "-026-01-01 00:00:00", "2026-1-001 00:00:00"}) {
        EXPECT_FALSE(Clock::parse(wrong)) << wrong;
    }
    const std::optional<DateTime> date = Clock::parse("2024-02-29 23:59:07");
    ASSERT_TRUE(date);
    EXPECT_EQ(date->year, 2024);
    EXPECT_EQ(date->month, 2);
    EXPECT_EQ(date->day, 29);
    EXPECT_EQ(date->hour, 23);
    EXPECT_EQ(date->minute, 59);
    EXPECT_EQ(date->second, 7);
}

TEST(TerminalTest, CutsTextAndTellsTime) {
    EXPECT_EQ(cutToColumns("W\xC3\xBCrfel", 2), "W\xC3\xBC");
    EXPECT_EQ(cutToColumns("W\xC3\xBCrfel", 6), "W\xC3\xBCrfel");
    EXPECT_EQ(cutToColumns("abc", 0), "");
    EXPECT_EQ(elapsedText(7), "0:07");
    EXPECT_EQ(elapsedText(754), "12:34");
    EXPECT_EQ(elapsedText(3723), "1:02:03");
}

TEST(StatusBarTest, ShowsWorkTextAndPercent) {
    Lines shown;
    StatusBar status([&](const std::string& line) { shown.push_back(line); });
    status.setText("meshes");
    status.setPercent(130);
    status.setWork("Export");
    status.setWork("");
    status.clear();
    status.clear();
    EXPECT_EQ(shown, (Lines{"meshes", "meshes 100%", "Export  meshes 100%  0:00", "meshes 100%", ""}));
    EXPECT_EQ(status.history(), (Lines{"meshes", "meshes 100%", ""}));
}

Filename name(const fs::path& path) {
    return Filename(String(path.string()));
}

TEST(FilesTest, MakesAndKillsFoldersWithoutFollowingLinks) {
    const Quenza::TempDir temp;
    const fs::path root = temp.path().toStdString();
    const fs::path folder = root / "a" / "b";
    EXPECT_TRUE(files::createDirectory(name(folder)));
    EXPECT_TRUE(files::createDirectory(name(folder))) << "it stands already";
    Quenza::writeBytes(temp / "kept.txt", "kept");
    Quenza::writeBytes(temp / "a/file.txt", "file");
    EXPECT_FALSE(files::createDirectory(name(root / "kept.txt" / "below")));
    EXPECT_FALSE(files::createDirectory(Filename()));
    EXPECT_TRUE(files::exists(name(folder), true));
    EXPECT_FALSE(files::exists(name(folder), false));
    EXPECT_TRUE(files::exists(name(root / "kept.txt"), false));
    EXPECT_FALSE(files::exists(name(root / "kept.txt"), true));

    fs::create_directory(root / "outside");
    Quenza::writeBytes(temp / "outside/precious.txt", "precious");
    fs::create_directory_symlink(root / "outside", folder / "link");
    fs::create_directory_symlink(root / "outside", root / "link");
    EXPECT_FALSE(files::kill(name(root / "a"), false)) << "a folder needs `recursive`";
    EXPECT_TRUE(files::kill(name(root / "a"), true));
    EXPECT_TRUE(files::kill(Filename(String((root / "link").string() + "/")), true));
    EXPECT_FALSE(fs::exists(root / "a"));
    EXPECT_FALSE(fs::is_symlink(root / "link"));
    EXPECT_TRUE(fs::exists(root / "outside" / "precious.txt"));
    EXPECT_TRUE(files::kill(name(root / "kept.txt"), false));
    for (const Filename& refused : {name(root / "nothing"), Filename(), Filename("/"), Filename("//")}) {
        EXPECT_FALSE(files::kill(refused, true)) << refused.GetUtf8();
    }
}

TEST_F(World, ShowsItselfToThePlugin) {
    HostOptions options;
    options.startupPath = "/opt/host";
    start(std::move(options));
    EXPECT_EQ(GeGetStartupPath(), Filename("/opt/host"));
    EXPECT_EQ(GetWorldContainerInstance()->GetLong(WPREF_UNITS_BASIC), 3);
    EXPECT_GE(GeGetCurrentOptimalThreads(), 1);
    EXPECT_EQ(CalcCRC32("123456789", 9, 0), 0xCBF43926u);
    EXPECT_EQ(CalcCRC32("6789", 4, CalcCRC32("12345", 5, 0)), 0xCBF43926u);
    EXPECT_EQ(GeLoadString(20001), String()) << "no string table is loaded";
    EXPECT_FALSE(GeLoadResource(Filename("/nowhere")));
    EXPECT_FALSE(AddUserPreviewScene(Filename(__FILE__), TEST_TAG)) << "no material of that number";
}

TEST_F(World, RecordsWhatIsDrawn) {
    start().open(std::make_unique<Document>());
    Document& document = *host().document();
    document.activeRenderData()->data.SetLong(RDATA_XRES, 1000);
    document.activeRenderData()->data.SetLong(RDATA_YRES, 500);
    BaseDraw* const view = toHost(&document.view());
    int32_t left = 0;
    int32_t top = 0;
    int32_t right = 0;
    int32_t bottom = 0;
    view->GetSafeFrame(&left, &top, &right, &bottom);
    EXPECT_EQ((std::vector{left, top, right, bottom}), (std::vector{0, 100, 799, 499}));
    EXPECT_EQ(view->GetSceneCamera(toHost(&document)), toHost(&document.view().editorCamera()));

    Matrix matrix;
    matrix.off = Vector(10, 0, 0);
    view->SetMatrix(matrix);
    view->SetPen(Vector(1, 0, 0));
    view->SetTransparency(-128);
    view->DrawLine(Vector(0, 0, 0), Vector(1, 2, 3));
    view->DrawLine2D(Vector(4, 5, 0), Vector(6, 7, 0));
    view->DrawPoint(Vector(0, 1, 0));
    const Vector corners[4] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const Vector colours[4] = {{0, 1, 0}, {0, 1, 0}, {0, 1, 0}, {0, 1, 0}};
    view->DrawPolygon(corners, corners, colours, false);
    view->DrawPolygon(corners, nullptr, nullptr, true);
    const std::vector<DrawnShape>& drawn = document.view().drawn;
    ASSERT_EQ(drawn.size(), 5u);
    EXPECT_EQ(drawn[0].points, (std::vector<Vector>{{10, 0, 0}, {11, 2, 3}}));
    EXPECT_EQ(drawn[0].colour, Vector(1, 0, 0));
    EXPECT_EQ(drawn[0].transparency, -128);
    EXPECT_TRUE(drawn[1].inPixels);
    EXPECT_EQ(drawn[1].points[0], Vector(4, 5, 0));
    EXPECT_EQ(drawn[2].points, (std::vector<Vector>{{10, 1, 0}}));
    EXPECT_EQ(drawn[3].points.size(), 3u);
    EXPECT_EQ(drawn[3].colour, Vector(0, 1, 0));
    EXPECT_EQ(drawn[4].points.size(), 4u);
}

} // namespace
} // namespace headless
