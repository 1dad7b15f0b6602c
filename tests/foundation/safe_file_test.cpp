// SPDX-License-Identifier: MIT
#include "foundation/safe_file.h"

#include "support/pipe.h"
#include "support/system_texts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

void expectRefusal(const String& special) {
    {
        SafeFile file(special, SafeFile::Mode::BINARY);
        EXPECT_FALSE(file.commit());
        EXPECT_EQ(file.failureReason(), "It is a directory or a device, not a file");
    }
    EXPECT_FALSE(exists(special + ".partial"));
}

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
    EXPECT_EQ(unopened.failureReason(), noSuchFolder());
    std::filesystem::create_directories((dir / "taken/by").toStdString());
    expectRefusal(dir / "taken");
}

#ifndef _WIN32
TEST(SafeFileTest, LeavesPipesAlone) {
    const TempDir dir;
    const String pipe = dir / "pipe";
    ASSERT_TRUE(makePipe(pipe));
    expectRefusal(pipe);
    EXPECT_TRUE(std::filesystem::is_fifo(pipe.toStdString()));
}
#endif

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
