// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/picture_session.h"
#include "headless/watch/watch_server.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace headless {

/// Shows a session on a page. What the page asks for happens on the main thread, while its loop turns; what
/// can be told without it is told at any time.
class PictureWatch : public WatchedPicture {
public:
    /// Listens on the port; 0 takes a free one. Main thread. Throws HostError.
    PictureWatch(Host& host, PictureSession& session, int port);

    /// "http://127.0.0.1:8080/".
    std::string address() const;
    /// The render has ended: all pages that are open get to know it, and its last image. Returns when they
    /// ask no more, or have had time to.
    void tellEnd(const std::optional<std::string>& failure);

    WatchedState state() override;
    std::string png() override;
    std::string act(const std::string& action) override;

private:
    /// What the plug-in's tone mapping dialog shows, which is opened once the render is on.
    void fillFromDialog(WatchedState& state) const;

    Host& host_;
    PictureSession& session_;
    const std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
    std::mutex mutex_;
    /// The tone mapping as it was last seen.
    WatchedState lastSeen_;
    std::string png_;
    uint64_t pngChanges_ = 0;
    bool hasEnded_ = false;
    /// When a page asked last.
    std::optional<std::chrono::steady_clock::time_point> lastAsked_;
    /// Last, as it uses all else from its own threads.
    WatchServer server_;
};

} // namespace headless
