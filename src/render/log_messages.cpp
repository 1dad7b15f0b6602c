// SPDX-License-Identifier: MIT
#include "render/log_messages.h"

#include "sdk/binding.h"
#include "shared/main_thread_message.h"
#include "shared/text.h"

bool showRendererErrors(Renderer& renderer) {
    Quenza::Vector<LogMessage> messages;
    bool hadError = false;
    renderer.getLogMessages(messages, hadError);
    for (const LogMessage& message : messages) {
        if (message.type == Quenza::SDK::Message::TYPE_ERROR) {
            showOnMainThread(String("ERROR: ") + toHostString(message.text));
        }
    }
    return hadError;
}
