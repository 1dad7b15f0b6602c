// SPDX-License-Identifier: MIT
#include "headless/app/picture_watch.h"

#include "headless/app/arguments.h"
#include "headless/app/plugin_numbers.h"
#include "headless/images/image_files.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace headless {

namespace {

/// A number of the dialog as the page shows it: called by its words in an action. The slider's range is what
/// is of use; the dialog takes more.
struct Slider {
    const char* name;
    const char* label;
    int32_t gadget;
    double minimum, maximum, step;
};
constexpr Slider SLIDERS[] = {
    {"reinhard prescale", "Pre-scale", TONEMAP_PRE_SCALE, 0, 20, 0.1},
    {"reinhard postscale", "Post-scale", TONEMAP_POST_SCALE, 0, 10, 0.1},
    {"reinhard burn", "Burn", TONEMAP_BURN, 0.1, 50, 0.1},
    {"linear scale", "Scale", TONEMAP_SCALE, 0, 20, 0.1},
    {"camera iso", "Film ISO", TONEMAP_FILM_ISO, 10, 6400, 10},
    {"camera ev", "EV adjust", TONEMAP_EV_ADJUST, -10, 10, 0.1},
};

constexpr std::chrono::seconds TIME_TO_TELL{4};
/// A page asks twice a second, in a hidden window once, until it knows of the end.
constexpr std::chrono::milliseconds QUIET{1300};
constexpr std::chrono::milliseconds QUIET_CHECK{100};

/// The choices of a combo box, called by their texts, and the chosen one.
std::string choicesOf(const DialogState& dialog, int32_t gadget, std::vector<WatchedChoice>& choices) {
    const Gadget* const box = dialog.find(gadget);
    std::string chosen;
    if (box) {
        for (const auto& [value, text] : box->choices) {
            choices.push_back({text.GetUtf8(), text.GetUtf8()});
            if (value == box->value.GetLong()) {
                chosen = text.GetUtf8();
            }
        }
    }
    return chosen;
}

/// The number of a status text such as "Rendering: 12.5 s/px".
double samplesIn(std::string_view status) {
    constexpr std::string_view UNIT = " s/px";
    const size_t colon = status.find(": ");
    double samples = -1;
    if (colon != std::string_view::npos && status.ends_with(UNIT)) {
        status = status.substr(colon + 2, status.size() - UNIT.size() - colon - 2);
        std::from_chars(status.data(), status.data() + status.size(), samples);
    }
    return samples;
}

} // namespace

PictureWatch::PictureWatch(Host& host, PictureSession& session, int port)
    : host_(host), session_(session), server_(*this, port) {
    std::lock_guard lock(mutex_);
    lastSeen_.document = host.document()->fileName.GetUtf8();
}

std::string PictureWatch::address() const {
    return "http://127.0.0.1:" + std::to_string(server_.port()) + "/";
}

WatchedState PictureWatch::state() {
    bool isPaused = false;
    WatchedState seen;
    const bool isSeen = host_.loop().call([&] {
        fillFromDialog(seen);
        isPaused = host_.isCommandEnabled(RESUME_RENDERING);
    });
    std::lock_guard lock(mutex_);
    if (isSeen) {
        seen.document = lastSeen_.document;
        lastSeen_ = seen;
    }
    WatchedState state = lastSeen_;
    const PictureSession::Shown shown = session_.shown();
    state.phase = hasEnded_ ? WatchedState::Phase::ended
                            : (isPaused ? WatchedState::Phase::paused : WatchedState::Phase::rendering);
    state.status = shown.status;
    state.percent = shown.percent.value_or(-1);
    state.samples = samplesIn(shown.status);
    state.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - began_).count();
    state.image = shown.changes;
    state.width = session_.width();
    state.height = session_.height();
    lastAsked_ = std::chrono::steady_clock::now();
    return state;
}

void PictureWatch::fillFromDialog(WatchedState& state) const {
    GeDialog* dialog = host_.dialogs().openDialogWith(TONEMAP_METHOD);
    // Opened earlier it would show, and apply, what it opens with instead of what the scene has.
    if (!dialog && session_.takesCommands()) {
        host_.executeCommand(TONEMAPPING_DIALOG);
        dialog = host_.dialogs().openDialogWith(TONEMAP_METHOD);
    }
    const DialogState* const gadgets = dialog ? host_.dialogs().state(dialog) : nullptr;
    if (!gadgets) {
        return;
    }
    const auto method = std::ranges::find(TONEMAP_METHODS, gadgets->find(TONEMAP_METHOD)->value.GetLong(),
                                          &TonemapMethod::value);
    state.method = method == std::end(TONEMAP_METHODS) ? "" : method->word;
    for (const Slider& slider : SLIDERS) {
        if (const Gadget* const gadget = gadgets->find(slider.gadget)) {
            const double value = gadget->value.GetReal();
            state.numbers.push_back({slider.name, slider.label, value, std::min(slider.minimum, value),
                                     std::max(slider.maximum, value), slider.step});
        }
    }
    state.response = choicesOf(*gadgets, TONEMAP_RESPONSE, state.responses);
    state.whitePoint = choicesOf(*gadgets, WHITE_POINT, state.whitePoints);
    for (int32_t i = 0; const Gadget* const field = gadgets->find(LAYER_COLOUR + i); ++i) {
        const Gadget* const name = gadgets->find(LAYER_NAME + i);
        const Gadget* const box = gadgets->find(LAYER_ENABLED + i);
        state.layers.push_back({i, name ? name->value.GetString().GetUtf8() : "", box && box->value.GetBool(),
                                double(field->brightness)});
    }
}

std::string PictureWatch::png() {
    std::lock_guard lock(mutex_);
    if (session_.changes() != pngChanges_) {
        Image image;
        pngChanges_ = session_.copyImage(image);
        png_ = encodePng(image);
    }
    lastAsked_ = std::chrono::steady_clock::now();
    return png_;
}

std::string PictureWatch::act(const std::string& action) {
    const std::string ended = "The render has ended.";
    std::string reason;
    const bool isDone = host_.loop().call([&] {
        if (!session_.isRunning()) {
            reason = ended;
            return;
        }
        try {
            const PictureAction parsed = parsePictureAction(action);
            // The dialog would take a change for no render without a word.
            if (parsed.kind != PictureAction::Kind::stop && !session_.takesCommands()) {
                reason = "The render takes no commands now.";
                return;
            }
            session_.act(parsed);
        } catch (const std::exception& error) {
            reason = error.what();
        }
    });
    if (isDone) {
        return reason;
    }
    return session_.isRunning() ? "The host is busy; try again." : ended;
}

void PictureWatch::tellEnd(const std::optional<std::string>& failure) {
    {
        std::lock_guard lock(mutex_);
        lastSeen_.failure = failure.value_or("");
        hasEnded_ = true;
    }
    const int timer = host_.loop().addTimer(QUIET_CHECK, [] {});
    host_.runUntil(
        [this] {
            std::lock_guard lock(mutex_);
            return !lastAsked_ || std::chrono::steady_clock::now() - *lastAsked_ > QUIET;
        },
        TIME_TO_TELL);
    host_.loop().removeTimer(timer);
}

} // namespace headless
