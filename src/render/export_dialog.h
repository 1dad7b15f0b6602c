// SPDX-License-Identifier: MIT
#pragma once

#include "host/dialog.h"
#include "render/export_thread.h"

#include <memory>

/// The small window that stands while an export runs. Closing it cancels.
class ExportDialog : public GeDialog {
public:
    explicit ExportDialog(BaseDocument* document) : document_(document) {}

    bool CreateLayout() override;
    bool InitValues() override;
    void Timer(const BaseContainer& message) override;
    bool AskClose() override;

private:
    BaseDocument* document_;
    std::unique_ptr<ExportThread> thread_;
};
