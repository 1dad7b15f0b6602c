// SPDX-License-Identifier: MIT
#include "headless/import/aims_3ds.h"
#include "headless/import/fixture_import.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"
#include "headless/model/tag.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace headless {

namespace {

constexpr int32_t LIGHT_TAG = 1020892;
/// Choice of the tag's LIGHT_EMISSION_SCALE_MEASURE.
constexpr int32_t LUMINOUS_INTENSITY = 1304;

std::optional<int32_t> typeOf(aiLightSourceType type) {
    switch (type) {
    case aiLightSource_POINT:
        return LIGHT_TYPE_OMNI;
    case aiLightSource_SPOT:
        return LIGHT_TYPE_SPOT;
    case aiLightSource_DIRECTIONAL:
        return LIGHT_TYPE_DISTANT;
    case aiLightSource_AREA:
        return LIGHT_TYPE_AREA;
    default:
        return std::nullopt;
    }
}

/// A colour whose largest part is at most 1, and the factor taken out of it.
struct Radiance {
    Vector colour{1.0f, 1.0f, 1.0f};
    double factor = 1.0;
};

/// Of a colour that has the factor in it; `always` takes it out of dark colours as well.
Radiance radianceOf(const aiColor3D& c, bool always) {
    Radiance radiance;
    const float largest = std::max({c.r, c.g, c.b});
    if (!std::isfinite(c.r) || !std::isfinite(c.g) || !std::isfinite(c.b) ||
        std::min({c.r, c.g, c.b}) < 0.0f) {
        return radiance;
    }
    if (largest > 1.0f || (always && largest > 0.0f)) {
        radiance.factor = static_cast<double>(largest);
        radiance.colour = {c.r / largest, c.g / largest, c.b / largest};
    } else {
        radiance.colour = {c.r, c.g, c.b};
    }
    return radiance;
}

/// Assimp leaves the half angles of glTF as they are, and gives full ones for other formats.
void setCones(Object& light, const aiLight& model, bool isGLTF) {
    const auto set = [&light, isGLTF](int32_t id, float angle) {
        if (std::isfinite(angle) && angle >= 0.0f) {
            const float full = std::min(isGLTF ? 2.0f * angle : angle, std::numbers::pi_v<float>);
            light.setParameter(id, GeData(static_cast<double>(full)));
        }
    };
    set(LIGHT_DETAILS_INNERANGLE, model.mAngleInnerCone);
    set(LIGHT_DETAILS_OUTERANGLE, model.mAngleOuterCone);
}

void setArea(Object& light, const aiLight& model, double unit) {
    const auto set = [&light, unit](int32_t id, float size) {
        if (std::isfinite(size) && size > 0.0f) {
            light.setParameter(id, GeData(static_cast<double>(size) * unit));
        }
    };
    set(LIGHT_AREADETAILS_SIZEX, model.mSize.x);
    set(LIGHT_AREADETAILS_SIZEY, model.mSize.y);
}

/// Colours of glTF are linear, the power of its point and spot lights is in candela.
void addPhotometricTag(Object& light, const Radiance& radiance) {
    std::unique_ptr<Tag> tag = createTag(LIGHT_TAG);
    if (!tag) {
        return;
    }
    const auto set = [&tag](const char* name, const GeData& value) {
        if (const std::optional<Parameter> parameter = findParameter(LIGHT_TAG, name)) {
            tag->setParameter(parameter->id, value);
        }
    };
    set("LIGHT_RGB_COLOUR", GeData(radiance.colour));
    set("LIGHT_RGB_GAMMA", GeData(1.0));
    set("LIGHT_USE_EMISSION_SCALE", GeData(true));
    set("LIGHT_EMISSION_SCALE_MEASURE", GeData(LUMINOUS_INTENSITY));
    set("LIGHT_EMISSION_SCALE_VALUE", GeData(radiance.factor));
    light.appendTag(std::move(tag));
}

} // namespace

std::unique_ptr<Object> importLight(const aiLight& model, const Aim* aim, bool isGLTF,
                                    const ModelSpace& space) {
    const std::optional<int32_t> type = typeOf(model.mType);
    if (!type) {
        return nullptr;
    }
    std::unique_ptr<Object> light = createObject(Olight);
    light->setParameter(LIGHT_TYPE, GeData(*type));
    const bool hasCandela = isGLTF && (*type == LIGHT_TYPE_OMNI || *type == LIGHT_TYPE_SPOT);
    const Radiance radiance = radianceOf(model.mColorDiffuse, hasCandela);
    light->setParameter(LIGHT_COLOR, GeData(radiance.colour));
    if (hasCandela) {
        addPhotometricTag(*light, radiance);
    } else {
        light->setParameter(LIGHT_BRIGHTNESS, GeData(radiance.factor));
    }
    if (*type == LIGHT_TYPE_SPOT) {
        setCones(*light, model, isGLTF);
    } else if (*type == LIGHT_TYPE_AREA) {
        setArea(*light, model, space.unit());
    }
    light->matrix = aim ? aimedMatrix({}, aim->toTarget, {0.0f, 0.0f, 1.0f}, space)
                        : aimedMatrix(model.mPosition, model.mDirection, model.mUp, space);
    return light;
}

} // namespace headless
