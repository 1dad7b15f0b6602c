// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/binary_stream.h"
#include "foundation/exceptions.h"
#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"
#include "foundation/vector.h"

#include <type_traits>
#include <utility>

namespace Quenza {

/// Anything with values on a grid of pixels.
class Map2D : public RefCounted {
public:
    virtual u32 getWidth() const = 0;
    virtual u32 getHeight() const = 0;
    virtual u32 numChannels() const = 0;
    /// A value of a pixel; x, y from the top left corner. Indexes are not checked.
    virtual f32 pixelComponent(u32 x, u32 y, u32 channel) const = 0;
};

/// Linear RGB in floats, row after row from the top.
class Image : public Map2D {
public:
    /// Bytes of a pixel, in memory and in a stream.
    static constexpr u64 PIXEL_BYTES = 3 * sizeof(f32);

    Image() = default;
    /// A black image.
    Image(u32 width, u32 height);
    /// Of 8-bit data, 0 to 255 becoming 0 to 1; a single byte a pixel is grey. Throws QuenzaException "Image
    /// bytes per pixel must be 1 or 3".
    Image(u32 width, u32 height, u32 bytes_per_pixel, const unsigned char* data);

    u32 getWidth() const override { return width_; }
    u32 getHeight() const override { return height_; }
    u32 numChannels() const override { return 3; }
    f32 pixelComponent(u32 x, u32 y, u32 channel) const override { return pixel(x, y)[channel]; }

    f32* pixel(u32 x, u32 y) { return pixels_.data() + (u64(y) * width_ + x) * 3; }
    const f32* pixel(u32 x, u32 y) const { return pixels_.data() + (u64(y) * width_ + x) * 3; }
    /// All pixels, three floats each.
    Vector<f32>& pixels() { return pixels_; }
    const Vector<f32>& pixels() const { return pixels_; }

    /// The image record: u32 version, width and height, then the pixels. The reader throws "Unknown version "
    /// + version + ", expected 1.".
    void writeTo(BinaryWriter& writer) const;
    void readFrom(BinaryReader& reader);

private:
    u32 width_ = 0;
    u32 height_ = 0;
    Vector<f32> pixels_;
};

/// How an ImageMap's components become floats from 0 to 1.
struct FloatComponentValueTraits {
    static constexpr f32 maxValue() { return 1.0f; }
    static constexpr bool isFloatingPoint() { return true; }
};

/// A version's check that all records share: "Unknown version " + version + ", expected 1.".
void checkRecordVersion(u32 version);

/// `channels` components of type V a pixel, row after row from the top.
template <class V, class ValueTraits>
class ImageMap : public Map2D {
public:
    ImageMap() = default;
    /// All components are zero.
    ImageMap(u32 width, u32 height, u32 channels) : width_(width), height_(height), channels_(channels) {
        values_.resize(count(), V(0));
    }

    u32 getWidth() const override { return width_; }
    u32 getHeight() const override { return height_; }
    u32 numChannels() const override { return channels_; }
    f32 pixelComponent(u32 x, u32 y, u32 channel) const override {
        return f32(pixel(x, y)[channel]) / ValueTraits::maxValue();
    }

    V* pixel(u32 x, u32 y) { return values_.data() + (u64(y) * width_ + x) * channels_; }
    const V* pixel(u32 x, u32 y) const { return values_.data() + (u64(y) * width_ + x) * channels_; }
    Vector<V>& values() { return values_; }
    const Vector<V>& values() const { return values_; }

    /// The map record: u32 version 1, width, height and channels, then the components.
    void writeTo(BinaryWriter& writer) const {
        for (const u32 number : {RECORD_VERSION, width_, height_, channels_})
            writer.writeU32(number);
        writer.writeBlock(values_.data(), values_.size() * sizeof(V));
    }
    /// Leaves the map as it was when it throws.
    void readFrom(BinaryReader& reader) requires std::is_same_v<V, f32> {
        checkRecordVersion(reader.readU32());
        const u32 width = reader.readU32();
        const u32 height = reader.readU32();
        const u32 channels = reader.readU32();
        // Three factors of 32 bits need more than 64.
        if (channels > MAX_CHANNELS)
            throw QuenzaException("Too many channels.");
        const u64 pixel_bytes = u64(channels) * sizeof(V);
        const u64 pixels = u64(width) * height;
        if (pixel_bytes != 0 && pixels > reader.bytesLeft() / pixel_bytes)
            throw QuenzaException("Unexpected end of stream.");
        Vector<V> values(pixels * channels);
        reader.readFloats(values.data(), values.size());
        width_ = width;
        height_ = height;
        channels_ = channels;
        values_ = std::move(values);
    }

private:
    static constexpr u32 RECORD_VERSION = 1;
    static constexpr u32 MAX_CHANNELS = 1024;

