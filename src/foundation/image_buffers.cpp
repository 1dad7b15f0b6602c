// SPDX-License-Identifier: MIT
#include "foundation/image_buffers.h"

#include "foundation/string_utils.h"

namespace Quenza {

namespace {

constexpr u32 VERSION = 1;
constexpr u32 CHUNK_START = 100;
constexpr u32 CHUNK_END = 101;

void readLayers(BinaryReader& reader, Vector<MasterBuffer::Layer>& layers) {
    const u32 count = reader.readU32();
    if (count > MasterBuffer::MAX_LAYERS)
        throw QuenzaException("Too many layers.");
    layers.resize(count);
    for (MasterBuffer::Layer& layer : layers) {
        layer.name = reader.readString();
        layer.image.readFrom(reader);
    }
}

} // namespace

void checkRecordVersion(u32 version) {
    if (version != VERSION)
        throw QuenzaException("Unknown version " + toString(version) + ", expected " + toString(VERSION) +
                              ".");
}

Image::Image(u32 width, u32 height) : width_(width), height_(height) {
    pixels_.resize(u64(width) * height * 3, 0.0f);
}

Image::Image(u32 width, u32 height, u32 bytes_per_pixel, const unsigned char* data) {
    if (bytes_per_pixel != 1 && bytes_per_pixel != 3)
        throw QuenzaException("Image bytes per pixel must be 1 or 3");
    width_ = width;
    height_ = height;
    const u64 count = u64(width) * height * 3;
    pixels_.resize(count);
    for (u64 i = 0; i < count; ++i)
        pixels_[i] = f32(data[bytes_per_pixel == 3 ? i : i / 3]) / 255.0f;
}

void Image::writeTo(BinaryWriter& writer) const {
    for (const u32 number : {VERSION, width_, height_})
        writer.writeU32(number);
    writer.writeFloats(pixels_.data(), pixels_.size());
}

void Image::readFrom(BinaryReader& reader) {
    checkRecordVersion(reader.readU32());
    const u32 width = reader.readU32();
    const u32 height = reader.readU32();
    const u64 count = u64(width) * height;
    if (count > reader.bytesLeft() / PIXEL_BYTES)
        throw QuenzaException("Unexpected end of stream.");
    Vector<f32> pixels(count * 3);
    reader.readFloats(pixels.data(), pixels.size());
    width_ = width;
    height_ = height;
    pixels_ = std::move(pixels);
}

void FloatBuffer::resize(u32 width, u32 height, u32 channels) {
    Vector<f32> values(u64(width) * height * channels, 0.0f);
    width_ = width;
    height_ = height;
    channels_ = channels;
    values_ = std::move(values);
}

void MasterBuffer::writeTo(BinaryWriter& writer) const {
    writer.writeU32(VERSION);
    writer.writeU32(CHUNK_START);
    writer.writeString("layers");
    writer.writeU32(u32(layers.size()));
    for (const Layer& layer : layers) {
        writer.writeString(layer.name.view());
        layer.image.writeTo(writer);
    }
    if (has_alpha) {
        writer.writeU32(CHUNK_START);
        writer.writeString("alpha");
        alpha.writeTo(writer);
    }
    writer.writeU32(CHUNK_END);
}

void MasterBuffer::readFrom(BinaryReader& reader) {
    MasterBuffer read;
    checkRecordVersion(reader.readU32());
    for (u32 chunk = reader.readU32(); chunk != CHUNK_END; chunk = reader.readU32()) {
        if (chunk != CHUNK_START)
            throw QuenzaException("Unknown chunk type '" + toString(chunk) + "'");
        const String name = reader.readString();
        if (name == "layers") {
            readLayers(reader, read.layers);
        } else if (name == "alpha") {
            read.alpha.readFrom(reader);
            read.has_alpha = true;
        } else {
            throw QuenzaException("Unknown channel name '" + name + "'");
        }
    }
    *this = std::move(read);
}

void checkSameForm(const MasterBuffer& a, const MasterBuffer& b) {
    if (a.layers.size() != b.layers.size())
        throw QuenzaException("Num layers differs");
    if (a.has_alpha != b.has_alpha)
        throw QuenzaException("Alpha channel presence differs");
    if (a.has_alpha &&
        (a.alpha.getWidth() != b.alpha.getWidth() || a.alpha.getHeight() != b.alpha.getHeight() ||
         a.alpha.numChannels() != b.alpha.numChannels()))
        throw QuenzaException("Alpha channel dimensions differ");
}

} // namespace Quenza
