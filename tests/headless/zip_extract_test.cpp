// SPDX-License-Identifier: MIT
#include "headless/runtime/zip_extract.h"

#include "support/temp_dir.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <minizip/zip.h>
#include <vector>

namespace headless {

namespace {

namespace fs = std::filesystem;

struct Packed {
    std::string name;
    std::string content;
    /// Type and rights as Unix has them; 0 for an archive of another system.
    unsigned mode = 0;
    bool isEncrypted = false;
};

constexpr unsigned LINK = 0120777;
constexpr unsigned DEVICE = 0020666;

class ZipExtractTest : public ::testing::Test {
protected:
    ZipExtractTest() { fs::create_directory(folder()); }

    fs::path folder() const { return root() / "folder"; }
    fs::path root() const { return dir_.path().toStdString(); }

    fs::path pack(const std::vector<Packed>& entries) const {
        const fs::path file = root() / "archive.zip";
        const zipFile zip = zipOpen64(file.string().c_str(), APPEND_STATUS_CREATE);
        for (const Packed& entry : entries) {
            zip_fileinfo info{};
            info.external_fa = static_cast<uLong>(entry.mode) << 16;
            constexpr uLong BY_UNIX = 3 << 8;
            const char* const password = entry.isEncrypted ? "secret" : nullptr;
            EXPECT_EQ(zipOpenNewFileInZip4_64(zip, entry.name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr,
                                              Z_DEFLATED, 9, 0, -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY,
                                              password, 0, entry.mode ? BY_UNIX : 0, 0, 0),
                      ZIP_OK);
            EXPECT_EQ(
                zipWriteInFileInZip(zip, entry.content.data(), static_cast<unsigned>(entry.content.size())),
                ZIP_OK);
            EXPECT_EQ(zipCloseFileInZip(zip), ZIP_OK);
        }
        zipClose(zip, nullptr);
        return file;
    }

    /// All files below the root but the archive, with their contents; folders as names with a slash.
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(root())) {
            const std::string name = entry.path().lexically_relative(root()).generic_string();
            if (entry.is_directory()) {
                found[name + "/"];
            } else if (name != "archive.zip") {
                found[name] = Quenza::fileBytes(entry.path().string());
            }
        }
        return found;
    }

    Quenza::TempDir dir_;
};

using Files = std::map<std::string, std::string>;

