// SPDX-License-Identifier: MIT
#include "foundation/safe_file.h"

#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

TEST(SafeFileTest, AppearsWholeOrNotAtAll) {
    const TempDir dir;
    const String path = dir / "f";
    writeBytes(path, "old");
    {
        SafeFile file(path, SafeFile::Mode::BINARY);
        file.write("new", 3);
        EXPECT_EQ(fileBytes(path), "old");
        EXPECT_TRUE(exists(path + ".partial"));
    }
    EXPECT_EQ(fileBytes(path), "old");
    EXPECT_FALSE(exists(path + ".partial"));
    {
        SafeFile file(path, SafeFile::Mode::BINARY);
        file.write("new", 3);
        EXPECT_TRUE(file.commit());
        EXPECT_TRUE(file.commit());
    }
    EXPECT_EQ(fileBytes(path), "new");
    EXPECT_FALSE(exists(path + ".partial"));
}

TEST(SafeFileTest, KeepsThePartialFileOnDemand) {
    const TempDir dir;
    {
        SafeFile file(dir / "f", SafeFile::Mode::BINARY);
        file.write("abc", 3);
        file.keepPartialFile();
    }
    EXPECT_FALSE(exists(dir / "f"));
    EXPECT_EQ(fileBytes(dir / "f.partial"), "abc");
}

TEST(SafeFileTest, TellsWhyItFailed) {
    const TempDir dir;
    SafeFile unopened(dir / "missing/f", SafeFile::Mode::BINARY);
    EXPECT_FALSE(unopened.isOpen());
    unopened.write("x", 1);
    EXPECT_FALSE(unopened.commit());
    EXPECT_EQ(unopened.failureReason(), "No such file or directory");

    std::filesystem::create_directories((dir / "taken/by").toStdString());
    {
        SafeFile onto_directory(dir / "taken", SafeFile::Mode::BINARY);
        EXPECT_FALSE(onto_directory.commit());
        EXPECT_EQ(onto_directory.failureReason(), "Is a directory");
    }
    EXPECT_FALSE(exists(dir / "taken.partial"));
}

#ifdef __linux__
TEST(SafeFileTest, DoesNotCommitWhatAFullDiskLost) {
    const TempDir dir;
    const String path = dir / "f";
    writeBytes(path, "old");
    std::filesystem::create_symlink("/dev/full", (path + ".partial").toStdString());
    SafeFile file(path, SafeFile::Mode::BINARY);
    file.write("new", 3);
    EXPECT_FALSE(file.good());
    file.write("more", 4);
    EXPECT_FALSE(file.commit());
    EXPECT_EQ(file.failureReason(), "No space left on device");
    EXPECT_EQ(fileBytes(path), "old");
}
#endif

} // namespace
} // namespace Quenza
