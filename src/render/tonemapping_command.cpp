// SPDX-License-Identifier: MIT
#include "render/tonemapping_command.h"

#include "shared/plugin_ids.h"

bool TonemappingCommand::Execute(BaseDocument* /*document*/) {
    return dialog_.OpenAsync(PLUGINID_TONEMAPPING_COMMAND, 500, 100);
}

bool TonemappingCommand::RestoreLayout(void* secret) {
    return dialog_.RestoreLayout(PLUGINID_TONEMAPPING_COMMAND, secret);
}
