// SPDX-License-Identifier: MIT
#include "headless/app/picture_session.h"

#include "headless/app/picture_dialog.h"

#include <string_view>

namespace headless {

namespace {

/// Why a render without a fault gave nothing, as far as the plug-in has told at its start. "" when it hasn't.
std::string libraryFault(const std::vector<std::string>& console) {
    constexpr std::string_view FOLDER = "Loading quenza from: ";
    constexpr std::string_view FAILURE = "Failed initialising Quenza sdk";
    std::string folder;
    for (size_t i = 0; i < console.size(); ++i) {
        if (console[i].starts_with(FOLDER)) {
            folder = console[i].substr(FOLDER.size());
        } else if (console[i].starts_with(FAILURE)) {
            const std::string reason = i + 1 < console.size() ? " (" + console[i + 1] + ")" : "";
            return ": the renderer's library could not be loaded" + reason + ". Put it into " + folder +
                   ", or install the renderer";
        }
    }
    return "";
}

} // namespace

PictureSession::PictureSession(Host& host, const PictureSettings& settings)
    : host_(host), render_(host, settings, [&host] { host.loop().wake(); }),
      messagesBefore_(host.messages().size()), errorsBefore_(host.errors().lines().size()),
      linesBefore_(host.console().lines().size()) {}

void PictureSession::start() {
    render_.start();
}

void PictureSession::stop() {
    wasStopped_ = true;
    render_.stop();
}

PictureSession::Shown PictureSession::shown() const {
    return {isRunning(), host_.status().text(), host_.status().percent(), changes()};
}

void PictureSession::act(const PictureAction& action) {
    switch (action.kind) {
    case PictureAction::Kind::pause:
        host_.executeCommand(PAUSE_RENDERING);
        break;
    case PictureAction::Kind::resume:
        host_.executeCommand(RESUME_RENDERING);
        break;
    case PictureAction::Kind::update:
        host_.executeCommand(UPDATE_IMAGE);
        break;
    case PictureAction::Kind::stop:
        stop();
        break;
    default:
        actInTonemappingDialog(host_, action);
        break;
    }
}

std::optional<std::string> PictureSession::failure() const {
    const int32_t result = render_.result();
    if (render_.wasClosed()) {
        return "The document was closed during the render";
    }
    if (result != RENDERRESULT_OK && !(result == RENDERRESULT_USERBREAK && wasStopped_)) {
        const std::string reason = lastWord();
        return "The render failed" + (reason.empty() ? "" : ": " + reason);
    }
    if (changes() == 0) {
        return wasStopped_ ? "The render was stopped before it gave an image"
                           : "The render gave no image" + libraryFault(host_.console().lines());
    }
    return std::nullopt;
}

std::string PictureSession::lastWord() const {
    const auto lastSince = [](const std::vector<std::string>& texts, size_t before) {
        return texts.size() > before ? texts.back() : std::string();
    };
    for (const std::string& word :
         {lastSince(host_.messages(), messagesBefore_), lastSince(host_.errors().lines(), errorsBefore_),
          lastSince(host_.console().lines(), linesBefore_)}) {
        if (!word.empty()) {
            return word;
        }
    }
    return "";
}

} // namespace headless
