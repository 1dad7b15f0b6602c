// SPDX-License-Identifier: MIT
#pragma once

#include "host/dialog.h"
#include "render/tonemapping_choice.h"

#include <vector>

/// Changes tone mapping, white point and weights of the light layers of the render that runs in the Picture
/// Viewer; the next image shows them. Without a render it changes nothing.
class TonemappingDialog : public GeDialog {
public:
    bool CreateLayout() override;
    bool InitValues() override;
    bool Command(int32_t id, const BaseContainer& message) override;
    /// Shows the layers of a render that has started meanwhile, before anything else.
    int32_t Message(const BaseContainer& message, BaseContainer& result) override;

private:
    void rebuildLayers();
    void addLayerRow(int32_t index, const LayerWeight& layer);
    bool showWhitePoint(const Chromaticity& white);
    TonemappingChoice readChoice() const;
    std::vector<Quenza::Vec3d> readWeights() const;
    int32_t readLong(int32_t id) const;
    float readReal(int32_t id) const;

    int32_t layerCount_ = 0;
};
