// SPDX-License-Identifier: MIT
#pragma once

#include "host/plugin_data.h"

/// Shows messages of worker threads on the main thread: a core message of PLUGINID_MESSAGE with the first
/// argument 1 and a `String` from the heap as the second, which is freed here.
class MessagePlugin : public MessageData {
public:
    bool CoreMessage(int32_t id, const BaseContainer& message) override;
};
