// SPDX-License-Identifier: MIT
#include "foundation/file_utils.h"
#include "support/system_texts.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

using FileUtils::FileUtilsExcep;

/// Paths are written with '/' here; the platform may have another separator.
std::string native(std::string path) {
    for (char& c : path)
        if (c == '/')
            c = PlatformUtils::SEPARATOR;
    return path;
}

template <class Action>
std::string failure(Action&& action) {
    return thrownMessage<FileUtilsExcep>(action);
}

TEST(FileUtilsTest, JoinsPaths) {
    EXPECT_EQ(FileUtils::join("dir", "file"), native("dir/file"));
    EXPECT_EQ(FileUtils::join("", "file"), "file");
    EXPECT_EQ(FileUtils::join("dir", native("/abs")), native("/abs"));
    EXPECT_EQ(FileUtils::join("dir", ""), native("dir/"));
}

TEST(FileUtilsTest, TakesPathsApart) {
    const struct {
        const char* path;
        const char* directory;
        const char* filename;
        const char* without_extension;
    } cases[] = {
        {"/a/b.c/d.qzs", "/a/b.c", "d.qzs", "/a/b.c/d"},
        {"d.tar.gz", "", "d.tar.gz", "d.tar"},
        {"/d", "", "d", "/d"},
        {"a/", "a", "", "a/"},
        {"a.b/c", "a.b", "c", "a.b/c"},
        {"", "", "", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileUtils::getDirectory(native(c.path)), native(c.directory));
        EXPECT_EQ(FileUtils::getFilename(native(c.path)), c.filename);
        EXPECT_EQ(FileUtils::removeExtension(native(c.path)), native(c.without_extension));
    }
}

TEST(FileUtilsTest, HandlesWholeFiles) {
    const TempDir dir;
    const String a = dir / "\xC3\xA4 a.bin";
    const String b = dir / "b";
    FileUtils::writeEntireFile(a, std::string("one\r\ntwo\0", 9));
    EXPECT_EQ(FileUtils::getFileSize(a), 9u);
    FileUtils::copyFile(a, b);
    FileUtils::copyFile(b, b);
    EXPECT_EQ(FileUtils::readEntireFile(b), std::string("one\r\ntwo\0", 9));
    FileUtils::writeEntireFile(b, std::vector<unsigned char>());
    EXPECT_EQ(FileUtils::readEntireFile(b), "");
    FileUtils::moveFile(a, b);
    EXPECT_FALSE(FileUtils::fileExists(a));
    EXPECT_EQ(FileUtils::getFileSize(b), 9u);
    FileUtils::createDir(dir / "sub");
    EXPECT_TRUE(FileUtils::fileExists(dir / "sub"));
    EXPECT_TRUE(FileUtils::directoryExists(dir / "sub"));
    EXPECT_FALSE(FileUtils::directoryExists(b));
    const Vector<String> names = FileUtils::getFilesInDir(dir.path());
    ASSERT_EQ(names.size(), 2u);
    EXPECT_EQ(names[0], "b");
    EXPECT_EQ(names[1], "sub");
    FileUtils::deleteFile(b);
    FileUtils::deleteDirectory(dir / "sub");
    EXPECT_TRUE(FileUtils::getFilesInDir(dir.path()).empty());
}

TEST(FileUtilsTest, TellsWhatFailed) {
    const TempDir dir;
    const String missing = dir / "no";
    const std::string no = missing.toStdString();
    EXPECT_EQ(failure([&] { FileUtils::createDir(missing + "/deeper"); }),
              "Failed to create directory '" + no + "/deeper'");
    EXPECT_EQ(failure([&] { FileUtils::getFilesInDir(missing); }),
              "Failed to open dir '" + no + "': " + noSuchFolder());
    EXPECT_EQ(failure([&] { FileUtils::getFileSize(missing); }), "CreateFile failed: " + noSuchFile());
    EXPECT_EQ(failure([&] { FileUtils::getFileSize(dir.path()); }), "CreateFile failed: " + isFolder());
    EXPECT_EQ(failure([&] { FileUtils::writeEntireFile(missing + "/f", std::string("x")); }),
              "Could not open '" + no + "/f' for writing.");
    EXPECT_EQ(failure([&] { FileUtils::readEntireFile(missing); }),
              "could not open '" + no + "' for reading.");
    EXPECT_EQ(failure([&] { FileUtils::copyFile(missing, dir / "b"); }),
              "Failed to copy file '" + no + "' to '" + (dir / "b").toStdString() + "'");
    EXPECT_FALSE(exists(dir / "b"));
    EXPECT_EQ(failure([&] { FileUtils::moveFile(missing, dir / "b"); }),
              "Failed to move file '" + no + "' to '" + (dir / "b").toStdString() + "'");
    EXPECT_EQ(failure([&] { FileUtils::deleteFile(missing); }), "Failed to delete file '" + no + "'");
    EXPECT_EQ(failure([&] { FileUtils::deleteDirectory(missing); }),
              "Failed to delete directory '" + no + "'");
    EXPECT_EQ(failure([&] { FileUtils::getActualOSPath(missing); }), "Could not find file '" + no + "'");
#ifdef __linux__
    EXPECT_EQ(failure([] { FileUtils::writeEntireFile("/dev/full", std::string("x")); }),
              "Write to '/dev/full' failed.");
#endif
}

TEST(FileUtilsTest, FindsTheCaseOnDisk) {
    const TempDir dir;
    FileUtils::createDir(dir / "Textures");
    FileUtils::writeEntireFile(dir / "Textures/Wood.PNG", std::string("x"));
    EXPECT_EQ(FileUtils::getActualOSPath(dir / "textures/wood.png"), dir / "Textures/Wood.PNG");
#ifndef _WIN32 // where both names are one
    FileUtils::writeEntireFile(dir / "Textures/wood.png", std::string("y"));
    EXPECT_EQ(FileUtils::getActualOSPath(dir / "textures/wood.png"), dir / "Textures/wood.png");
#endif
}

} // namespace
} // namespace Quenza
