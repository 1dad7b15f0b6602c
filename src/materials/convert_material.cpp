// SPDX-License-Identifier: MIT
#include "materials/convert_material.h"

#include "host/ids.h"
#include "host/material.h"
#include "materials/material_update.h"
#include "shared/parameter_ids.h"

namespace {

/// The exponent of a lobe from a blurriness of 0 (sharp) to 1.
float exponentOfBlur(float blur) {
    return 5025.0f - blur * 100.0f * 50.0f;
}

/// Between the containers of two materials: the standard one and the plug-in's.
class Conversion {
public:
    Conversion(BaseMaterial& target, const BaseMaterial& source)
        : target_(target), source_(source), to_(*target.GetDataInstance()), from_(*source.GetDataInstance()) {
    }

    void run() {
        if (source_.GetChannelState(CHANNEL_TRANSPARENCY)) {
            convertTransparency();
        } else {
            convertOpaque();
        }
        convertLuminance();
        convertRelief();
        convertSpecularColour();
        convertAlpha();
        updateMaterial(&target_);
    }

private:
    void setKind(int32_t kind) { to_.SetLong(MAT_KIND, kind); }
    bool isKind(int32_t kind) const { return to_.GetLong(MAT_KIND) == kind; }

    /// The exponent of a converted lobe. A texture of it ends up with 15 times its value, whatever the
    /// exponent.
    void setExponent(float exponent) {
        to_.SetBool(MAT_EXPONENT_ENABLED, true);
        to_.SetReal(MAT_EXPONENT, exponent);
        to_.SetReal(MAT_EXPONENT_B, 15.0f);
    }

    void convertTransparency() {
        const float blur = from_.GetReal(MATERIAL_TRANSPARENCY_DISPERSION);
        if (blur > 0.0f) {
            setKind(MAT_KIND_GLOSSY_TRANSPARENT);
            setExponent(exponentOfBlur(blur));
        } else {
            setKind(MAT_KIND_SPECULAR);
        }
        to_.SetReal(MAT_MEDIUM_IOR, from_.GetReal(MATERIAL_TRANSPARENCY_REFRACTION));
        to_.SetLong(MAT_ABSORPTION_TYPE, MAT_SPECTRUM_RGB);
        to_.SetVector(MAT_ABSORPTION_COLOUR, from_.GetVector(MATERIAL_TRANSPARENCY_COLOR));
        to_.SetReal(MAT_ABSORPTION_SCALE, from_.GetReal(MATERIAL_TRANSPARENCY_BRIGHTNESS, 1.0f) * 10.0f);
    }

    void convertOpaque() {
        if (source_.GetChannelState(CHANNEL_REFLECTION)) {
            const float brightness = from_.GetReal(MATERIAL_REFLECTION_BRIGHTNESS);
            const float blur = from_.GetReal(MATERIAL_REFLECTION_DISPERSION);
            setKind(MAT_KIND_PHONG);
            to_.SetReal(MAT_PHONG_IOR, 1.0f + brightness * brightness * 10.0f);
            setExponent(blur > 0.0f ? exponentOfBlur(blur) : 100000.0f);
        } else if (source_.GetChannelState(CHANNEL_SPECULAR)) {
            const float width = from_.GetReal(MATERIAL_SPECULAR_WIDTH) * 100.0f;
            setKind(MAT_KIND_PHONG);
            to_.SetReal(MAT_PHONG_IOR,
                        1.0f + from_.GetReal(MATERIAL_SPECULAR_HEIGHT) * 100.0f * 0.0070422534f);
            setExponent(width * width * 0.025f);
        } else if (from_.GetLong(MATERIAL_ILLUMINATION_MODEL) == MATERIAL_ILLUMINATION_MODEL_ORENNAYAR) {
            setKind(MAT_KIND_ORENNAYAR);
        } else {
            setKind(MAT_KIND_DIFFUSE);
        }
        to_.SetVector(MAT_ALBEDO_COLOUR, from_.GetVector(MATERIAL_COLOR_COLOR));
        to_.SetReal(MAT_ALBEDO_BRIGHTNESS, from_.GetReal(MATERIAL_COLOR_BRIGHTNESS));
        takeShader(MATERIAL_COLOR_SHADER, MAT_ALBEDO_SHADER);
    }

