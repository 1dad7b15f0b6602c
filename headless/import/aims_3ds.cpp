// SPDX-License-Identifier: MIT
#include "headless/import/aims_3ds.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <vector>

namespace headless {

namespace {

using Bytes = std::span<const uint8_t>;

enum ChunkId : uint16_t {
    MAIN = 0x4D4D,
    EDITOR = 0x3D3D,
    NAMED_OBJECT = 0x4000,
    /// Place, target, roll in degrees, lens: eight floats.
    CAMERA = 0x4700,
    /// Place, then chunks.
    LIGHT = 0x4600,
    /// Target and cones: five floats.
    SPOT = 0x4610,
};

/// Kind (2 bytes) and length with these bytes (4).
constexpr size_t CHUNK_HEAD = 6;

uint32_t littleEndian(Bytes bytes) {
    uint32_t number = 0;
    for (size_t i = bytes.size(); i > 0; --i) {
        number = number << 8 | bytes[i - 1];
    }
    return number;
}

float floatAt(Bytes bytes, size_t index) {
    return std::bit_cast<float>(littleEndian(bytes.subspan(index * 4, 4)));
}

aiVector3D vectorAt(Bytes bytes, size_t index) {
    return {floatAt(bytes, index), floatAt(bytes, index + 1), floatAt(bytes, index + 2)};
}

/// Calls `visit` with kind and content of each chunk, up to one that doesn't fit.
template <class Visit>
void forEachChunk(Bytes bytes, const Visit& visit) {
    while (bytes.size() >= CHUNK_HEAD) {
        const size_t length = littleEndian(bytes.subspan(2, 4));
        if (length < CHUNK_HEAD || length > bytes.size()) {
            return;
        }
        visit(littleEndian(bytes.first(2)), bytes.subspan(CHUNK_HEAD, length - CHUNK_HEAD));
        bytes = bytes.subspan(length);
    }
}

bool isDirection(const aiVector3D& v) {
    const float square = v * v;
    return std::isfinite(square) && square > 0.0f;
}

class AimReader {
public:
    void readObject(Bytes object) {
        size_t end = 0;
        while (end < object.size() && object[end] != 0) {
            ++end;
        }
        if (end == object.size()) {
            return;
        }
        const std::string name(object.begin(), object.begin() + static_cast<std::ptrdiff_t>(end));
        forEachChunk(object.subspan(end + 1), [&](uint32_t kind, Bytes content) {
            if (kind == CAMERA && content.size() >= 32) {
                const float lens = floatAt(content, 7);
                add(name, {vectorAt(content, 3) - vectorAt(content, 0),
                           std::isfinite(lens) && lens > 0.0f ? lens : 0.0f});
            } else if (kind == LIGHT && content.size() >= 12) {
                readSpot(name, content);
            }
        });
    }

    std::map<std::string, Aim> aims;

private:
    void add(const std::string& name, const Aim& aim) {
        if (isDirection(aim.toTarget)) {
            aims.emplace(name, aim);
        }
    }

    void readSpot(const std::string& name, Bytes light) {
        forEachChunk(light.subspan(12), [&](uint32_t kind, Bytes content) {
            if (kind == SPOT && content.size() >= 12) {
                add(name, {vectorAt(content, 0) - vectorAt(light, 0)});
            }
        });
    }
};

std::vector<uint8_t> readBytes(const std::string& file) {
    std::ifstream in(std::filesystem::path(reinterpret_cast<const char8_t*>(file.c_str())), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace

std::map<std::string, Aim> readAims3DS(const std::string& file) {
    const std::vector<uint8_t> bytes = readBytes(file);
    AimReader reader;
    forEachChunk(bytes, [&](uint32_t main, Bytes contents) {
        if (main != MAIN) {
            return;
        }
        forEachChunk(contents, [&](uint32_t part, Bytes objects) {
            if (part != EDITOR) {
                return;
            }
            forEachChunk(objects, [&](uint32_t kind, Bytes object) {
                if (kind == NAMED_OBJECT) {
                    reader.readObject(object);
                }
            });
        });
    });
    return std::move(reader.aims);
}

} // namespace headless
