// SPDX-License-Identifier: MIT
#include "host/basecontainer.h"
#include "host/baseselect.h"
#include "host/filename.h"
#include "host/string.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

std::string ranges(const BaseSelect& selection) {
    std::string text;
    int32_t from = 0, to = 0;
    for (int32_t n = 0; selection.GetRange(n, &from, &to); ++n) {
        text += (n ? " " : "") + std::to_string(from) + "-" + std::to_string(to);
    }
    return text;
}

TEST(BaseSelect, JoinsNeighboursAndOverlaps) {
    BaseSelect selection;
    for (const auto& [from, to] : {std::pair{10, 12}, {3, 4}, {5, 6}, {20, 20}, {11, 19}, {8, 7}, {-2, 1}}) {
        selection.SelectRange(from, to);
    }
    EXPECT_EQ(ranges(selection), "3-6 10-20");
    EXPECT_EQ(selection.GetCount(), 15);
    EXPECT_TRUE(selection.IsSelected(20));
    EXPECT_FALSE(selection.IsSelected(7));
}

TEST(BaseSelect, InvertsWithinTheLimits) {
    const struct {
        std::vector<std::pair<int32_t, int32_t>> selected;
        const char* expected;
    } cases[] = {{{}, "0-9"}, {{{0, 9}}, ""}, {{{2, 3}, {5, 5}}, "0-1 4-4 6-9"}, {{{8, 12}}, "0-7 10-12"}};
    for (const auto& test : cases) {
        BaseSelect selection;
        for (const auto& [from, to] : test.selected) {
            selection.SelectRange(from, to);
        }
        selection.ToggleAll(0, 9);
        EXPECT_EQ(ranges(selection), test.expected);
    }
}

TEST(Filename, TakesPathsApart) {
    const struct {
        const char* path;
        const char* directory;
        const char* file;
        const char* suffix;
        const char* withSuffix;
    } cases[] = {
        {"/a/b.c/d.e.txt", "/a/b.c", "d.e.txt", "txt", "/a/b.c/d.e.qzs"},
        {"/a/b.c/d", "/a/b.c", "d", "", "/a/b.c/d.qzs"},
        {"d.txt", "", "d.txt", "txt", "d.qzs"},
        {"/d", "/", "d", "", "/d.qzs"},
        {"/a/", "/a", "", "", "/a/.qzs"},
#ifdef _WIN32
        {"C:\\d", "C:\\", "d", "", "C:\\d.qzs"},
        {"C:/d", "C:/", "d", "", "C:/d.qzs"},
        {"C:\\a\\d", "C:\\a", "d", "", "C:\\a\\d.qzs"},
        {"C:d", "", "C:d", "", "C:d.qzs"},
#endif
        {"", "", "", "", ".qzs"},
    };
    for (const auto& test : cases) {
        Filename path(test.path);
        EXPECT_EQ(path.GetDirectory().GetUtf8(), test.directory);
        EXPECT_EQ(path.GetFile().GetUtf8(), test.file);
        EXPECT_EQ(path.GetSuffix().GetUtf8(), test.suffix);
        path.SetSuffix("qzs");
        EXPECT_EQ(path.GetUtf8(), test.withSuffix);
    }
    EXPECT_EQ((Filename("/") + "a").GetUtf8(), "/a");
    EXPECT_EQ((Filename() + "a").GetUtf8(), "a");
}

TEST(String, CountsCharactersNotBytes) {
    String text("a\xC3\xBC\xF0\x9F\x98\x80z\xFF!");
    EXPECT_EQ(text.GetLength(), 6);
    int32_t position = 0;
    ASSERT_TRUE(text.FindFirst("z", &position));
    EXPECT_EQ(position, 3);
    text.Delete(1, 2);
    EXPECT_EQ(text.GetUtf8(), "az\xFF!");
    text.Insert(2, "\xE2\x82\xAC");
    EXPECT_EQ(text.GetUtf8(), "az\xE2\x82\xAC\xFF!");
    EXPECT_EQ(text.SubStr(2, 1).GetUtf8(), "\xE2\x82\xAC");
    EXPECT_FALSE(text.FindFirst("a", nullptr, 1));
}

TEST(BaseContainer, ConvertsNumbersAndKeepsItsOrder) {
    BaseContainer data;
    data.SetReal(3, 1800.9f);
    data.SetBool(1, true);
    data.SetString(2, "x");
    data.SetReal(3, -2.9f);
    EXPECT_EQ(data.GetLong(3), -2) << "cut, not rounded";
    EXPECT_EQ(data.GetLong(1), 1);
    EXPECT_EQ(data.GetLong(2, 7), 0) << "a text is no number, but it is there";
    EXPECT_EQ(data.GetLong(9, 7), 7);
    EXPECT_EQ(data.GetIndexId(0), 3);
    data.SetReal(3, std::numeric_limits<float>::infinity());
    EXPECT_EQ(data.GetLong(3), std::numeric_limits<int32_t>::max());

    BaseContainer outer;
    outer.SetContainer(1, data);
    const BaseContainer copy = outer;
    outer.GetContainerInstance(1)->SetBool(1, false);
    EXPECT_TRUE(copy.GetContainer(1).GetBool(1)) << "a copy is deep";
    EXPECT_FALSE(copy == outer);
    EXPECT_TRUE(data.RemoveData(2));
    EXPECT_FALSE(data.RemoveData(2));
}

} // namespace
