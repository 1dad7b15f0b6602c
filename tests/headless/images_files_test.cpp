// SPDX-License-Identifier: MIT

#include "headless/model/handles.h"
#include "headless/tables/host_table.h"
#include "host/bitmap.h"
#include "host/general.h"
#include "support/pipe.h"
#include "support/temp_dir.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>

#ifndef _WIN32
#endif

// Image files as a plug-in writes and reads them.

namespace headless {

namespace {

using Quenza::fileBytes;
using Quenza::TempDir;
using Quenza::writeBytes;

struct BitmapOwner {
    BaseBitmap* bitmap = BaseBitmap::Alloc();
    BitmapOwner() = default;
    BitmapOwner(const BitmapOwner&) = delete;
    BitmapOwner& operator=(const BitmapOwner&) = delete;
    ~BitmapOwner() { BaseBitmap::Free(bitmap); }
    BaseBitmap* operator->() const { return bitmap; }
};

class ImageFilesTest : public ::testing::Test {
protected:
    ImageFilesTest() : previous_(HostTables()) { SetHostTables(hostTable()); }
    ~ImageFilesTest() override { SetHostTables(previous_); }

    Filename at(const std::string& name) const { return Filename(String((dir_ / name).toStdString())); }

    /// 32 x 16: quarters of red and green above, blue and white below, but for a dark corner at the upper
    /// left.
    static void drawQuarters(BaseBitmap& bitmap) {
        ASSERT_EQ(bitmap.Init(32, 16), IMAGERESULT_OK);
        for (int32_t y = 0; y < 16; ++y) {
            for (int32_t x = 0; x < 32; ++x) {
                const bool right = x >= 16;
                const bool below = y >= 8;
                bitmap.SetPixel(x, y, right == below ? 240 : 10, right ? 230 : 10, below ? 220 : 10);
            }
        }
    }
    static std::array<int, 3> pixel(const BaseBitmap& bitmap, int32_t x, int32_t y) {
        uint16_t r = 0;
        uint16_t g = 0;
        uint16_t b = 0;
        bitmap.GetPixel(x, y, &r, &g, &b);
        return {r, g, b};
    }
    static int distance(const std::array<int, 3>& a, const std::array<int, 3>& b) {
        return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
    }

