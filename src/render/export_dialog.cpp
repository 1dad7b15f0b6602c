// SPDX-License-Identifier: MIT
#include "render/export_dialog.h"

#include "render/renderer_location.h"

namespace {
constexpr int32_t EXPORTING_TEXT = 10001;
constexpr int32_t TIMER_MILLISECONDS = 250;
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
