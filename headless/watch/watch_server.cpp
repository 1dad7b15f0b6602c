// SPDX-License-Identifier: MIT
#include "headless/watch/watch_server.h"

#include "headless/runtime/host_error.h"
#include "headless/watch/state_json.h"
#include "headless/watch/watch_page.h"

#include <httplib.h>

#include <string>
#include <thread>

namespace headless {

namespace {

constexpr const char* ADDRESS = "127.0.0.1";
/// Actions are a few words.
constexpr size_t LARGEST_REQUEST = 4096;

/// Names under which a browser of this machine reaches the server. Any other name in a request means that a
/// foreign page has had its own name lead here.
bool isOwnHost(const std::string& host, int port) {
    const std::string tail = ":" + std::to_string(port);
    return host == ADDRESS + tail || host == "localhost" + tail;
}

bool isAllowed(const httplib::Request& request, int port) {
    if (!isOwnHost(request.get_header_value("Host"), port)) {
        return false;
    }
    if (request.has_header("Origin") &&
        request.get_header_value("Origin") != "http://" + request.get_header_value("Host")) {
        return false;
    }
    const std::string site = request.get_header_value("Sec-Fetch-Site");
    return site.empty() || site == "same-origin" || site == "none";
}

void forbidForeignPages(httplib::Response& response) {
    response.set_header("Content-Security-Policy",
                        "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
                        "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
    response.set_header("Cross-Origin-Resource-Policy", "same-origin");
    response.set_header("X-Content-Type-Options", "nosniff");
    response.set_header("Referrer-Policy", "no-referrer");
    response.set_header("Cache-Control", "no-store");
}

/// The library would share a port with other programs: then some requests would go to them. A port that an
/// ended program has left may be taken at once, which Windows allows anyway.
void claimPort(socket_t socket) {
#ifdef _WIN32
    constexpr int OPTION = SO_EXCLUSIVEADDRUSE;
#else
    constexpr int OPTION = SO_REUSEADDR;
#endif
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, OPTION, reinterpret_cast<const char*>(&yes), sizeof yes);
}

void answer(httplib::Response& response, std::string_view content, const char* type) {
    response.set_content(content.data(), content.size(), type);
}

} // namespace

class WatchServer::Implementation {
public:
    Implementation(WatchedPicture& picture, int port) : picture_(picture) {
        server_.set_payload_max_length(LARGEST_REQUEST);
        server_.set_keep_alive_timeout(1);
        server_.set_socket_options(claimPort);
        setRoutes();
        port_ = port == 0 ? server_.bind_to_any_port(ADDRESS) : port;
        if (port_ <= 0 || (port != 0 && !server_.bind_to_port(ADDRESS, port))) {
            throw HostError("Can't listen on " + std::string(ADDRESS) + ":" + std::to_string(port) +
                            ": another program may use the port; choose another one, or 0 for a free one.");
        }
        thread_ = std::thread([this] { server_.listen_after_bind(); });
        // A stop before the thread listens would be lost.
        while (!server_.is_running()) {
            std::this_thread::yield();
        }
    }
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    ~Implementation() {
        server_.stop();
        thread_.join();
    }

    int port() const { return port_; }

private:
    void setRoutes() {
        server_.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
            forbidForeignPages(response);
            if (isAllowed(request, port_)) {
                return httplib::Server::HandlerResponse::Unhandled;
            }
            response.status = 403;
            answer(response, "This page answers to itself alone.\n", "text/plain");
            return httplib::Server::HandlerResponse::Handled;
        });
        setFile("/", WATCH_PAGE_HTML, "text/html; charset=utf-8");
        setFile("/page.css", WATCH_PAGE_STYLE, "text/css; charset=utf-8");
        setFile("/page.js", WATCH_PAGE_SCRIPT, "text/javascript; charset=utf-8");
        server_.Get("/state", [this](const httplib::Request&, httplib::Response& response) {
            answer(response, stateJson(picture_.state()), "application/json");
        });
        server_.Get("/image.png", [this](const httplib::Request&, httplib::Response& response) {
            const std::string png = picture_.png();
            if (png.empty()) {
                response.status = 404;
                answer(response, "There is no image yet.\n", "text/plain");
            } else {
                answer(response, png, "image/png");
            }
        });
        server_.Post("/action", [this](const httplib::Request& request, httplib::Response& response) {
            const std::string reason = picture_.act(request.body);
            response.status = reason.empty() ? 200 : 400;
            answer(response, reason, "text/plain; charset=utf-8");
        });
    }

    void setFile(const char* path, std::string_view content, const char* type) {
        server_.Get(path, [content, type](const httplib::Request&, httplib::Response& response) {
            answer(response, content, type);
        });
    }

    WatchedPicture& picture_;
    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;
};

WatchServer::WatchServer(WatchedPicture& picture, int port)
    : implementation_(std::make_unique<Implementation>(picture, port)) {}

WatchServer::~WatchServer() = default;

int WatchServer::port() const {
    return implementation_->port();
}

} // namespace headless
