// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/file_utils.h"
#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "foundation/platform_wide.h"
#include "foundation/safe_file.h"

#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include <windows.h>

namespace Quenza {
namespace {

/// A key below the current user's part of the registry, which goes at the end of a test.
class RegistryKey {
public:
    explicit RegistryKey(const wchar_t* path) : path_(path) {
        RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &handle_, nullptr);
    }
    ~RegistryKey() {
        RegCloseKey(handle_);
        RegDeleteKeyW(HKEY_CURRENT_USER, path_);
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    void set(const wchar_t* name, const std::wstring& text) {
        RegSetValueExW(handle_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       DWORD((text.size() + 1) * sizeof(wchar_t)));
    }

private:
    const wchar_t* path_;
    HKEY handle_ = nullptr;
};

TEST(PlatformTest, ReadsTheRegistry) {
    const String key = "Software\\Quenza Test\\Renderer";
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "InstallDirectory"), "") << "no such key";
    RegistryKey made(L"Software\\Quenza Test\\Renderer");
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "InstallDirectory"), "") << "no such value";
    made.set(L"InstallDirectory", L"C:\\Programme\\Qu\x00e9nza \x6f22");
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "InstallDirectory"),
              "C:\\Programme\\Qu\xc3\xa9nza \xe6\xbc\xa2");
    made.set(L"InstallDirectory", std::wstring(511, L'x'));
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "InstallDirectory"), String(511, 'x')) << "1024 bytes";
    made.set(L"InstallDirectory", std::wstring(512, L'x'));
    EXPECT_EQ(PlatformUtils::readRegistryText(key, "InstallDirectory"), "") << "1026 bytes";
}

TEST(PlatformTest, FindsTheUsersFolders) {
    EXPECT_TRUE(FileUtils::directoryExists(PlatformUtils::getAppDataDirectory()));
    const String temp = PlatformUtils::getTempDirectory();
    EXPECT_TRUE(FileUtils::directoryExists(temp));
    EXPECT_NE(temp[temp.size() - 1], '\\');
}

/// A copy of the program that notes how it was started.
class CreateProcessTest : public testing::Test {
protected:
    CreateProcessTest() {
        std::filesystem::copy_file(QUENZA_BIN_DIR "/child_program.exe", nativePath(program.view()));
    }

    std::string notes() {
        for (int i = 0; i < 3000 && !exists(dir / "done"); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return fileBytes(dir / "done");
    }

    TempDir dir;
    const String program = dir / "my renderer.exe";
};

TEST_F(CreateProcessTest, PassesTheLineAsItStands) {
    const std::string line =
        "renderer.exe -seed  12 -o \"C:\\a b\\\xc3\xa9.png\" \"\" \"D:\\scene dir\\s.qzs\"";
    EXPECT_TRUE(PlatformUtils::createProcess(program, line, false));
    EXPECT_EQ(notes(), line + "\npriority " + std::to_string(NORMAL_PRIORITY_CLASS) + "\n");
}

/// Whether programs start with the priority that is asked for: Wine leaves it out.
bool honoursPriorities(const String& program) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(PlatformUtils::toWide(program).c_str(), nullptr, nullptr, nullptr, FALSE,
                        IDLE_PRIORITY_CLASS | CREATE_SUSPENDED, nullptr, nullptr, &startup, &process))
        return true;
    const DWORD priority = GetPriorityClass(process.hProcess);
    TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return priority == IDLE_PRIORITY_CLASS;
}

TEST_F(CreateProcessTest, LowersThePriority) {
    if (!honoursPriorities(program))
        GTEST_SKIP() << "this system starts every program with the usual priority";
    EXPECT_TRUE(PlatformUtils::createProcess(program, "r", true));
    EXPECT_EQ(notes(), "r\npriority " + std::to_string(BELOW_NORMAL_PRIORITY_CLASS) + "\n");
}

TEST_F(CreateProcessTest, ReportsAProgramThatCannotStart) {
    EXPECT_FALSE(PlatformUtils::createProcess(dir / "missing.exe", "missing.exe -x", false));
    writeBytes(dir / "text", "not a program");
    EXPECT_FALSE(PlatformUtils::createProcess(dir / "text", "text", false));
}

TEST(PlatformTest, LoadsLibraries) {
    String error;
    void* const library = PlatformUtils::loadLibrary("kernel32.dll", error);
    ASSERT_NE(library, nullptr);
    EXPECT_NE(PlatformUtils::librarySymbol(library, "GetCommandLineW"), nullptr);
    EXPECT_EQ(PlatformUtils::librarySymbol(library, "quenzaCreateInstance"), nullptr);
    PlatformUtils::freeLibrary(library);
    EXPECT_EQ(error, "");
    EXPECT_EQ(PlatformUtils::loadLibrary("C:\\no such\\library.dll", error), nullptr);
    EXPECT_EQ(error, PlatformUtils::errorText(ERROR_MOD_NOT_FOUND));
}

