// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// The settings of a render, in the host's render setup: sampling, units, background, outputs, and how the
/// renderer is started.
class RenderSettingsPost : public VideoPostData {
public:
    /// Takes the unit and the thread count from the host.
    bool Init(BaseList2D* node) override;
    /// Also lists the devices, and puts RS_GPU_DEVICE back to the first when the list has no such device.
    bool GetDDescription(BaseList2D* node, Description* description, int32_t& flags) override;
    bool GetDEnabling(BaseList2D* node, const DescID& id) override;
    /// The graphics card renders plain paths only: turning it on sets RS_MODE. Warns of a background material
    /// that doesn't shine, and takes it.
    bool SetDParameter(BaseList2D* node, const DescID& id, GeData& value) override;
    /// Before a render the linked background is marked, so that the walk leaves it out.
    bool Message(BaseList2D* node, int32_t type, void* data) override;
};
