// SPDX-License-Identifier: MIT
#include "engine/images/image_file.h"
#include "support/temp_dir.h"

#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <tiffio.h>
#include <vector>

namespace {

using namespace engine;
using Quenza::TempDir;

struct Form {
    std::uint16_t bits, samples, format, photometric, compression;
    bool tiled;
    const char* mode; ///< Little or big endian, and whether in the large form.
};

/// Two by two pixels of the given samples, in rows from the top.
template <class Sample>
void writeTiff(const std::string& path, const Form& form, const std::vector<Sample>& samples) {
    TIFF* const tiff = TIFFOpen(path.c_str(), form.mode);
    ASSERT_NE(tiff, nullptr);
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, 2);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, 2);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, form.bits);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, form.samples);
    TIFFSetField(tiff, TIFFTAG_SAMPLEFORMAT, form.format);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, form.photometric);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, form.compression);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    const size_t row = 2 * form.samples;
    if (form.tiled) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
        std::vector<Sample> tile(size_t(16) * 16 * form.samples);
        for (size_t y = 0; y < 2; ++y) {
            std::copy_n(samples.data() + y * row, row, tile.data() + y * 16 * form.samples);
        }
        TIFFWriteTile(tiff, tile.data(), 0, 0, 0, 0);
    } else {
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, 1);
        for (std::uint32_t y = 0; y < 2; ++y) {
            std::vector<Sample> line(samples.begin() + std::ptrdiff_t(y * row),
                                     samples.begin() + std::ptrdiff_t((y + 1) * row));
            TIFFWriteScanline(tiff, line.data(), y, 0);
        }
    }
    TIFFClose(tiff);
}

constexpr std::uint16_t UINT = SAMPLEFORMAT_UINT, FLOAT = SAMPLEFORMAT_IEEEFP;

TEST(Tiff, FormsReadAsTheyWereWritten) {
    const TempDir dir;
    const std::string path = (dir / "a.tif").toStdString();
    const auto read = [&] {
        std::string fault;
        const auto image = loadImage(path, fault);
        EXPECT_TRUE(image) << fault;
        return image ? image->rgb : std::vector<float>();
    };
    const std::vector<std::uint8_t> bytes = {255, 0, 0, 0, 255, 0, 0, 0, 255, 51, 102, 153};
    const std::vector<float> as_floats = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0.2f, 0.4f, 0.6f};
    for (const Form& form : {Form{8, 3, UINT, PHOTOMETRIC_RGB, COMPRESSION_NONE, false, "w"},
                             Form{8, 3, UINT, PHOTOMETRIC_RGB, COMPRESSION_LZW, false, "wb"},
                             Form{8, 3, UINT, PHOTOMETRIC_RGB, COMPRESSION_ADOBE_DEFLATE, true, "w8"}}) {
        writeTiff(path, form, bytes);
        EXPECT_EQ(read(), as_floats) << form.mode;
    }
    writeTiff(path, {8, 1, UINT, PHOTOMETRIC_MINISWHITE, COMPRESSION_NONE, false, "w"},
              std::vector<std::uint8_t>{0, 255, 204, 51});
    EXPECT_EQ(read(), (std::vector<float>{1, 1, 1, 0, 0, 0, 0.2f, 0.2f, 0.2f, 0.8f, 0.8f, 0.8f}));

    const std::vector<float> deep = {1, 2, 3, 0.125f, 0.25f, 1e-3f, 7, 8, 9, std::nanf(""), 0, 5};
    writeTiff(path, {32, 3, FLOAT, PHOTOMETRIC_RGB, COMPRESSION_ADOBE_DEFLATE, false, "wb"}, deep);
    EXPECT_EQ(read(), (std::vector<float>{1, 2, 3, 0.125f, 0.25f, 1e-3f, 7, 8, 9, 0, 0, 5}));
    // Grey with an alpha that is left out.
    writeTiff(path, {16, 2, UINT, PHOTOMETRIC_MINISBLACK, COMPRESSION_NONE, false, "w"},
              std::vector<std::uint16_t>{65535, 1, 13107, 2, 0, 3, 1, 4});
    EXPECT_EQ(read(), (std::vector<float>{1, 1, 1, 0.2f, 0.2f, 0.2f, 0, 0, 0, 1 / 65535.0f, 1 / 65535.0f,
                                          1 / 65535.0f}));
}

TEST(Tiff, DamageIsAFaultOrAPicture) {
    const TempDir dir;
    const std::string path = (dir / "a.tif").toStdString(), bad = (dir / "bad.tif").toStdString();
    writeTiff(path, {16, 3, UINT, PHOTOMETRIC_RGB, COMPRESSION_LZW, false, "w"},
              std::vector<std::uint16_t>(12, 4660));
    const std::string whole = Quenza::fileBytes(path);
    std::string fault;
    for (size_t length = 0; length < whole.size(); ++length) {
        Quenza::writeBytes(bad, whole.substr(0, length));
        EXPECT_EQ(loadImage(bad, fault), nullptr) << length;
        EXPECT_NE(fault, "");
    }
    for (size_t at = 0; at < whole.size(); ++at) {
        for (const char value : {'\0', '\x7F'}) {
            std::string changed = whole;
            changed[at] = value;
            Quenza::writeBytes(bad, changed);
            fault.clear();
            const bool refused = loadImage(bad, fault) == nullptr;
            EXPECT_EQ(refused, !fault.empty()) << at;
        }
    }
}

} // namespace