TEST(PlatformTest, TakesFoldersOfAnyNameAndDepth) {
    const TempDir dir;
    String folder = dir / "\xc3\xbcn\xc3\xaf"
                          "c\xc3\xb6"
                          "de \xe6\xbc\xa2 \xf0\x9f\x8e\xa8";
    FileUtils::createDir(folder);
    for (int i = 0; i < 3; ++i) {
        folder = FileUtils::join(folder, String(120, 'x'));
        FileUtils::createDir(folder);
    }
    ASSERT_GT(folder.size(), 400u);
    const String file = FileUtils::join(folder, "a.txt");
    FileUtils::writeEntireFile(file, std::string("one\ntwo"));
    EXPECT_EQ(FileUtils::readEntireFile(file), "one\ntwo");
    EXPECT_EQ(FileUtils::getFileSize(file), 7u);
    std::string with_slashes = file.toStdString();
    std::replace(with_slashes.begin(), with_slashes.end(), '\\', '/');
    EXPECT_TRUE(FileUtils::fileExists(with_slashes));
    FileUtils::moveFile(file, FileUtils::join(folder, "b.txt"));
    const Vector<String> names = FileUtils::getFilesInDir(folder);
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0], "b.txt");
    EXPECT_EQ(FileUtils::getActualOSPath(FileUtils::join(folder, "B.TXT")), FileUtils::join(folder, "b.txt"));
    std::string_view bytes;
    ASSERT_TRUE(PlatformUtils::mapFile(FileUtils::join(folder, "b.txt"), bytes));
    EXPECT_EQ(bytes, "one\ntwo");
    PlatformUtils::unmapFile(bytes);
    // The standard library's own removal knows no long paths.
    FileUtils::deleteFile(FileUtils::join(folder, "b.txt"));
    for (int i = 0; i < 3; ++i) {
        FileUtils::deleteDirectory(folder);
        folder = FileUtils::getDirectory(folder);
    }
}

/// The process's current folder, as before at the end.
class CurrentFolder {
public:
    explicit CurrentFolder(const std::wstring& path) : earlier_(std::filesystem::current_path()) {
        SetCurrentDirectoryW(path.c_str());
    }
    ~CurrentFolder() { SetCurrentDirectoryW(earlier_.c_str()); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    const std::filesystem::path earlier_;
};

TEST(PlatformTest, LengthensPathsWhereTheyLead) {
    const TempDir dir;
    // A current folder itself must be short.
    const String folder = dir / std::string(180 - dir.path().size(), 'x');
    FileUtils::createDir(folder);
    const CurrentFolder current(PlatformUtils::toWide(folder));
    const String name(100, 'y');
    const std::wstring wide = PlatformUtils::toWidePath(name);
    EXPECT_EQ(wide, L"\\\\?\\" + PlatformUtils::toWide(FileUtils::join(folder, name)));
    for (const char* const path : {"", "a", "a/b", "C:\\a/b", "C:a", "\\\\server\\share\\a", "NUL"})
        EXPECT_EQ(PlatformUtils::toWidePath(String(path)), PlatformUtils::toWide(path)) << path;
    Vector<String> names;
    EXPECT_FALSE(PlatformUtils::listDirectory("", names)) << "not the drive's root";
    FileUtils::writeEntireFile(name, std::string("deep"));
    ASSERT_TRUE(PlatformUtils::listDirectory(".", names));
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0], name);
    FileUtils::deleteFile(name);
}

TEST(PlatformTest, FindsTheCaseBelowAPrefix) {
    const TempDir dir;
    FileUtils::writeEntireFile(dir / "Wood.PNG", std::string("x"));
    const String prefix = "\\\\?\\";
    EXPECT_EQ(FileUtils::getActualOSPath(prefix + (dir / "wood.png")), prefix + (dir / "Wood.PNG"));
}

TEST(PlatformTest, KnowsDevicesAndUnknownErrors) {
    const TempDir dir;
    EXPECT_TRUE(PlatformUtils::isSpecialFile("NUL"));
    EXPECT_TRUE(PlatformUtils::isSpecialFile(dir.path()));
    EXPECT_FALSE(PlatformUtils::isSpecialFile(dir / "nullable"));
    EXPECT_EQ(PlatformUtils::errorText(0x2ABCDEF), "error 44813807");
}

TEST(PlatformTest, WaitsForOthersBeforeItReplaces) {
    const TempDir dir;
    writeBytes(dir / "old", "old");
    writeBytes(dir / "new", "new");
    const HANDLE held = CreateFileW(PlatformUtils::toWide(dir / "old").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    std::thread reader([held] {
        Sleep(250);
        CloseHandle(held);
    });
    EXPECT_TRUE(PlatformUtils::replaceFile(dir / "new", dir / "old"));
    reader.join();
    EXPECT_EQ(fileBytes(dir / "old"), "new");
}

TEST(PlatformTest, EndsLinesOfTextFilesAsTheSystemDoes) {
    const TempDir dir;
    for (const auto& [mode, bytes] :
         {std::pair(SafeFile::Mode::TEXT, "a\r\nb\r\n"), std::pair(SafeFile::Mode::BINARY, "a\nb\n")}) {
        SafeFile file(dir / "lines", mode);
        file.write("a\nb\n", 4);
        ASSERT_TRUE(file.commit());
        EXPECT_EQ(fileBytes(dir / "lines"), bytes);
    }
}

TEST(PlatformTest, OpensFilesInEachMode) {
    const TempDir dir;
    const String path = dir / "file";
    const auto put = [&](const char* mode, const char* text) {
        std::FILE* const file = PlatformUtils::openFile(path, mode);
        if (!file)
            return std::string("closed");
        std::fputs(text, file);
        std::fclose(file);
        return fileBytes(path);
    };
    EXPECT_EQ(put("rb", ""), "closed");
    EXPECT_EQ(put("r+b", ""), "closed");
    EXPECT_EQ(put("wbx", "abc\n"), "abc\n");
    EXPECT_EQ(put("wbx", "new"), "closed") << "x: not one that is there";
    EXPECT_EQ(put("ab", "d"), "abc\nd");
    EXPECT_EQ(put("r+b", "X"), "Xbc\nd");
    EXPECT_EQ(put("wb", "z"), "z");
    EXPECT_EQ(PlatformUtils::openFile(dir.path(), "rb"), nullptr) << "a directory";
}

} // namespace
} // namespace Quenza

#endif
