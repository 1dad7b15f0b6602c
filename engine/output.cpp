// SPDX-License-Identifier: MIT
#include "engine/output.h"

#include "foundation/binary_stream.h"
#include "foundation/image_buffers.h"
#include "foundation/safe_file.h"

#include <ImfChannelList.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfIO.h>
#include <ImfOutputFile.h>
#include <png.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>

namespace engine {

namespace {

std::string writeBytes(const std::string& path, const void* data, size_t size) {
    Quenza::SafeFile file(path, Quenza::SafeFile::Mode::BINARY);
    file.write(data, size);
    return file.commit() ? std::string() : file.failureReason().toStdString();
}

/// An EXR is written back and forth (its table of offsets comes last), so it's gathered in memory.
class MemoryOStream : public Imf::OStream {
public:
    MemoryOStream() : OStream("image.exr") {}

    void write(const char c[], int n) override {
        const size_t end = position_ + size_t(n);
        if (end > bytes_.size())
            bytes_.resize(end);
        bytes_.replace(position_, size_t(n), c, size_t(n));
        position_ = end;
    }
    uint64_t tellp() override { return position_; }
    void seekp(uint64_t position) override { position_ = position; }

    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
    size_t position_ = 0;
};

void encodeEXR(const FloatImage& image, MemoryOStream& stream) {
    Imf::Header header(int(image.width), int(image.height));
    header.compression() = Imf::ZIP_COMPRESSION;
    Imf::FrameBuffer frame;
    constexpr size_t PIXEL = 3 * sizeof(float);
    size_t offset = 0;
    for (const char* channel : {"R", "G", "B"}) {
        header.channels().insert(channel, Imf::Channel(Imf::FLOAT));
        char* const base = reinterpret_cast<char*>(const_cast<float*>(image.rgb.data() + offset++));
        frame.insert(channel, Imf::Slice(Imf::FLOAT, base, PIXEL, PIXEL * image.width));
    }
    Imf::OutputFile file(stream, header);
    file.setFrameBuffer(frame);
    file.writePixels(int(image.height));
}

} // namespace

std::string writePNG(const std::string& path, Quenza::u32 width, Quenza::u32 height,
                     const std::vector<unsigned char>& rgb8) {
    if (rgb8.size() != size_t(width) * height * 3)
        return "the image's size is wrong";
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGB;
    png_alloc_size_t size = 0;
    if (!png_image_write_get_memory_size(image, size, 0, rgb8.data(), 0, nullptr))
        return image.message;
    std::vector<char> bytes(size);
    if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, rgb8.data(), 0, nullptr))
        return image.message;
    return writeBytes(path, bytes.data(), size);
}

std::string writeEXR(const std::string& path, const FloatImage& image) {
    MemoryOStream stream;
    try {
        encodeEXR(image, stream);
    } catch (const std::exception& e) {
        return e.what();
    }
    return writeBytes(path, stream.bytes().data(), stream.bytes().size());
}

std::string writeQZI(const std::string& path, const std::vector<FloatImage>& layers,
                     const std::vector<std::string>& names) {
    Quenza::MasterBuffer buffer;
    buffer.layers.resize(layers.size());
    for (size_t i = 0; i < layers.size(); ++i) {
        Quenza::MasterBuffer::Layer& layer = buffer.layers[i];
        layer.name = i < names.size() ? names[i] : std::string();
        layer.image = Quenza::Image(layers[i].width, layers[i].height);
        std::copy(layers[i].rgb.begin(), layers[i].rgb.end(), layer.image.pixels().begin());
    }
    Quenza::SafeFile file(path, Quenza::SafeFile::Mode::BINARY);
    Quenza::SafeFileWriter writer(file);
    buffer.writeTo(writer);
    writer.flush();
    return file.commit() ? std::string() : file.failureReason().toStdString();
}

} // namespace engine