TEST_F(ZipExtractTest, UnpacksFoldersAndReplacesFiles) {
    std::ofstream(folder() / "old.txt") << "before";
    const std::string large(300'000, 'x');
    EXPECT_EQ(extractZip(pack({{"material.qzm", "<scene/>"},
                               {"tex/", ""},
                               {"tex/wood \xc3\xa4.png", large + "end", 0100644},
                               {"back\\slash.png", "b"},
                               {"old.txt", "after"},
                               {".unpacking-1/x", "1"},
                               {"empty.txt", ""}}),
                         folder()),
              "");
    EXPECT_EQ(files(), (Files{{"folder/", ""},
                              {"folder/material.qzm", "<scene/>"},
                              {"folder/tex/", ""},
                              {"folder/tex/wood \xc3\xa4.png", large + "end"},
                              {"folder/back/", ""},
                              {"folder/back/slash.png", "b"},
                              {"folder/old.txt", "after"},
                              {"folder/.unpacking-1/", ""},
                              {"folder/.unpacking-1/x", "1"},
                              {"folder/empty.txt", ""}}));
}

struct Attack {
    Packed entry;
    const char* fault;
};
const Attack ATTACKS[] = {
    {{"../evil", "x"}, "the entry \"../evil\" leads out of its folder"},
    {{"a/../../evil", "x"}, "the entry \"a/../../evil\" leads out of its folder"},
    {{"..\\evil", "x"}, "the entry \"..\\evil\" leads out of its folder"},
    {{"a/.. /.. /evil", "x"}, "the entry \"a/.. /.. /evil\" leads out of its folder"},
    {{"./a", "x"}, "the entry \"./a\" leads out of its folder"},
    {{"a//b", "x"}, "the entry \"a//b\" leads out of its folder"},
    {{"/tmp/evil", "x"}, "the entry \"/tmp/evil\" has a full path"},
    {{"\\evil", "x"}, "the entry \"\\evil\" has a full path"},
    {{"C:\\evil", "x"}, "the entry \"C:\\evil\" names a drive"},
    {{"file.txt:stream", "x"}, "the entry \"file.txt:stream\" names a drive"},
    {{"", "x"}, "the entry \"\" has a full path"},
    {{"bell\x07", "x"}, "the name of an entry isn't readable text"},
    {{"latin\xe4", "x"}, "the name of an entry isn't readable text"},
    {{"link", "/etc/passwd", LINK}, "the entry \"link\" is a link"},
    {{"device", "", DEVICE}, "the entry \"device\" is a link"},
    {{"secret", "x", 0, true}, "the entry \"secret\" is encrypted"},
    {{"First.txt", "x"}, "the entry \"First.txt\" stands twice"},
    {{"first.txt/inside", "x"}, "it can't be unpacked: Not a directory"},
    {{"taken/x", "x"}, "the entry \"taken/x\" meets something else in its folder"},
    {{"away/x", "x"}, "the entry \"away/x\" meets something else in its folder"},
    {{"place", "x"}, "the entry \"place\" meets something else in its folder"},
#ifdef _WIN32
    {{"a/NUL", "x"}, "the entry \"a/NUL\" has a name that Windows doesn't take"},
    {{"aux.tar.png", "x"}, "the entry \"aux.tar.png\" has a name that Windows doesn't take"},
    {{"com1 .txt", "x"}, "the entry \"com1 .txt\" has a name that Windows doesn't take"},
    {{"lpt\xc2\xb2/x", "x"}, "the entry \"lpt\xc2\xb2/x\" has a name that Windows doesn't take"},
    {{"what?", "x"}, "the entry \"what?\" has a name that Windows doesn't take"},
#endif
};

TEST_F(ZipExtractTest, RefusesWhatLeavesTheFolderAndLeavesNothing) {
    std::ofstream(folder() / "taken") << "a file";
    fs::create_directory(folder() / "place");
    fs::create_directory(root() / "outside");
#ifdef _WIN32 // where only some may make links
    std::ofstream(folder() / "away") << "a file";
#else
    fs::create_directory_symlink(root() / "outside", folder() / "away");
#endif
    const Files before = files();
    for (const Attack& attack : ATTACKS) {
        EXPECT_EQ(extractZip(pack({{"first.txt", "first"}, attack.entry, {"last.txt", "last"}}), folder()),
                  attack.fault);
        EXPECT_EQ(files(), before) << attack.fault;
    }
    std::string deep = "x";
    for (int i = 0; i < 100; ++i) {
        deep.insert(0, "d/");
    }
    EXPECT_EQ(extractZip(pack({{deep, "x"}}), folder()), "the entry \"" + deep + "\" lies too deep");
    EXPECT_EQ(files(), before);
}

TEST_F(ZipExtractTest, RefusesAbsurdSizes) {
    // Deflate alone reaches a thousandth.
    EXPECT_EQ(extractZip(pack({{"bomb", std::string(20'000'000, '\0')}}), folder()),
              "it would unpack to more than 1000 times its size");
    std::vector<Packed> many;
    for (int i = 0; i <= 10'000; ++i) {
        many.push_back({std::to_string(i), ""});
    }
    EXPECT_EQ(extractZip(pack(many), folder()), "it has more than 10000 entries");
    EXPECT_EQ(files(), (Files{{"folder/", ""}}));
}

TEST_F(ZipExtractTest, BrokenArchivesGiveAllOrNothing) {
    const Files nothing{{"folder/", ""}};
    const Files all{{"folder/", ""}, {"folder/a.txt", std::string(50, 'a')}, {"folder/b.txt", "b"}};
    const std::string whole =
        Quenza::fileBytes(pack({{"a.txt", std::string(50, 'a')}, {"b.txt", "b"}}).string());
    const fs::path file = root() / "archive.zip";
    const auto unpackAnew = [&](const std::string& bytes) {
        fs::remove_all(folder());
        fs::create_directory(folder());
        Quenza::writeBytes(file.string(), bytes);
        return extractZip(file, folder());
    };
    for (size_t length = 0; length < whole.size(); length += 3) {
        if (!unpackAnew(whole.substr(0, length)).empty()) {
            EXPECT_EQ(files(), nothing) << length;
        } else {
            EXPECT_EQ(files(), all) << length;
        }
    }
    for (size_t at = 0; at < whole.size(); at += 2) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(~damaged[at]);
        if (!unpackAnew(damaged).empty()) {
            EXPECT_EQ(files(), nothing) << at;
        } else {
            // A date or the like: the contents are guarded by checksums.
            EXPECT_EQ(files().size(), 3u) << at;
            EXPECT_EQ(files().rbegin()->second, "b") << at;
        }
    }
    EXPECT_EQ(unpackAnew(""), "it is no zip archive");
    EXPECT_EQ(extractZip(root() / "none.zip", folder()), "there is no such file");
    EXPECT_EQ(extractZip(file, root() / "none"), "there is no folder " + (root() / "none").string());
}

} // namespace

} // namespace headless
