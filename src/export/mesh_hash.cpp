// SPDX-License-Identifier: MIT
#include "export/mesh_hash.h"

#include "host/general.h"
#include "host/ids.h"

#include <bit>

namespace {

class Hash {
public:
    void add(const void* data, size_t byteCount) { value_ = CalcCRC32(data, byteCount, value_); }
    template <typename Value>
    void add(const Value& value) {
        add(&value, sizeof value);
    }
    uint32_t value() const { return value_; }

private:
    uint32_t value_ = 0;
};

constexpr float DEFAULT_PHONG_ANGLE = 89.0f;

void addTextureTag(Hash& hash, const TextureTag* tag) {
    const BaseContainer* const data = tag->GetDataInstance();
    constexpr uint32_t SIGN = 0x80000000u;
    hash.add(std::bit_cast<uint32_t>(data->GetReal(TEXTURETAG_OFFSETX)) ^ SIGN);
    hash.add(std::bit_cast<uint32_t>(data->GetReal(TEXTURETAG_OFFSETY)) ^ SIGN);
    hash.add(data->GetReal(TEXTURETAG_LENGTHX));
    hash.add(data->GetReal(TEXTURETAG_LENGTHY));
    const int32_t projection = data->GetLong(TEXTURETAG_PROJECTION);
    hash.add(projection);
    if (projection != P_UVW) {
        hash.add(tag->GetMl());
    }
}

} // namespace

uint32_t meshHash(const PolygonObject* object, const std::vector<TextureTag*>& tags, bool isLightGeometry,
                  float sceneScale) {
    Hash hash;
    if (const auto* const uvw = static_cast<const UVWTag*>(object->GetTag(Tuvw))) {
        hash.add(uvw->GetDataR(), static_cast<size_t>(uvw->GetDataCount()) * sizeof(UVWStruct));
    }
    hash.add(object->GetPointR(), static_cast<size_t>(object->GetPointCount()) * sizeof(Vector));
    hash.add(object->GetPolygonR(), static_cast<size_t>(object->GetPolygonCount()) * sizeof(CPolygon));
    for (const TextureTag* const tag : tags) {
        addTextureTag(hash, tag);
    }
    if (const BaseTag* const phong = object->GetTag(Tphong)) {
        const BaseContainer* const data = phong->GetDataInstance();
        hash.add(int32_t(data->GetBool(PHONGTAG_PHONG_ANGLELIMIT)));
        hash.add(int32_t(data->GetBool(PHONGTAG_PHONG_USEEDGES)));
        hash.add(data->GetReal(PHONGTAG_PHONG_ANGLE, DEFAULT_PHONG_ANGLE));
    }
    hash.add(int32_t(isLightGeometry));
    hash.add(sceneScale);
    return hash.value();
}
