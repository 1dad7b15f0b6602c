// SPDX-License-Identifier: MIT
#include "engine/images/image_file.h"
#include "engine/output.h"

#include "foundation/image_buffers.h"
#include "support/system_texts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace engine;
using Quenza::TempDir;

namespace {

FloatImage gradient(Quenza::u32 width, Quenza::u32 height) {
    FloatImage image(width, height);
    for (size_t i = 0; i < image.rgb.size(); ++i)
        image.rgb[i] = float(i) * 0.37f;
    return image;
}

std::shared_ptr<const FloatImage> loaded(const Quenza::String& path) {
    std::string fault;
    const auto image = loadImage(path.toStdString(), fault);
    EXPECT_TRUE(image) << fault;
    return image;
}

std::string faultOf(const Quenza::String& path) {
    std::string fault;
    return loadImage(path.toStdString(), fault) ? "no fault" : fault;
}

std::string littleEndian(unsigned value, int bytes) {
    std::string result;
    for (int i = 0; i < bytes; ++i)
        result += char(value >> (8 * i));
    return result;
}

/// An uncompressed true-colour TGA, rows from the top.
std::string tga(unsigned width, unsigned height, const std::string& bgr) {
    return std::string("\0\0\2\0\0\0\0\0\0\0\0\0", 12) + littleEndian(width, 2) + littleEndian(height, 2) +
           "\x18\x20" + bgr;
}

} // namespace

TEST(ImageFiles, EXRReadsBackToTheBit) {
    const TempDir dir;
    const FloatImage image = gradient(7, 4);
    ASSERT_EQ(writeEXR((dir / "a.exr").toStdString(), image), "");
    const auto back = loaded(dir / "a.exr");
    EXPECT_EQ(back->width, 7u);
    EXPECT_EQ(back->rgb, image.rgb);
    FloatImage odd(1, 1);
    odd.rgb = {std::nanf(""), -1.0f, HUGE_VALF};
    ASSERT_EQ(writeEXR((dir / "odd.exr").toStdString(), odd), "");
    EXPECT_EQ(loaded(dir / "odd.exr")->rgb, std::vector<float>(3, 0.0f));
}

TEST(ImageFiles, QZIHoldsTheNamedLayers) {
    const TempDir dir;
    const std::vector<FloatImage> layers = {gradient(2, 3), gradient(2, 3)};
    ASSERT_EQ(writeQZI((dir / "a.qzi").toStdString(), layers, {"Sun", "Sky"}), "");
    const std::string bytes = Quenza::fileBytes(dir / "a.qzi");
    Quenza::BinaryReader reader(bytes);
    Quenza::MasterBuffer buffer;
    buffer.readFrom(reader);
    EXPECT_EQ(reader.bytesLeft(), 0u);
    ASSERT_EQ(buffer.layers.size(), 2u);
    EXPECT_TRUE(buffer.layers[1].name == "Sky");
    EXPECT_EQ(buffer.layers[1].image.getWidth(), 2u);
    EXPECT_EQ(buffer.layers[1].image.pixel(1, 2)[2], layers[1].pixel(1, 2)[2]);
    EXPECT_FALSE(buffer.has_alpha);
}

TEST(ImageFiles, AFailedWriteSaysWhyAndLeavesTheOldFile) {
    const TempDir dir;
    const std::string nowhere = (dir / "no/such/folder/a").toStdString();
    EXPECT_EQ(writePNG(nowhere, 1, 1, {0, 0, 0}), Quenza::noSuchFolder());
    EXPECT_EQ(writeEXR(nowhere, gradient(1, 1)), Quenza::noSuchFolder());
    EXPECT_EQ(writeQZI(nowhere, {gradient(1, 1)}, {"a"}), Quenza::noSuchFolder());
    Quenza::writeBytes(dir / "old.png", "old");
    EXPECT_EQ(writePNG((dir / "old.png").toStdString(), 4, 4, {0}), "the image's size is wrong");
    EXPECT_EQ(Quenza::fileBytes(dir / "old.png"), "old");
}

TEST(ImageFiles, TGAKeepsItsRowsAndChannels) {
    const TempDir dir;
    Quenza::writeBytes(dir / "a.tga", tga(1, 2, std::string("\x00\x33\xFF\xFF\x00\x00", 6)));
    EXPECT_EQ(loaded(dir / "a.tga")->rgb, (std::vector<float>{1, 0.2f, 0, 0, 0, 1}));
}

TEST(ImageFiles, DamagedAndBoastingFilesAreAFault) {
    const TempDir dir;
    EXPECT_EQ(faultOf(dir / "none.png"),
              "could not open '" + (dir / "none.png").toStdString() + "' for reading.");
    const auto file = [&](const std::string& bytes) {
        Quenza::writeBytes(dir / "bad", bytes);
        return faultOf(dir / "bad");
    };
    EXPECT_NE(file(""), "no fault");
    EXPECT_NE(file("text"), "no fault");
    EXPECT_EQ(file(tga(65535, 65535, "")), "it has more than 67108864 pixels");
    EXPECT_EQ(file(tga(8000, 8000, "")), "it claims more pixels than its bytes can hold");
    const std::string header("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
    EXPECT_EQ(file(header + std::string("\0\0\x75\x30\0\0\x75\x30", 8)), "it has more than 67108864 pixels");
    ASSERT_EQ(writeEXR((dir / "a.exr").toStdString(), gradient(12, 12)), "");
    ASSERT_EQ(writePNG((dir / "a.png").toStdString(), 40, 40, std::vector<unsigned char>(4800, 77)), "");
    for (const char* name : {"a.exr", "a.png"}) {
        const std::string whole = Quenza::fileBytes(dir / name);
        // Cut within the pixels: PNG decoders may overlook a missing end.
        for (size_t length = 0; length < whole.size() * 3 / 4; length += 5)
            EXPECT_NE(file(whole.substr(0, length)), "no fault") << name << " " << length;
    }
}

TEST(ImageFiles, DamagedRunsOfRadiancePicturesAreAFault) {
    const TempDir dir;
    const auto file = [&](const std::string& bytes) {
        Quenza::writeBytes(dir / "a.hdr", bytes);
        return faultOf(dir / "a.hdr");
    };
    // Eight pixels a row: five times a byte, three bytes as they are; exponent 128 stands for 1/256 of a
    // byte's worth.
    const std::string component("\x85\x40\x03\x40\x40\x40", 6), exponents("\x88\x80", 2);
    const std::string row = std::string("\x02\x02\0\x08", 4) + component + component + component + exponents;
    const std::string header = "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y 2 +X 8\n",
                      whole = header + row + row;
    ASSERT_EQ(file(whole), "no fault");
    EXPECT_EQ(loaded(dir / "a.hdr")->rgb, std::vector<float>(48, 0.25f));
    for (size_t length = header.size(); length < whole.size(); ++length)
        EXPECT_EQ(file(whole.substr(0, length)), "it ends early, or is damaged") << length;
    std::string empty_run = whole;
    empty_run[header.size() + 4] = '\0';
    EXPECT_EQ(file(empty_run), "it ends early, or is damaged");
    EXPECT_EQ(file("#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y -4 +X 64\n"), "it has no pixels");
}
