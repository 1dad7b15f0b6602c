// SPDX-License-Identifier: MIT
#pragma once

#include "headless/watch/watched_picture.h"

#include <memory>

namespace headless {

/// Shows a render on a web page of this machine alone: it listens on 127.0.0.1, and answers only requests
/// that were addressed to that place and come from the page itself or from no page at all.
class WatchServer {
public:
    /// Listens from now on, on threads of its own; port 0 takes a free one. Throws HostError when it can't.
    /// The picture must outlive the server.
    WatchServer(WatchedPicture& picture, int port);
    WatchServer(const WatchServer&) = delete;
    WatchServer& operator=(const WatchServer&) = delete;
    /// Answers what has been asked already, and ends.
    ~WatchServer();

    int port() const;

private:
    class Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace headless
