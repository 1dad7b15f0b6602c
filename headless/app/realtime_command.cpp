// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "foundation/native_path.h"
#include "headless/app/image_output.h"
#include "headless/app/plugin_numbers.h"
#include "headless/app/realtime_words.h"
#include "headless/build/caches.h"
#include "headless/model/handles.h"

#include <cstdio>

namespace headless {

namespace {

void moveCamera(Host& host, const Vector& place) {
    Document& document = *host.document();
    Object& camera = *document.view().sceneCamera(&document);
    Matrix matrix = camera.globalMatrix();
    matrix.off = place;
    camera.setGlobalMatrix(matrix);
    host.tellOfChange();
}

/// The dialog, open and with its area at the wanted size.
GeDialog& openPreview(Host& host, const RealtimeWishes& wishes) {
    const Registration* const registration = host.registrations().find(REALTIME_PREVIEW);
    if (!registration || !registration->command) {
        throw HostError("The plug-in doesn't register its realtime preview, command " +
                        std::to_string(REALTIME_PREVIEW));
    }
    host.executeCommand(REALTIME_PREVIEW);
    GeDialog* const dialog = host.dialogs().openDialogWith(REALTIME_AREA);
    if (!dialog) {
        throw HostError("The realtime preview did not open");
    }
    if (wishes.size &&
        !host.dialogs().areas().resize(dialog, REALTIME_AREA, wishes.size->first, wishes.size->second)) {
        throw HostError("The realtime preview can't have that size");
    }
    return *dialog;
}

/// How long the first image may take beyond the wanted time, on a busy machine or of a large scene.
constexpr std::chrono::minutes PATIENCE{2};

/// A preview in its window.
class PreviewRun {
public:
    PreviewRun(Host& host, GeDialog& dialog)
        : host_(host), dialog_(dialog), drawingsBefore_(area()->drawings) {}

    /// As a press on the button. Throws HostError when nothing starts.
    void start() {
        pressButton();
        if (area()->timer == 0) {
            throw HostError("The realtime preview did not start");
        }
    }
    /// For the wanted time and until there is an image; false when the window was closed.
    bool run(const RealtimeWishes& wishes) {
        bool isOver = false;
        bool isLate = false;
        std::vector<int> timers = {host_.loop().addOneShot(wishes.length, [&] { isOver = true; }),
                                   host_.loop().addOneShot(wishes.length + PATIENCE, [&] { isLate = true; })};
        for (const CameraMove& move : wishes.moves) {
            timers.push_back(
                host_.loop().addOneShot(move.at, [this, place = move.place] { moveCamera(host_, place); }));
        }
        host_.loop().runUntil([&] { return !area() || isLate || (isOver && images() > 0); });
        for (const int timer : timers) {
            host_.loop().removeTimer(timer);
        }
        return area() != nullptr;
    }
    int images() const { return area()->drawings - drawingsBefore_; }
    const Image& image() const { return area()->image; }
    void pressButton() { host_.dialogs().press(&dialog_, REALTIME_START); }

private:
    /// Null once the window is closed.
    UserAreaState* area() const { return host_.dialogs().areas().find(&dialog_, REALTIME_AREA); }

    Host& host_;
    GeDialog& dialog_;
    const int drawingsBefore_;
};

} // namespace

ExitStatus realtimeCommand(Host& host, const Arguments& arguments) {
    const RealtimeWishes wishes = readRealtimeWishes(arguments);
    if (host.clock().standsStill()) {
        throw HostError("The realtime preview waits for a clock that a fixed one stops: leave it out");
    }
    openDocumentFile(host, arguments.operands.front());
    // An open document has its caches from the views that show it, and the preview relies on that.
    buildCaches(*host.document(), nullptr);
    requireWritable(wishes.image);
    GeDialog& dialog = openPreview(host, wishes);
    PreviewRun preview(host, dialog);
    preview.start();
    if (!preview.run(wishes)) {
        return ExitStatus::interrupted;
    }
    const int images = preview.images();
    const Image image = preview.image();
    preview.pressButton();
    host.dialogs().requestClose(&dialog);
    if (images == 0) {
        throw HostError("The realtime preview showed no image");
    }
    saveImage(wishes.image, image, {});
    std::puts(
        ("Images shown: " + std::to_string(images) + "\nImage: " + Quenza::utf8Path(wishes.image)).c_str());
    return ExitStatus::done;
}

} // namespace headless
