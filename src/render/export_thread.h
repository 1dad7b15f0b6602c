// SPDX-License-Identifier: MIT
#pragma once

#include "host/document.h"
#include "host/thread.h"

struct RenderJob;

/// The work of one Render command: exports the document's frame or frame range to disk and starts the
/// renderer. It works on the live document, which must be kept from other changes while the thread runs.
class ExportThread : public C4DThread {
public:
    explicit ExportThread(BaseDocument* document) : document_(document) {}
    ~ExportThread() override { End(true); }

    void Main() override;
    const char* GetThreadName() override { return "Quenza Export"; }

    /// True when the work ended in an error, told by `getError`. For callers that have seen the thread end.
    bool hasFailed() const { return errorFlag_ == 1; }
    const String& getError() const { return error_; }

private:
    void run();
    void fail(const String& text);
    bool prepareQuickFolder(Filename& folder);
    bool exportFrames(const RenderJob& job);
    bool exportFrame(const RenderJob& job, int32_t frame, const Filename& scenePath);

    BaseDocument* document_;
    int32_t errorFlag_ = 0;
    String error_;
};