    void convertLuminance() {
        if (!source_.GetChannelState(CHANNEL_LUMINANCE)) {
            return;
        }
        to_.SetBool(MAT_EMISSION_ENABLED, true);
        to_.SetLong(MAT_EMISSION_TYPE, MAT_SPECTRUM_RGB);
        to_.SetVector(MAT_EMISSION_COLOUR, from_.GetVector(MATERIAL_LUMINANCE_COLOR));
        to_.SetReal(MAT_EMISSION_BRIGHTNESS, from_.GetReal(MATERIAL_LUMINANCE_BRIGHTNESS));
        takeShader(MATERIAL_LUMINANCE_SHADER, MAT_EMISSION_SHADER);
    }

    void convertRelief() {
        if (source_.GetChannelState(CHANNEL_BUMP) && takeShader(MATERIAL_BUMP_SHADER, MAT_BUMP_SHADER)) {
            to_.SetBool(MAT_BUMP_ENABLED, true);
            to_.SetReal(MAT_BUMP_B, from_.GetReal(MATERIAL_BUMP_STRENGTH) * 0.01f);
        }
        if (source_.GetChannelState(CHANNEL_NORMAL) &&
            takeShader(MATERIAL_NORMAL_SHADER, MAT_NORMAL_MAP_SHADER)) {
            to_.SetBool(MAT_NORMAL_MAP_ENABLED, true);
        }
        if (source_.GetChannelState(CHANNEL_DISPLACEMENT) &&
            takeShader(MATERIAL_DISPLACEMENT_SHADER, MAT_DISPLACEMENT_SHADER)) {
            to_.SetBool(MAT_DISPLACEMENT_ENABLED, true);
            to_.SetReal(MAT_DISPLACEMENT_B, from_.GetReal(MATERIAL_DISPLACEMENT_HEIGHT) * 0.01f);
        }
    }

    void convertSpecularColour() {
        if ((isKind(MAT_KIND_PHONG) || isKind(MAT_KIND_GLOSSY_TRANSPARENT)) &&
            source_.GetChannelState(CHANNEL_SPECULARCOLOR)) {
            takeShader(MATERIAL_SPECULAR_SHADER, MAT_EXPONENT_SHADER);
        }
    }

    void convertAlpha() {
        if (isKind(MAT_KIND_SPECULAR) || isKind(MAT_KIND_GLOSSY_TRANSPARENT) ||
            !source_.GetChannelState(CHANNEL_ALPHA) || !takeShader(MATERIAL_ALPHA_SHADER, MAT_BLEND_SHADER)) {
            return;
        }
        to_.SetBool(MAT_BLEND_ENABLED, true);
        if (!from_.GetBool(MATERIAL_ALPHA_INVERT)) {
            // The mask turns round, as alpha shows what it covers and the blend hides it. Whole numbers,
            // which documents have kept here ever since.
            to_.SetLong(MAT_BLEND_B, -1);
            to_.SetLong(MAT_BLEND_C, 1);
        }
    }

    /// Puts a copy of the shader that the source links into the target. False when there is none.
    bool takeShader(int32_t fromId, int32_t toId) {
        const BaseList2D* const linked = from_.GetLink(fromId, nullptr, Xbase);
        if (!linked) {
            return false;
        }
        auto* const copy = static_cast<BaseShader*>(linked->GetClone());
        if (!copy) {
            return false;
        }
        target_.InsertShader(copy);
        to_.SetLink(toId, copy);
        return true;
    }

    BaseMaterial& target_;
    const BaseMaterial& source_;
    BaseContainer& to_;
    const BaseContainer& from_;
};

} // namespace

bool convertMaterial(BaseMaterial* target, BaseMaterial* source) {
    if (!target || !source || !source->GetDocument() || !source->GetDataInstance()) {
        return false;
    }
    target->SetName(source->GetName());
    if (source->GetType() == Mmaterial) {
        Conversion(*target, *source).run();
    }
    return true;
}
