// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "headless/model/document.h"
#include "headless/preview/preview_scenes.h"
#include "headless/resources/resource_folder.h"
#include "headless/runtime/clock.h"
#include "headless/runtime/console.h"
#include "headless/runtime/dialogs.h"
#include "headless/runtime/host_error.h"
#include "headless/runtime/host_options.h"
#include "headless/runtime/main_loop.h"
#include "headless/runtime/menus.h"
#include "headless/runtime/plugin.h"
#include "headless/runtime/registrations.h"
#include "headless/runtime/status_bar.h"
#include "headless/runtime/terminal.h"
#include "headless/runtime/thread.h"
#include "headless/runtime/user.h"

namespace headless {

/// One running host: it loads a plug-in, shows it a document and the world around it, and plays its user. One
/// at a time in a process; the thread that makes it is the main thread. Nodes of the plug-in's types must be
/// gone before the host is.
class Host {
public:
    /// Throws HostError when there is a host already, or for a wrong QUENZA_HEADLESS_CLOCK.
    explicit Host(HostOptions options = {});
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    /// Closes dialogs and documents, ends the plug-in and its threads, and closes its library.
    ~Host();

    /// The running host. There must be one.
    static Host& current();

    /// Loads a plug-in, with its resources, and starts it. Throws HostError when it can't be loaded or
    /// refuses this host. A start that fails gives an error line, and what was registered until then stays in
    /// use.
    void loadPlugin(const std::filesystem::path& file);
    /// False when the plug-in's start failed, or there is none.
    bool isStarted() const { return started_; }
    /// True when the plug-in's texts and resources were there too.
    bool isWhole() const { return started_ && hasTexts_; }

    /// Makes `document` the active one, in place of the last, which is freed.
    void open(std::unique_ptr<Document> document);
    /// Runs `task` before the open document, or the plug-in, goes. One for each owner. Main thread.
    void beforeClose(const void* owner, std::function<void()> task);
    void forgetClose(const void* owner);
    /// Null when none is open.
    Document* document() const { return document_.get(); }

    /// Runs a registered command on the active document, with all dialogs that it opens, and gives its
    /// result. Throws HostError for an unknown number, a command that is disabled, or one that ends with an
    /// exception.
    bool executeCommand(int32_t id);
    /// Whether `executeCommand` would run it now; false for an unknown number.
    bool isCommandEnabled(int32_t id);
    /// As at the host's next start, when the command's dialog stood open at its end: the command opens it
    /// again at this size. False when it doesn't. Throws HostError for an unknown number.
    bool restoreLayout(int32_t commandId, int32_t width, int32_t height);
    /// Turns the main loop until `done`, which is asked after each piece of work; false when that takes
    /// longer than `limit`.
    bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit);

    /// With HostOptions::drivenClock: moves the clock. On the way each thread of the plug-in that sleeps and
    /// each timer comes at its time; before each step of the clock all threads have come to their next sleep
    /// or their end, and what they asked of the main thread was done. Throws HostError for a thread that does
    /// neither in two minutes.
    void advance(std::chrono::milliseconds length);
    /// GeSleep. Any thread; one of the main thread gives an error line.
    void sleep(std::chrono::milliseconds length);

    /// Ctrl-C: the dialog that opened last is asked to close. Any thread.
    void interrupt();
    bool wasInterrupted() const { return interrupted_; }

    /// Lines that the plug-in printed.
    Console& console() { return console_; }
    /// Message boxes and errors, as they were told to the user.
    Console& errors() { return errors_; }
    /// Lays down answers, and knows what was asked.
    ScriptedUser& user() { return user_; }
    /// Texts of the message boxes so far.
    std::vector<std::string> messages() const;
    StatusBar& status() { return status_; }
    const Clock& clock() const { return clock_; }
    MainLoop& loop() { return loop_; }
    Threads& threads() { return threads_; }
    Dialogs& dialogs() { return dialogs_; }
    Menus& menus() { return menus_; }
    /// Tells the plug-in that the menus are made, so that it adds to them; done by `loadPlugin`.
    void buildMenus();
    Registrations& registrations() { return registrations_; }
    BaseContainer& worldPreferences() { return worldPreferences_; }
    const std::filesystem::path& startupPath() const { return startupPath_; }

    /// The plug-in's folder res/, null before one was loaded.
    resources::ResourceFolder* resources() { return resources_.get(); }
    /// Reads the string table of a plug-in folder. False, with an error line, when there is none.
    bool loadStrings(const std::filesystem::path& pluginFolder);
    void freeStrings() { strings_.reset(); }
    /// "" for an unknown number and without a string table.
    std::string string(int32_t id);
    /// The description that a node type was registered with. Null, with an error line when it is faulty.
    const resources::Description* descriptionOf(int32_t pluginId);

    /// Sends a core message to the message plug-ins and open dialogs, at the loop's next turn. Any thread.
    void sendCoreMessage(int32_t id, uintptr_t parameter1, uintptr_t parameter2);
    /// Sends the core message of a change in a document, EVMSG_CHANGE; once for all changes before the loop's
    /// next turn. Any thread.
    void tellOfChange();
    /// Runs `task` on the main thread. False, with an error line that names `what`, when the main thread
    /// can't take it: then it isn't run. Any thread.
    bool onMainThread(const char* what, const std::function<void()>& task);

    /// Scenes that the plug-in handed over for previews of its material.
    PreviewScenes& previewScenes() { return previewScenes_; }

private:
    void settle();
    void deliverCoreMessage(int32_t id, const BaseContainer& message);
    const Registration& requireCommand(int32_t id) const;
    void endWorkOnDocument();
    void unloadPlugin();

    Terminal terminal_;
    Console console_;
    Console errors_;
    StatusBar status_;
    Clock clock_;
    std::filesystem::path startupPath_;
    BaseContainer worldPreferences_;
    MainLoop loop_{clock_.driven()};
    ScriptedUser user_;
    Dialogs dialogs_{loop_, user_, status_, errors_};
    Threads threads_{loop_, errors_, clock_.driven()};
    std::atomic<bool> interrupted_{false};
    std::atomic<bool> changeIsOnItsWay_{false};

    std::unique_ptr<resources::ResourceFolder> resources_;
    std::unique_ptr<resources::ResourceFolder> strings_;
    Menus menus_;
    Registrations registrations_;
    std::unique_ptr<Plugin> plugin_;
    bool hasTexts_ = false;
    bool started_ = false;
    PreviewScenes previewScenes_;
    std::unique_ptr<Document> document_;
    std::vector<std::pair<const void*, std::function<void()>>> closeTasks_;
};

} // namespace headless
