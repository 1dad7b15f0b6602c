// SPDX-License-Identifier: MIT
#include "plugin/message_plugin.h"

#include "host/dialog.h"
#include "host/general.h"
#include "shared/plugin_ids.h"

#include <memory>

bool MessagePlugin::CoreMessage(int32_t id, const BaseContainer& message) {
    if (id == PLUGINID_MESSAGE && message.GetVoid(BFM_CORE_PAR1)) {
        const std::unique_ptr<String> text(static_cast<String*>(message.GetVoid(BFM_CORE_PAR2)));
        if (text) {
            MessageDialog(*text);
        }
    }
    return true;
}