    u64 count() const { return u64(width_) * height_ * channels_; }

    u32 width_ = 0;
    u32 height_ = 0;
    u32 channels_ = 0;
    Vector<V> values_;
};

using FloatImageMap = ImageMap<f32, FloatComponentValueTraits>;

/// Floats that several threads hold: an image in the making. It doesn't guard its content.
class FloatBuffer : public ThreadSafeRefCounted {
public:
    FloatBuffer() = default;
    FloatBuffer(u32 width, u32 height, u32 channels) { resize(width, height, channels); }

    /// All values are zero then.
    void resize(u32 width, u32 height, u32 channels);

    u32 getWidth() const { return width_; }
    u32 getHeight() const { return height_; }
    u32 numChannels() const { return channels_; }
    f32* pixel(u32 x, u32 y) { return values_.data() + (u64(y) * width_ + x) * channels_; }
    const f32* pixel(u32 x, u32 y) const { return values_.data() + (u64(y) * width_ + x) * channels_; }
    Vector<f32>& values() { return values_; }
    const Vector<f32>& values() const { return values_; }

private:
    u32 width_ = 0;
    u32 height_ = 0;
    u32 channels_ = 0;
    Vector<f32> values_;
};

/// Bytes that several threads hold: a display image. It doesn't guard its content.
class UInt8Buffer : public ThreadSafeRefCounted {
public:
    UInt8Buffer() = default;
    UInt8Buffer(u32 width, u32 height, u32 bytes_per_pixel) { resize(width, height, bytes_per_pixel); }

    /// All bytes are zero then.
    void resize(u32 width, u32 height, u32 bytes_per_pixel) {
        Vector<unsigned char> bytes(u64(width) * height * bytes_per_pixel, 0);
        width_ = width;
        height_ = height;
        bytes_per_pixel_ = bytes_per_pixel;
        bytes_ = std::move(bytes);
    }

    u32 getWidth() const { return width_; }
    u32 getHeight() const { return height_; }
    u32 bytesPerPixel() const { return bytes_per_pixel_; }
    unsigned char* row(u32 y) { return bytes_.data() + u64(y) * width_ * bytes_per_pixel_; }
    const unsigned char* row(u32 y) const { return bytes_.data() + u64(y) * width_ * bytes_per_pixel_; }
    Vector<unsigned char>& bytes() { return bytes_; }

private:
    u32 width_ = 0;
    u32 height_ = 0;
    u32 bytes_per_pixel_ = 0;
    Vector<unsigned char> bytes_;
};

/// The layers of a render, before tone mapping, and an optional alpha channel; the content of a .qzi file.
class MasterBuffer {
public:
    struct Layer {
        Image image;
        String name;
    };

    /// The layer set: u32 version, then chunks, each u32 100 and its name. "layers" holds their u32 count,
    /// then the name and the image record of each; "alpha", which is there when has_alpha is set, a map
    /// record. u32 101 ends it.
    void writeTo(BinaryWriter& writer) const;

    /// Replaces this set, or leaves it as it was and throws QuenzaException: "Unknown version <v>,
    /// expected 1.", "Unknown chunk type '<t>'", "Unknown channel name '<n>'", "Too many layers." above
    /// MAX_LAYERS, and the texts of BinaryReader. No image takes memory that the stream doesn't fill.
    void readFrom(BinaryReader& reader);

    static constexpr u32 MAX_LAYERS = 1000;

    Vector<Layer> layers;
    bool has_alpha = false;
    FloatImageMap alpha;
};

/// Throws QuenzaException, in this order, "Num layers differs", "Alpha channel presence differs" or "Alpha
/// channel dimensions differ".
void checkSameForm(const MasterBuffer& a, const MasterBuffer& b);

} // namespace Quenza
