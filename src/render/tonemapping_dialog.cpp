// SPDX-License-Identifier: MIT
#include "render/tonemapping_dialog.h"

#include "c4d_symbols.h"
#include "export/response_functions.h"
#include "scene/scene_node_tonemapping.h"
#include "shared/plugin_state.h"
#include "shared/text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

// Gadgets of the light layers: the number of the layer is added.
constexpr int32_t LAYER_COLOUR = 6660000;
constexpr int32_t LAYER_ENABLED = 7660000;
constexpr int32_t LAYER_NAME = 8660000;
constexpr int32_t LAYER_GROUP = 9660000;
constexpr int32_t LAYER_COLUMNS = 4;
constexpr float MAX_BRIGHTNESS = 5.0f;

struct NumberField {
    int32_t id;
    float TonemappingChoice::*value;
};
constexpr NumberField NUMBERS[] = {
    {IDC_TONEMAP_PRE_SCALE, &TonemappingChoice::preScale},
    {IDC_TONEMAP_POST_SCALE, &TonemappingChoice::postScale},
    {IDC_TONEMAP_BURN, &TonemappingChoice::burn},
    {IDC_TONEMAP_SCALE, &TonemappingChoice::scale},
    {IDC_TONEMAP_FILM_ISO, &TonemappingChoice::filmIso},
    {IDC_TONEMAP_EV_ADJUST, &TonemappingChoice::evAdjust},
};

struct Method {
    int32_t choice;
    uint32_t type;
};
constexpr Method METHODS[] = {
    {IDC_TONEMAP_REINHARD, Quenza::SceneNodeTonemapping::REINHARD},
    {IDC_TONEMAP_LINEAR, Quenza::SceneNodeTonemapping::LINEAR},
    {IDC_TONEMAP_CAMERA, Quenza::SceneNodeTonemapping::CAMERA},
};

/// A file of the list without its suffix, which all have.
String responseFunctionLabel(const char* fileName) {
    const std::string_view name(fileName);
    return String(name.substr(0, name.rfind('.')));
}

} // namespace

bool TonemappingDialog::CreateLayout() {
    if (!LoadDialogResource(IDD_TONEMAPPING)) {
        return false;
    }
    bool isComplete = true;
    for (int32_t i = 0; const char* const name = responseFunctionName(i); ++i) {
        isComplete &= AddChild(IDC_TONEMAP_RESPONSE, i, responseFunctionLabel(name));
    }
    return isComplete;
}

bool TonemappingDialog::InitValues() {
    const TonemappingChoice choice = readTonemappingChoice();
    const auto method = std::ranges::find(METHODS, choice.method, &Method::type);
    bool isComplete =
        SetValue(IDC_TONEMAP_METHOD,
                 GeData(method != std::end(METHODS) ? method->choice : int32_t{IDC_TONEMAP_REINHARD}));
    for (const NumberField& field : NUMBERS) {
        isComplete &= SetValue(field.id, GeData(choice.*field.value));
    }
    isComplete &= SetValue(IDC_TONEMAP_RESPONSE, GeData(choice.responseFunction));
    isComplete &= SetValue(IDC_WHITE_POINT, GeData(entryOfWhitePoint(choice.whitePoint)));
    isComplete &= showWhitePoint(choice.whitePoint);
    rebuildLayers();
    return isComplete;
}

int32_t TonemappingDialog::Message(const BaseContainer& message, BaseContainer& result) {
    if (isLayerListStale()) {
        rebuildLayers();
    }
    return GeDialog::Message(message, result);
}

bool TonemappingDialog::Command(int32_t id, const BaseContainer& /*message*/) {
    if (id == IDC_WHITE_POINT) {
        showWhitePoint(whitePointOfEntry(readLong(IDC_WHITE_POINT)));
    } else if (id == IDC_WHITE_POINT_X || id == IDC_WHITE_POINT_Y) {
        SetValue(IDC_WHITE_POINT, GeData(int32_t{0}));
    }
    applyTonemapping({readChoice(), readWeights()});
    return true;
}

