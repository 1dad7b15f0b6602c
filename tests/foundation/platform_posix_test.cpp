// SPDX-License-Identifier: MIT
#ifndef _WIN32

#include "foundation/platform.h"

#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace Quenza {
namespace {

/// Sets an environment variable for a test; null removes it.
class Environment {
public:
    Environment(const char* name, const char* value) : name_(name) {
        if (const char* old = std::getenv(name))
            old_ = old;
        had_ = std::getenv(name) != nullptr;
        value ? setenv(name, value, 1) : unsetenv(name);
    }
    ~Environment() { had_ ? setenv(name_, old_.c_str(), 1) : unsetenv(name_); }

private:
    const char* name_;
    std::string old_;
    bool had_;
};

TEST(PlatformTest, FindsTheUsersFolders) {
    const Environment home("HOME", "/home/someone");
    {
        const Environment config("XDG_CONFIG_HOME", "/config");
        EXPECT_EQ(PlatformUtils::getAppDataDirectory(), "/config");
    }
    const Environment config("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(PlatformUtils::getAppDataDirectory(), "/home/someone/.config");
    const Environment temp("TMPDIR", "/scratch//");
    EXPECT_EQ(PlatformUtils::getTempDirectory(), "/scratch");
}

TEST(PlatformTest, ReadsTheRegistryFile) {
    const TempDir dir;
    const Environment config("XDG_CONFIG_HOME", dir.path().toStdString().c_str());
    const String key = "Software\\Tessaly Works\\Quenza Renderer";
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "InstallDirectory"), "");
    writeBytes(dir / "registry.ini", "InstallDirectory=/outside\n"
                                     "[Software\\Tessaly Works\\Quenza RT]\r\n"
                                     "InstallDirectory=/opt/rt\r\n"
                                     "\n"
                                     "[Software\\Tessaly Works\\Quenza Renderer]\n"
                                     "Other = 1\n"
                                     "InstallDirectory = /opt/with = and blanks \n");
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "InstallDirectory"), "/opt/with = and blanks");
    EXPECT_EQ(PlatformUtils::readRegistryText("Software\\Tessaly Works\\Quenza RT", "InstallDirectory"),
              "/opt/rt");
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "Missing"), "");
    EXPECT_EQ(PlatformUtils::readRegistryText("Software", "InstallDirectory"), "");
}

/// A program that writes down how it was called, then renames its notes to "done".
class CreateProcessTest : public testing::Test {
protected:
    CreateProcessTest() {
        writeBytes(program, "#!/bin/sh\n"
                            "cd '" +
                                dir.path().toStdString() +
                                "'\n"
                                "for a; do echo \"[$a]\"; done > notes\n"
                                "echo \"nice $(nice)\" >> notes\n"
                                "ls /proc/$$/fd | tr '\\n' ' ' > descriptors\n"
                                "readlink /proc/$$/fd/0 /proc/$$/fd/2 > standard\n"
                                "echo $PPID > parent\n"
                                "mv notes done\n");
        std::filesystem::permissions(program.toStdString(), std::filesystem::perms::owner_all);
    }

    std::string notes() {
        for (int i = 0; i < 500 && !exists(dir / "done"); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return fileBytes(dir / "done");
    }

    TempDir dir;
    const String program = dir / "my renderer.exe";
};

TEST_F(CreateProcessTest, SplitsTheLineAtBlanksOutsideOfQuotes) {
    const int inherited = open("/dev/null", O_RDONLY); // without FD_CLOEXEC
    EXPECT_TRUE(PlatformUtils::createProcess(
        program, "renderer.exe -seed  12 -o \"/out/a b.png\" \"\" --x=\"y z\"w \"/scene dir/s.qzs\"", false));
    close(inherited);
    EXPECT_EQ(notes(), "[-seed]\n[12]\n[-o]\n[/out/a b.png]\n[]\n[--x=y zw]\n[/scene dir/s.qzs]\nnice " +
                           std::to_string(getpriority(PRIO_PROCESS, 0)) + "\n");
    EXPECT_EQ(fileBytes(dir / "standard"), "/dev/null\n/dev/null\n");
    // The shell has its own descriptor for the script, at 10 or above.
    EXPECT_EQ(fileBytes(dir / "descriptors").find(" " + std::to_string(inherited) + " "), std::string::npos);
    EXPECT_NE(fileBytes(dir / "parent"), std::to_string(getpid()) + "\n");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left to wait for";
}

TEST_F(CreateProcessTest, LowersThePriority) {
    EXPECT_TRUE(PlatformUtils::createProcess(program, "r", true));
    EXPECT_EQ(notes(), "nice " + std::to_string(std::min(getpriority(PRIO_PROCESS, 0) + 10, 19)) + "\n");
}

TEST_F(CreateProcessTest, ReportsAProgramThatCannotStart) {
    EXPECT_FALSE(PlatformUtils::createProcess(dir / "missing.exe", "missing.exe -x", false));
    writeBytes(dir / "text", "not a program");
    EXPECT_FALSE(PlatformUtils::createProcess(dir / "text", "text", false));
}

} // namespace
} // namespace Quenza

#endif
