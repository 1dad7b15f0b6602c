// SPDX-License-Identifier: MIT
#include "foundation/image_buffers.h"

#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Quenza;
using namespace std::string_literals;

namespace {

std::string u32Bytes(u32 value) {
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}
std::string text(const std::string& s) {
    return u32Bytes(u32(s.size())) + s;
}
std::string floats(const std::vector<float>& values) {
    return std::string(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(float));
}

MasterBuffer sample() {
    MasterBuffer buffer;
    buffer.layers.resize(2);
    buffer.layers[0].name = "Sun";
    buffer.layers[0].image = Image(2, 1);
    for (u32 i = 0; i < 6; ++i)
        buffer.layers[0].image.pixels()[i] = f32(i) + 0.5f;
    buffer.layers[1].name = "";
    buffer.layers[1].image = Image(0, 3);
    buffer.has_alpha = true;
    buffer.alpha = FloatImageMap(1, 2, 1);
    *buffer.alpha.pixel(0, 1) = 0.25f;
    return buffer;
}

const std::string HEADER = u32Bytes(1) + u32Bytes(100) + text("layers");

std::string sampleBytes() {
    return HEADER + u32Bytes(2) + text("Sun") + u32Bytes(1) + u32Bytes(2) + u32Bytes(1) +
           floats({0.5f, 1.5f, 2.5f, 3.5f, 4.5f, 5.5f}) + text("") + u32Bytes(1) + u32Bytes(0) + u32Bytes(3) +
           u32Bytes(100) + text("alpha") + u32Bytes(1) + u32Bytes(1) + u32Bytes(2) + u32Bytes(1) +
           floats({0, 0.25f}) + u32Bytes(101);
}

std::string written(const MasterBuffer& buffer) {
    MemoryWriter writer;
    buffer.writeTo(writer);
    return writer.bytes();
}

std::string readFault(const std::string& bytes) {
    return thrownMessage<QuenzaException>([&] {
        // An exact block of its own, so that a sanitizer sees what is read beyond it.
        const std::vector<char> exact(bytes.begin(), bytes.end());
        BinaryReader reader(std::string_view(exact.data(), exact.size()));
        MasterBuffer().readFrom(reader);
    });
}

} // namespace

TEST(ImageBuffers, LayersAreWrittenAsChunks) {
    EXPECT_EQ(written(sample()), sampleBytes());
    MasterBuffer plain = sample();
    plain.has_alpha = false;
    plain.layers.clear();
    EXPECT_EQ(written(plain), HEADER + u32Bytes(0) + u32Bytes(101));
}

TEST(ImageBuffers, ChunksAreReadBack) {
    const std::string bytes = sampleBytes() + "behind";
    BinaryReader reader(bytes);
    MasterBuffer buffer;
    buffer.readFrom(reader);
    EXPECT_EQ(reader.bytesLeft(), 6u);
    EXPECT_EQ(written(buffer), sampleBytes());
    EXPECT_EQ(buffer.layers[0].image.pixel(1, 0)[2], 5.5f);
    EXPECT_EQ(buffer.alpha.pixelComponent(0, 1, 0), 0.25f);
}

TEST(ImageBuffers, EveryFaultOfAStreamHasItsText) {
    const struct {
        std::string bytes;
        const char* fault;
    } cases[] = {
        {u32Bytes(2) + u32Bytes(101), "Unknown version 2, expected 1."},
        {u32Bytes(1) + u32Bytes(102), "Unknown chunk type '102'"},
        {u32Bytes(1) + u32Bytes(100) + text("depth") + u32Bytes(101), "Unknown channel name 'depth'"},
        {HEADER + u32Bytes(1001), "Too many layers."},
        {HEADER + u32Bytes(1000), "Unexpected end of stream."},
        {HEADER + u32Bytes(1) + text("a") + u32Bytes(0), "Unknown version 0, expected 1."},
        {HEADER + u32Bytes(1) + text("a") + u32Bytes(1) + u32Bytes(0xFFFFFFFF) + u32Bytes(0xFFFFFFFF),
         "Unexpected end of stream."},
        {HEADER + u32Bytes(1) + u32Bytes(0xFFFFFFFF), "String is too long."},
        {u32Bytes(1) + u32Bytes(100) + text("alpha") + u32Bytes(3), "Unknown version 3, expected 1."},
        {u32Bytes(1) + u32Bytes(100) + text("alpha") + u32Bytes(1) + u32Bytes(1) + u32Bytes(1) +
             u32Bytes(0xFFFFFFFF),
         "Too many channels."},
        {u32Bytes(1) + u32Bytes(100) + text("alpha") + u32Bytes(1) + u32Bytes(0xFFFFFFFF) +
             u32Bytes(0xFFFFFFFF) + u32Bytes(1000),
         "Unexpected end of stream."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(readFault(c.bytes), c.fault);
}

TEST(ImageBuffers, EveryShorterStreamEndsInAFault) {
    const std::string bytes = sampleBytes();
    for (size_t length = 0; length < bytes.size(); ++length)
        EXPECT_EQ(readFault(bytes.substr(0, length)), "Unexpected end of stream.") << length;
    EXPECT_EQ(readFault(bytes), "no exception");
}

TEST(ImageBuffers, AFailedReadLeavesTheBufferAsItWas) {
    MasterBuffer buffer = sample();
    const std::string bad = HEADER + u32Bytes(0) + u32Bytes(7);
    BinaryReader reader(bad);
    EXPECT_THROW(buffer.readFrom(reader), QuenzaException);
    EXPECT_EQ(written(buffer), sampleBytes());
}

TEST(ImageBuffers, FormsAreComparedInOrder) {
    const MasterBuffer a = sample();
    const auto fault = [&](auto change) {
        MasterBuffer b = sample();
        change(b);
        return thrownMessage<QuenzaException>([&] { checkSameForm(a, b); });
    };
    EXPECT_EQ(fault([](MasterBuffer&) {}), "no exception");
    EXPECT_EQ(fault([](MasterBuffer& b) { b.alpha = FloatImageMap(2, 1, 1); }),
              "Alpha channel dimensions differ");
    EXPECT_EQ(fault([](MasterBuffer& b) {
                  b.has_alpha = false;
                  b.alpha = FloatImageMap();
              }),
              "Alpha channel presence differs");
    EXPECT_EQ(fault([](MasterBuffer& b) {
                  b.has_alpha = false;
                  b.layers.pop_back();
              }),
              "Num layers differs");
}
