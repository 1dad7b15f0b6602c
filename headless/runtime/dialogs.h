// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/dialog_state.h"

#include <memory>

namespace headless {

class Console;
class MainLoop;
class ScriptedUser;
class StatusBar;
struct UserAction;

/// The plug-in's dialogs, open and closed. Main thread only. An exception of a dialog's own code counts as
/// its refusal and gives an error line.
class Dialogs {
public:
    Dialogs(MainLoop& loop, ScriptedUser& user, StatusBar& status, Console& errors)
        : loop_(loop), user_(user), status_(status), errors_(errors) {}

    void attach(GeDialog* dialog);
    /// A dialog that dies while it is open is closed without a call to it.
    void detach(GeDialog* dialog);

    /// Runs the main loop until the dialog was closed. False when it could not open: it is open already, its
    /// layout or its InitValues failed.
    bool openModal(GeDialog* dialog, int32_t width, int32_t height);
    /// Opens beside the others; true as well when it is open already.
    bool openAsync(GeDialog* dialog, int32_t width, int32_t height);
    /// Closes without asking.
    void close(GeDialog* dialog);
    void closeAll();

    /// As the close button does: the dialog is asked and may refuse. False when it did.
    bool requestClose(GeDialog* dialog);
    /// Asks the dialog that opened last, as Ctrl-C does. False when none is open or it refused.
    bool requestCloseOfTop();
    /// As a click on a gadget: the dialog's Command gets its number, with the gadget's value under the same
    /// number in the message. False when there is no such gadget or it is disabled.
    bool press(GeDialog* dialog, int32_t gadget);
    /// As an entry into a gadget: as `press`, with a new value.
    bool enter(GeDialog* dialog, int32_t gadget, const GeData& value);

    void setTitle(GeDialog* dialog, const String& title);
    void setTimer(GeDialog* dialog, int32_t milliseconds);
    /// Sends a core message to every open dialog.
    void coreMessage(int32_t id, const BaseContainer& message);

    /// Null for a dialog that isn't attached. Valid until it is detached.
    DialogState* state(const GeDialog* dialog);
    /// The open ones, in the order of opening.
    std::vector<GeDialog*> openDialogs() const;

private:
    using StatePointer = std::shared_ptr<DialogState>;

    StatePointer find(const GeDialog* dialog) const;
    bool open(const StatePointer& state, int32_t width, int32_t height, bool modal);
    void startTimer(const StatePointer& state);
    void scheduleActions(const StatePointer& state);
    void perform(const StatePointer& state, const UserAction& action);
    void shut(DialogState& state);
    template <typename Call>
    bool guarded(const char* name, Call call);

    MainLoop& loop_;
    ScriptedUser& user_;
    StatusBar& status_;
    Console& errors_;
    std::vector<StatePointer> states_;
    std::vector<StatePointer> open_;
};

} // namespace headless
