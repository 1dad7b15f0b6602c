// SPDX-License-Identifier: MIT
#include "headless/runtime/files.h"

#include "support/temp_dir.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace headless {
namespace {

namespace fs = std::filesystem;

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
#ifdef _WIN32 // where only some may make links
    fs::create_directory(root / "link");
#else
    fs::create_directory_symlink(root / "outside", folder / "link");
    fs::create_directory_symlink(root / "outside", root / "link");
#endif
    EXPECT_FALSE(files::kill(name(root / "a"), false)) << "a folder needs `recursive`";
    EXPECT_TRUE(files::kill(name(root / "a"), true));
    EXPECT_TRUE(files::kill(Filename(String((root / "link").string() + "/")), true));
    EXPECT_FALSE(fs::exists(root / "a"));
    EXPECT_FALSE(fs::exists(fs::symlink_status(root / "link")));
    EXPECT_TRUE(fs::exists(root / "outside" / "precious.txt"));
    EXPECT_TRUE(files::kill(name(root / "kept.txt"), false));
    for (const Filename& refused : {name(root / "nothing"), Filename(), Filename("/"), Filename("//")}) {
        EXPECT_FALSE(files::kill(refused, true)) << refused.GetUtf8();
    }
}

} // namespace
} // namespace headless
