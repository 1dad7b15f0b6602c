// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include <algorithm>

#include "headless/app/export_settings.h"
#include "headless/app/picture_arguments.h"
#include "headless/app/picture_session.h"
#include "headless/app/picture_watch.h"
#include "headless/app/texture_report.h"
#include "headless/model/warnings.h"
#include "headless/runtime/platform.h"

namespace headless {

namespace {

constexpr std::chrono::milliseconds STATUS_INTERVAL{500};
/// How often a render is asked whether it takes the actions that wait for it.
constexpr std::chrono::milliseconds DUE_INTERVAL{20};

struct Key {
    char key;
    const char* action;
};
constexpr Key KEYS[] = {{'p', "pause"}, {'r', "resume"}, {'u', "update"}, {'q', "stop"}};

void requireRegionInside(const RenderRegion& region, int32_t width, int32_t height) {
    const bool isRows = region.kind == RENDERREGION_ROWS;
    const int32_t size = isRows ? height : width;
    if (region.to > size) {
        throw UsageError(std::string(isRows ? "--rows" : "--columns") + " " + std::to_string(region.from) +
                         "-" + std::to_string(region.to) + " lies outside: the image has " +
                         std::to_string(size) + (isRows ? " rows" : " columns"));
    }
}

/// Prepares the document as an artist would: with the plug-in's render settings, which are chosen as the
/// renderer.
void applyOrder(Host& host, const PictureOrder& order, const Arguments& arguments) {
    Document& document = *host.document();
    requireRenderSettings(document);
    BaseContainer& renderData = document.activeRenderData()->data;
    renderData.SetLong(RDATA_RENDERENGINE, RENDER_SETTINGS);
    if (order.size) {
        renderData.SetLong(RDATA_XRES, order.size->first);
        renderData.SetLong(RDATA_YRES, order.size->second);
    }
    if (order.settings.region) {
        requireRegionInside(*order.settings.region, renderData.GetLong(RDATA_XRES),
                            renderData.GetLong(RDATA_YRES));
    }
    if (order.frame) {
        exportFrame(document, *order.frame);
    }
    applyRenderSettings(host, arguments.values("--set"));
}

/// A render from its start to its end, with all that happens at its time.
class PictureRun {
public:
    PictureRun(Host& host, PictureOrder order)
        : host_(host), order_(std::move(order)), session_(host, order_.settings),
          keys_([this](char key) { host_.loop().post([this, key] { press(key); }); }) {}
    PictureRun(const PictureRun&) = delete;
    PictureRun& operator=(const PictureRun&) = delete;
    ~PictureRun() {
        for (const int timer : timers_) {
            host_.loop().removeTimer(timer);
        }
        keys_.end();
        // Keys that were pressed but not answered lead here.
        host_.loop().runPosted();
        host_.status().setWork("");
    }

    void run() {
        if (keys_.isActive()) {
            host_.errors().print("p pauses, r resumes, u updates the image, q stops");
        }
        host_.status().setWork(host_.document()->fileName.GetUtf8());
        startWatch();
        session_.start();
        startTimers();
        host_.loop().runUntil([this] {
            order_.file.update(session_);
            performDue();
            if (host_.wasInterrupted()) {
                session_.stop();
            }
            return !session_.isRunning();
        });
        // What the render's last moments sent to the main thread.
        host_.loop().runPosted();
        order_.file.update(session_);
        host_.status().setWork("");
        endDue();
    }

    /// After the end: the page gets to know it.
    void tellEnd() {
        if (watch_) {
            watch_->tellEnd(failure());
        }
    }

    /// After the end: why it wasn't as it should be.
    std::optional<std::string> failure() const {
        const std::optional<std::string> failure = session_.failure();
        return failure ? failure : failedAction_;
    }

    /// An action that is written for a time after the end is no fault.
    void tellWhatCameTooLate() const {
        for (const PictureOrder::TimedAction* const action : waiting_) {
            host_.errors().print("--at " + action->text + ": the render had ended before");
        }
    }

private:
    void startWatch() {
        if (order_.watchPort) {
            watch_.emplace(host_, session_, *order_.watchPort);
            std::puts(("Watch at " + watch_->address()).c_str());
            std::fflush(stdout);
        }
    }