bool TonemappingDialog::showWhitePoint(const Chromaticity& white) {
    constexpr float MINIMUM = 0.24f;
    constexpr float MAXIMUM = 0.46f;
    constexpr float STEP = 0.01f;
    return SetReal(IDC_WHITE_POINT_X, white.x, MINIMUM, MAXIMUM, STEP) &&
           SetReal(IDC_WHITE_POINT_Y, white.y, MINIMUM, MAXIMUM, STEP);
}

void TonemappingDialog::rebuildLayers() {
    std::vector<LayerWeight> layers = takeLayerWeights();
    if (pluginState().isRTEdition) {
        layers.clear();
    }
    layerCount_ = static_cast<int32_t>(layers.size());
    LayoutFlushGroup(IDC_LAYERS);
    if (!layers.empty()) {
        ScrollGroupBegin(IDC_LAYERS_SCROLL);
        GroupBegin(LAYER_GROUP, LAYER_COLUMNS, String());
        for (int32_t i = 0; i < layerCount_; ++i) {
            addLayerRow(i, layers[static_cast<size_t>(i)]);
        }
        GroupEnd();
        GroupEnd();
    }
    GroupEnd();
    LayoutChanged(IDC_LAYERS);
}

/// A layer that is new to the dialog is on, white and of brightness 1.
void TonemappingDialog::addLayerRow(int32_t index, const LayerWeight& layer) {
    const Quenza::Vec3d& weight = layer.weight;
    const double brightness = std::max({weight.x, weight.y, weight.z});
    const bool isOn = brightness > 0.0;
    const Vector colour =
        isOn ? Vector(static_cast<float>(weight.x / brightness), static_cast<float>(weight.y / brightness),
                      static_cast<float>(weight.z / brightness))
             : Vector(1.0f, 1.0f, 1.0f);
    AddStaticText(LAYER_NAME + index, 0, 0, toHostString(layer.name));
    AddCheckbox(LAYER_ENABLED + index, 0, 0, "Enabled");
    AddColorField(LAYER_COLOUR + index, 0, 0);
    // The last column, so that each layer has a row of its own.
    AddStaticText(0, 0, 0, String());
    SetValue(LAYER_ENABLED + index, GeData(isOn));
    SetColorField(LAYER_COLOUR + index, colour, isOn ? static_cast<float>(brightness) : 1.0f, MAX_BRIGHTNESS);
}

TonemappingChoice TonemappingDialog::readChoice() const {
    TonemappingChoice choice{};
    const auto method = std::ranges::find(METHODS, readLong(IDC_TONEMAP_METHOD), &Method::choice);
    choice.method =
        method != std::end(METHODS) ? method->type : uint32_t{Quenza::SceneNodeTonemapping::REINHARD};
    for (const NumberField& field : NUMBERS) {
        choice.*field.value = readReal(field.id);
    }
    choice.responseFunction = readLong(IDC_TONEMAP_RESPONSE);
    choice.whitePoint = {readReal(IDC_WHITE_POINT_X), readReal(IDC_WHITE_POINT_Y)};
    return choice;
}

std::vector<Quenza::Vec3d> TonemappingDialog::readWeights() const {
    std::vector<Quenza::Vec3d> weights;
    for (int32_t i = 0; i < layerCount_; ++i) {
        Vector colour;
        float brightness = 0.0f;
        if (readLong(LAYER_ENABLED + i) != 0) {
            GetColorField(LAYER_COLOUR + i, colour, brightness);
        }
        const Vector weight = colour * brightness;
        weights.push_back({double(weight.x), double(weight.y), double(weight.z)});
    }
    return weights;
}

int32_t TonemappingDialog::readLong(int32_t id) const {
    GeData value;
    return GetValue(id, value) ? value.GetLong() : 0;
}

float TonemappingDialog::readReal(int32_t id) const {
    GeData value;
    return GetValue(id, value) ? value.GetReal() : 0.0f;
}
