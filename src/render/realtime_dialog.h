// SPDX-License-Identifier: MIT
#pragma once

#include "host/dialog.h"
#include "render/realtime_user_area.h"

/// A picture of the open document that is rendered while the artist works, and a button that starts and stops
/// it. Closing the dialog doesn't stop the render.
class RealtimeDialog : public GeDialog {
public:
    bool CreateLayout() override;
    bool Command(int32_t id, const BaseContainer& message) override;
    bool CoreMessage(int32_t id, const BaseContainer& message) override;

private:
    RealtimeUserArea area_;
};
