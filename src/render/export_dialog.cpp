// SPDX-License-Identifier: MIT
#include "render/export_dialog.h"

#include "host/general.h"
#include "render/renderer_location.h"

#include <exception>

namespace {
constexpr int32_t EXPORTING_TEXT = 10001;
constexpr int32_t TIMER_MILLISECONDS = 250;

/// Asks the artist when the renderer isn't found; false when there is still none.
bool findOrChooseRenderer() {
    try {
        Filename executable;
        return findRenderer(executable, false) ||
               (chooseRendererDirectory() && findRenderer(executable, false));
    } catch (const std::exception& exception) {
        GePrint(exception.what());
        return false;
    }
}

} // namespace

bool ExportDialog::CreateLayout() {
    SetTitle("QZS Exporting...");
    return AddStaticText(EXPORTING_TEXT, 400, 100, "Exporting...");
}

bool ExportDialog::InitValues() {
    if (!document_) {
        return false;
    }
    if (thread_) {
        return true;
    }
    if (!findOrChooseRenderer()) {
        Close();
        return false;
    }
    thread_ = std::make_unique<ExportThread>(document_);
    thread_->Start();
    SetTimer(TIMER_MILLISECONDS);
    return true;
}

void ExportDialog::Timer(const BaseContainer& /*message*/) {
    if (!thread_ || thread_->IsRunning()) {
        return;
    }
    if (thread_->hasFailed()) {
        MessageDialog(String("Export failed:\n") + thread_->getError() + ".");
    }
    thread_.reset();
    SetTimer(0);
    Close();
}

bool ExportDialog::AskClose() {
    if (!thread_ || !thread_->IsRunning()) {
        return false;
    }
    thread_->End(false);
    return true;
}
