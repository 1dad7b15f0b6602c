// SPDX-License-Identifier: MIT
#include "materials/material_enabling.h"

#include "host/baselist.h"
#include "host/ids.h"
#include "materials/channels.h"
#include "materials/spectrum_numbers.h"

namespace {

bool isOfTexture(const Channel& entry, int32_t id) {
    return id == entry.textureGamma || id == entry.a || id == entry.b || id == entry.c;
}

bool isOfConstant(const Channel& entry, int32_t id) {
    switch (entry.constant) {
    case ConstantForm::COLOUR:
        return id == entry.colour || id == entry.brightness || id == entry.gamma;
    case ConstantForm::VALUE:
        return id == entry.value;
    case ConstantForm::SPECTRUM: {
        const SpectrumNumbers numbers = channelSpectrum(entry.base);
        return id >= numbers.type && id <= numbers.uniform;
    }
    case ConstantForm::NONE:
        break;
    }
    return false;
}

} // namespace

bool isMaterialParameterEnabled(const BaseList2D& material, int32_t id) {
    const BaseContainer* const data = material.GetDataInstance();
    if (!data) {
        return false;
    }
    const auto hasShader = [&](int32_t link) {
        return data->GetLink(link, material.GetDocument(), Xbase) != nullptr;
    };
    for (const Channel& entry : channels()) {
        if (isOfTexture(entry, id)) {
            return hasShader(entry.shader);
        }
        if (isOfConstant(entry, id)) {
            return !hasShader(entry.shader);
        }
    }
    switch (id) {
    case MAT_MEDIUM_IOR:
    case MAT_MEDIUM_CAUCHY_B:
        return data->GetLong(MAT_KIND, MAT_KIND_DIFFUSE) != MAT_KIND_DIFFUSE_TRANSMITTER;
    case MAT_BLEND_STEP:
        return hasShader(MAT_BLEND_SHADER);
    default:
        return true;
    }
}
