// SPDX-License-Identifier: MIT
#include "render/realtime_command.h"

#include "shared/plugin_ids.h"

bool RealtimePreviewCommand::Execute(BaseDocument* /*document*/) {
    return dialog_.OpenAsync(PLUGINID_REALTIME_COMMAND, 500, 100);
}

bool RealtimePreviewCommand::RestoreLayout(void* secret) {
    return dialog_.RestoreLayout(PLUGINID_REALTIME_COMMAND, secret);
}
