// SPDX-License-Identifier: MIT
#pragma once

#include "headless/resources/dialog_resource.h"
#include "headless/runtime/dialog_state.h"
#include "headless/runtime/user_areas.h"

#include <memory>

namespace headless {

class Console;
class MainLoop;
class ScriptedUser;
class StatusBar;
struct UserAction;

/// Where a window stood when the host was closed: what CommandData::RestoreLayout hands on to the dialog.
struct WindowPlace {
    int32_t pluginId = 0;
    int32_t width = 0;
    int32_t height = 0;
};

/// The plug-in's dialogs, open and closed. Main thread only. Whatever comes to a dialog comes as a message,
/// which its own Message hands back to `handle`. An exception of a dialog's own code counts as
/// its refusal and gives an error line.
class Dialogs {
public:
    Dialogs(MainLoop& loop, ScriptedUser& user, StatusBar& status, Console& errors)
        : loop_(loop), user_(user), status_(status), errors_(errors), areas_(loop, errors) {}

    void attach(GeDialog* dialog);
    /// A dialog that dies while it is open is closed without a call to it.
    void detach(GeDialog* dialog);

    /// Runs the main loop until the dialog was closed. False when it could not open: it is open already, its
    /// layout or its InitValues failed.
    bool openModal(GeDialog* dialog, int32_t width, int32_t height);
    /// Opens beside the others; true as well when it is open already.
    bool openAsync(GeDialog* dialog, int32_t width, int32_t height);
    /// Opens at the place where the window of `pluginId` stood. False for another's place, or none.
    bool restore(GeDialog* dialog, int32_t pluginId, const WindowPlace* place);
    /// Closes without asking.
    void close(GeDialog* dialog);
    void closeAll();

    /// As the close button does: the dialog is asked and may refuse. False when it did.
    bool requestClose(GeDialog* dialog);
    /// Asks the dialog that opened last, as Ctrl-C does. False when none is open or it refused.
    bool requestCloseOfTop();
    /// As a click on a gadget, which turns a check box over: the dialog gets a BFM_ACTION with the gadget's
    /// value. False when there is no such gadget or nothing can be done with it.
    bool press(GeDialog* dialog, int32_t gadget);
    /// As an entry into a gadget: as `press`, with a new value. A number is brought into its range; false as
    /// well for a choice that isn't there.
    bool enter(GeDialog* dialog, int32_t gadget, const GeData& value);
    /// The same for a colour field: components 0 to 1, brightness up to the field's maximum.
    bool enterColour(GeDialog* dialog, int32_t gadget, const Vector& colour, float brightness);

    void setTitle(GeDialog* dialog, const String& title);
    void setTimer(GeDialog* dialog, int32_t milliseconds);
    /// Sends a core message to every open dialog.
    void coreMessage(int32_t id, const BaseContainer& message);

    /// The host's part in a message: calls Command, Timer or CoreMessage.
    static int32_t handle(GeDialog& dialog, const BaseContainer& message);

    /// Adds the gadgets of a resource, and its title when it has one. False when a number is taken.
    bool addResource(GeDialog* dialog, const resources::DialogResource& resource);
    /// Empties a group and opens it for new gadgets.
    void flushGroup(GeDialog* dialog, int32_t group);
    UserAreas& areas() { return areas_; }

    /// Null for a dialog that isn't attached. Valid until it is detached.
    DialogState* state(const GeDialog* dialog);
    /// The open ones, in the order of opening.
    std::vector<GeDialog*> openDialogs() const;
    /// The one that opened last of those that have the gadget; null without one.
    GeDialog* openDialogWith(int32_t gadget) const;

private:
    using StatePointer = std::shared_ptr<DialogState>;

    StatePointer find(const GeDialog* dialog) const;
    bool open(const StatePointer& state, int32_t width, int32_t height, bool modal);
    void startTimer(const StatePointer& state);
    void scheduleActions(const StatePointer& state);
    void perform(const StatePointer& state, const UserAction& action);
    void use(const StatePointer& state, const Gadget& gadget);
    void deliver(const StatePointer& state, const char* name, const BaseContainer& message);
    void shut(DialogState& state);

    MainLoop& loop_;
    ScriptedUser& user_;
    StatusBar& status_;
    Console& errors_;
    UserAreas areas_;
    std::vector<StatePointer> states_;
    std::vector<StatePointer> open_;
};

} // namespace headless
