// SPDX-License-Identifier: MIT
#include "render/tonemapping_choice.h"

#include "c4d_symbols.h"
#include "export/response_functions.h"
#include "export/tonemapping_export.h"
#include "foundation/mutex.h"
#include "host/basecontainer.h"
#include "render/changed_mark.h"
#include "render/render_state.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_tonemapping.h"

#include <algorithm>
#include <utility>

using namespace Quenza;

namespace {

/// The settings of the active render, or null. Call it with the lock of the render's state.
SceneNodeRenderSettings* activeSettings() {
    const Ref<SceneNodeRoot>& root = renderState().activeRoot;
    return root ? static_cast<SceneNodeRenderSettings*>(root->getRenderSettingsPointer()) : nullptr;
}

void takeOver(TonemappingChoice& choice, const SceneNodeTonemapping& node) {
    choice.method = node.tonemap_type;
    choice.scale = float(node.scale);
    choice.preScale = float(node.pre_scale);
    choice.postScale = float(node.post_scale);
    choice.burn = float(node.burn);
    choice.filmIso = float(node.film_iso);
    choice.evAdjust = float(node.ev_adjust);
    choice.responseFunction = responseFunctionIndex(node.response_function_path);
}

void writeTonemapping(SceneNodeTonemapping& node, const TonemappingChoice& choice) {
    node.tonemap_type = choice.method;
    node.scale = double(choice.scale);
    node.pre_scale = double(choice.preScale);
    node.post_scale = double(choice.postScale);
    node.burn = double(choice.burn);
    if (responseFunctionName(choice.responseFunction)) {
        node.response_function_path = responseFunctionPath(choice.responseFunction);
    }
    node.film_iso = double(choice.filmIso);
    node.ev_adjust = double(choice.evAdjust);
}

void writeSettings(SceneNodeRenderSettings& settings, const TonemappingChange& change) {
    const Chromaticity& white = change.choice.whitePoint;
    settings.setWhitePoint(new WhitePoint(double(white.x), double(white.y)));
    const u64 count = std::min<u64>(settings.getNumLayers(), change.weights.size());
    for (u64 i = 0; i < count; ++i) {
        if (const Ref<LayerSetting>& layer = settings.getLayer(i)) {
            layer->xyz = change.weights[i];
        }
    }
}

} // namespace

TonemappingChoice readTonemappingChoice() {
    TonemappingChoice choice{};
    const Ref<SceneNodeTonemapping> preset = new SceneNodeTonemapping;
    exportTonemapping(preset, BaseContainer());
    takeOver(choice, *preset);
    choice.whitePoint = whitePointOfEntry(IDC_WHITE_POINT_D65);

    Lock stateLock(renderStateMutex());
    const Ref<SceneNodeRoot>& root = renderState().activeRoot;
    if (!root) {
        return choice;
    }
    if (const auto& pending = renderState().pendingTonemapping) {
        return pending->choice;
    }
    if (const SceneNode* const node = root->getToneMappingPointer()) {
        takeOver(choice, static_cast<const SceneNodeTonemapping&>(*node));
    }
    const SceneNodeRenderSettings* const settings = activeSettings();
    if (settings && settings->white_point) {
        choice.whitePoint = {float(settings->white_point->x), float(settings->white_point->y)};
    }
    return choice;
}

std::vector<LayerWeight> takeLayerWeights() {
    std::vector<LayerWeight> layers;
    Lock stateLock(renderStateMutex());
    renderState().tonemapDialogStale = 0;
    const SceneNodeRenderSettings* const settings = activeSettings();
    if (!settings) {
        return layers;
    }
    for (const Ref<LayerSetting>& layer : settings->layer_settings) {
        layers.push_back(layer ? LayerWeight{layer->name, layer->xyz} : LayerWeight{});
    }
    if (const auto& pending = renderState().pendingTonemapping) {
        const u64 count = std::min<u64>(layers.size(), pending->weights.size());
        for (u64 i = 0; i < count; ++i) {
            layers[i].weight = pending->weights[i];
        }
    }
    return layers;
}

bool isLayerListStale() {
    if (renderState().tonemapDialogStale == 0) {
        return false;
    }
    Lock stateLock(renderStateMutex());
    return renderState().tonemapDialogStale != 0;
}

void applyTonemapping(TonemappingChange change) {
    Lock stateLock(renderStateMutex());
    RenderState& state = renderState();
    if (!state.activeRoot || !state.activeRoot->getToneMappingPointer()) {
        return;
    }
    if (state.tonemapDialogStale != 0) {
        change.weights.clear();
    }
    state.pendingTonemapping = std::move(change);
    writePendingTonemapping();
}

bool writePendingTonemapping() {
    RenderState& state = renderState();
    if (!state.pendingTonemapping) {
        return true;
    }
    SceneNodeRoot& root = *state.activeRoot;
    const TryLock treeLock(root.getMutex());
    if (!treeLock.isHeld()) {
        return false;
    }
    const TonemappingChange change = *std::exchange(state.pendingTonemapping, std::nullopt);
    SceneNode& tonemapping = *root.getToneMappingPointer();
    writeTonemapping(static_cast<SceneNodeTonemapping&>(tonemapping), change.choice);
    markAsChanged(tonemapping);
    if (SceneNodeRenderSettings* const settings = activeSettings()) {
        writeSettings(*settings, change);
        markAsChanged(*settings);
    }
    return true;
}
