// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"
#include "render/realtime_dialog.h"

/// Opens the realtime preview beside the other dialogs. The plug-in doesn't register it; a row in its list of
/// registrations would: PLUGINID_REALTIME_COMMAND, "Realtime Preview", "Quenza Realtime Preview Dialog",
/// "tonemapping.tif".
class RealtimePreviewCommand : public CommandData {
public:
    bool Execute(BaseDocument* document) override;
    bool RestoreLayout(void* secret) override;

private:
    RealtimeDialog dialog_;
};