    void startTimers() {
        timers_.push_back(host_.loop().addTimer(STATUS_INTERVAL, [this] { host_.status().refresh(); }));
        if (order_.stopAfter) {
            timers_.push_back(host_.loop().addOneShot(*order_.stopAfter, [this] { session_.stop(); }));
        }
        for (const PictureOrder::TimedAction& timed : order_.actions) {
            waiting_.push_back(&timed);
            timers_.push_back(host_.loop().addOneShot(timed.time, [this, &timed] {
                std::erase(waiting_, &timed);
                due_.push_back(&timed);
            }));
        }
        if (!order_.actions.empty()) {
            timers_.push_back(host_.loop().addTimer(DUE_INTERVAL, [] {}));
        }
    }

    /// After the end. An action may fall due while the render closes.
    void endDue() {
        if (tookCommands_) {
            waiting_.insert(waiting_.begin(), due_.begin(), due_.end());
            return;
        }
        for (const PictureOrder::TimedAction* const timed : due_) {
            tellFailed(*timed, "the render took no commands until its end");
        }
    }

    /// Actions whose time has come, in their order, as soon as the render takes them: made before, they would
    /// be lost without a word. A stop needs no plug-in.
    void performDue() {
        tookCommands_ |= session_.takesCommands();
        for (size_t i = 0; i < due_.size();) {
            const PictureOrder::TimedAction& timed = *due_[i];
            if (timed.action.kind == PictureAction::Kind::stop || session_.takesCommands()) {
                due_.erase(due_.begin() + static_cast<std::ptrdiff_t>(i));
                perform(timed);
            } else {
                ++i;
            }
        }
    }

    /// What the render still takes commands after is in an image. If it doesn't, it may have ended before the
    /// action, or just then.
    void perform(const PictureOrder::TimedAction& timed) {
        std::optional<std::string> refusal;
        try {
            session_.act(timed.action);
        } catch (const HostError& error) {
            refusal = error.what();
        }
        if (timed.action.kind != PictureAction::Kind::stop && !session_.takesCommands()) {
            waiting_.push_back(&timed);
        } else if (refusal) {
            tellFailed(timed, *refusal);
        }
    }

    void tellFailed(const PictureOrder::TimedAction& timed, const std::string& why) {
        const std::string reason = "--at " + timed.text + ": " + why;
        host_.errors().print(reason);
        failedAction_ = failedAction_ ? failedAction_ : "Not everything was done: " + reason;
    }

    void press(char key) {
        const auto* const found = std::ranges::find(KEYS, key, &Key::key);
        if (found == std::end(KEYS) || !session_.isRunning()) {
            return;
        }
        try {
            session_.act(parsePictureAction(found->action));
        } catch (const HostError& error) {
            host_.errors().print(error.what());
        }
    }

    Host& host_;
    PictureOrder order_;
    PictureSession session_;
    platform::KeyWatch keys_;
    std::vector<int> timers_;
    /// Whose time hasn't come, or for which the render had ended.
    std::vector<const PictureOrder::TimedAction*> waiting_;
    /// Whose time has come, but the render doesn't take them yet.
    std::vector<const PictureOrder::TimedAction*> due_;
    bool tookCommands_ = false;
    std::optional<std::string> failedAction_;
    std::optional<PictureWatch> watch_;
};

} // namespace

ExitStatus pictureCommand(Host& host, const Arguments& arguments) {
    PictureOrder order = readPictureOrder(arguments);
    openDocumentFile(host, arguments.operands.front(), folderOf(*arguments.value("--image")));
    applyOrder(host, order, arguments);
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    const OutputFolder folder = order.file.prepare();
    const TextureWarningsHeld untilTheEnd;
    const std::string path = order.file.path();
    PictureRun picture(host, std::move(order));
    picture.run();
    picture.tellEnd();
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    if (const std::optional<std::string> failure = picture.failure()) {
        throw HostError(*failure);
    }
    picture.tellWhatCameTooLate();
    for (const std::string& fault : textureFaults(*host.document())) {
        host.errors().print(fault);
    }
    std::puts(("Image: " + path).c_str());
    return ExitStatus::done;
}

} // namespace headless