    TempDir dir_;

private:
    const HostTable* previous_;
};

struct FormatCase {
    const char* file;
    int32_t filter;
    int32_t depthBack;
    /// Sum over the components of a pixel.
    int tolerance;
};
const FormatCase FORMATS[] = {
    {"a.png", FILTER_PNG, 24, 0},  {"a.bmp", FILTER_BMP, 24, 0}, {"a.tga", FILTER_TGA, 24, 0},
    {"a.jpg", FILTER_JPG, 24, 12}, {"a.hdr", FILTER_HDR, 96, 3}, {"misnamed.png", FILTER_JPG, 24, 12},
#ifndef _WIN32 // where there is no OpenImageIO
    {"a.tif", FILTER_TIF, 24, 0},  {"a.exr", FILTER_EXR, 96, 1},
#endif
};

TEST_F(ImageFilesTest, EachFormatKeepsPlaceAndColour) {
    BitmapOwner drawn;
    drawQuarters(*drawn.bitmap);
    BaseContainer settings;
    settings.SetLong(JPGSAVER_QUALITY, 100);
    for (const FormatCase& format : FORMATS) {
        SCOPED_TRACE(format.file);
        ASSERT_EQ(drawn->Save(at(format.file), format.filter, &settings, SAVEBIT_0), IMAGERESULT_OK);
        BitmapOwner read;
        ASSERT_EQ(read->Init(at(format.file)), IMAGERESULT_OK);
        EXPECT_EQ(read->GetBw(), 32);
        EXPECT_EQ(read->GetBh(), 16);
        EXPECT_EQ(read->GetBt(), format.depthBack);
        int worst = 0;
        for (int32_t y = 0; y < 16; ++y) {
            for (int32_t x = 0; x < 32; ++x) {
                worst = std::max(worst, distance(pixel(*read.bitmap, x, y), pixel(*drawn.bitmap, x, y)));
            }
        }
        EXPECT_LE(worst, format.tolerance);
    }
    for (const auto& entry : std::filesystem::directory_iterator(dir_.path().toStdString())) {
        EXPECT_NE(entry.path().extension(), ".partial");
    }
}

/// Two rows of two pixels, the lower one first in the file: red, green above blue, white.
const std::string BOTTOM_UP_PIXELS("\xff\0\0\xff\xff\xff", 6);
const std::string UPPER_PIXELS("\0\0\xff\0\xff\0", 6);

TEST_F(ImageFilesTest, FilesOfOthersStandUpright) {
    const std::string bmp =
        std::string("BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x02\0\0\0\x02\0\0\0\x01\0\x18\0\0\0\0\0", 34) +
        std::string(20, '\0') + BOTTOM_UP_PIXELS + std::string(2, '\0') + UPPER_PIXELS + std::string(2, '\0');
    const std::string tgaHead("\0\0\x02\0\0\0\0\0\0\0\0\0\x02\0\x02\0\x18", 17);
    const std::pair<const char*, std::string> files[] = {
        {"bottom_up.bmp", bmp},
        {"bottom_up.tga", tgaHead + std::string(1, '\0') + BOTTOM_UP_PIXELS + UPPER_PIXELS},
        {"top_down.tga", tgaHead + "\x20" + UPPER_PIXELS + BOTTOM_UP_PIXELS},
    };
    for (const auto& [name, bytes] : files) {
        SCOPED_TRACE(name);
        writeBytes(dir_ / name, bytes);
        BitmapOwner read;
        ASSERT_EQ(read->Init(at(name)), IMAGERESULT_OK);
        using Rgb = std::array<int, 3>;
        EXPECT_EQ(pixel(*read.bitmap, 0, 0), (Rgb{255, 0, 0}));
        EXPECT_EQ(pixel(*read.bitmap, 1, 0), (Rgb{0, 255, 0}));
        EXPECT_EQ(pixel(*read.bitmap, 0, 1), (Rgb{0, 0, 255}));
        EXPECT_EQ(pixel(*read.bitmap, 1, 1), (Rgb{255, 255, 255}));
    }
}

std::string bigEndian(uint32_t value) {
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

std::string pngChunk(const std::string& name, const std::string& content) {
    const std::string body = name + content;
    return bigEndian(static_cast<uint32_t>(content.size())) + body +
           bigEndian(CalcCRC32(body.data(), body.size(), 0));
}

/// A PNG that says it's 60,000 pixels wide and high.
std::string hugePng() {
    const std::string size = bigEndian(60000) + bigEndian(60000);
    return "\x89PNG\r\n\x1a\n" + pngChunk("IHDR", size + std::string("\x08\x02\0\0\0", 5)) +
           pngChunk("IDAT", std::string("\x78\x9c\x03\0\0\0\0\x01", 8)) + pngChunk("IEND", "");
}

TEST_F(ImageFilesTest, WhatCantBeReadIsAnErrorAndLeavesAnEmptyImage) {
#ifndef _WIN32 // where no file is a pipe
    Quenza::makePipe(dir_ / "pipe.png");
#endif
    std::filesystem::create_directory((dir_ / "folder.png").toStdString());
    writeBytes(dir_ / "text.png", "no image at all, but long enough for a header");
    writeBytes(dir_ / "empty.png", "");
    const std::pair<const char*, int32_t> cases[] = {
        {"missing.png", IMAGERESULT_NOTEXISTING}, {"pipe.png", IMAGERESULT_NOTEXISTING},
        {"folder.png", IMAGERESULT_NOTEXISTING},  {"text.png", IMAGERESULT_WRONGTYPE},
        {"empty.png", IMAGERESULT_WRONGTYPE},
    };
    for (const auto& [name, expected] : cases) {
        BitmapOwner read;
        EXPECT_EQ(read->Init(at(name)), expected) << name;
        EXPECT_EQ(read->GetBw(), 0) << name;
    }
    writeBytes(dir_ / "huge.png", hugePng());
    BitmapOwner read;
#ifdef _WIN32 // whose decoder takes no image of that size for one
    EXPECT_EQ(read->Init(at("huge.png")), IMAGERESULT_WRONGTYPE);
#else
    EXPECT_EQ(read->Init(at("huge.png")), IMAGERESULT_OUTOFMEMORY);
#endif
    EXPECT_EQ(read->Init(60000, 60000), IMAGERESULT_OUTOFMEMORY);
    EXPECT_EQ(read->Init(0, 5), IMAGERESULT_PARAM_ERROR);
    EXPECT_EQ(read->Init(5, 5, 32), IMAGERESULT_PARAM_ERROR);
}

TEST_F(ImageFilesTest, TruncatedFilesNeitherCrashNorGiveHalfAnImage) {
    BitmapOwner drawn;
    drawQuarters(*drawn.bitmap);
    for (const FormatCase& format : FORMATS) {
        ASSERT_EQ(drawn->Save(at("whole"), format.filter, nullptr, SAVEBIT_0), IMAGERESULT_OK);
        const std::string bytes = fileBytes(dir_ / "whole");
        for (size_t length = 0; length < bytes.size() / 2; length += 1 + bytes.size() / 97) {
            writeBytes(dir_ / "part", bytes.substr(0, length));
            BitmapOwner read;
            // A JPEG reader fills up with grey, as all of its kind do.
            if (read->Init(at("part")) == IMAGERESULT_OK) {
                EXPECT_EQ(format.filter, FILTER_JPG) << format.file << " cut at " << length;
            } else {
                EXPECT_EQ(read->GetBw(), 0) << format.file;
            }
        }
    }
}

TEST_F(ImageFilesTest, AFailedWriteLeavesTheEarlierFile) {
    BitmapOwner drawn;
    drawQuarters(*drawn.bitmap);
    ASSERT_EQ(drawn->Save(at("kept.png"), FILTER_PNG, nullptr, SAVEBIT_0), IMAGERESULT_OK);
    const std::string before = fileBytes(dir_ / "kept.png");
    // In the way of the file that is written first.
    std::filesystem::create_directories((dir_ / "kept.png.partial").toStdString() + "/inside");
    EXPECT_EQ(drawn->Save(at("kept.png"), FILTER_PNG, nullptr, SAVEBIT_0), IMAGERESULT_FILEERROR);
    EXPECT_EQ(fileBytes(dir_ / "kept.png"), before);
    EXPECT_EQ(drawn->Save(at("no/such/folder.png"), FILTER_PNG, nullptr, SAVEBIT_0), IMAGERESULT_FILEERROR);
    EXPECT_EQ(drawn->Save(at("a.png"), 77, nullptr, SAVEBIT_0), IMAGERESULT_PARAM_ERROR);
    BitmapOwner empty;
    EXPECT_EQ(empty->Save(at("a.png"), FILTER_PNG, nullptr, SAVEBIT_0), IMAGERESULT_PARAM_ERROR);
}

} // namespace

} // namespace headless
