// SPDX-License-Identifier: MIT
#include "render/realtime_dialog.h"

#include "c4d_symbols.h"

bool RealtimeDialog::CreateLayout() {
    return LoadDialogResource(IDD_REALTIME) && AttachUserArea(area_, IDC_REALTIME_AREA);
}

bool RealtimeDialog::Command(int32_t id, const BaseContainer& /*message*/) {
    if (id != IDC_REALTIME_START) {
        return true;
    }
    if (area_.hasRenderer()) {
        area_.stop();
    } else {
        area_.start();
    }
    return true;
}

bool RealtimeDialog::CoreMessage(int32_t id, const BaseContainer& message) {
    if (id == EVMSG_CHANGE) {
        area_.onDocumentChanged();
    }
    return GeDialog::CoreMessage(id, message);
}
