// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"

class GeUserArea;

/// Kinds of messages to a dialog; the number of the container that Message gets.
enum DialogMessage : int32_t {
    /// A gadget was used: its number under BFM_ACTION_ID, its value under the gadget's own number.
    BFM_ACTION = 0x41435431,
    BFM_ACTION_ID = 0x41434964,
    BFM_TIMERMESSAGE = 0x54494D72,
    /// A core message: its number under BFM_CORE_ID and its values under BFM_CORE_PAR1 and BFM_CORE_PAR2.
    BFM_CORE_MESSAGE = 0x434F5245,
    BFM_CORE_ID = 0x4D636930,
};

/// The core message that something in a document has changed.
inline constexpr int32_t EVMSG_CHANGE = 0x4D73436C;

/// A window of gadgets. Gadgets are named by number and hold a value each. All calls are the main thread's.
class GeDialog {
public:
    GeDialog();
    GeDialog(const GeDialog&) = delete;
    GeDialog& operator=(const GeDialog&) = delete;
    virtual ~GeDialog();

    /// Makes the gadgets.
    virtual bool CreateLayout() { return true; }
    /// Gives the gadgets their values, once the layout stands; false closes the dialog.
    virtual bool InitValues() { return true; }
    /// A gadget was used.
    virtual bool Command(int32_t /*id*/, const BaseContainer& /*message*/) { return true; }
    virtual void Timer(const BaseContainer& /*message*/) {}
    /// Everything that comes to the dialog; the host's handling calls the functions above and below.
    virtual int32_t Message(const BaseContainer& message, BaseContainer& result);
    /// True refuses the close.
    virtual bool AskClose() { return false; }
    virtual bool CoreMessage(int32_t /*id*/, const BaseContainer& /*message*/) { return false; }

    /// Opens the dialog modal, and returns when it was closed. True when it opened.
    bool OpenModal(int32_t width, int32_t height);
    /// Opens the dialog beside the others and returns at once.
    bool OpenAsync(int32_t pluginId, int32_t width, int32_t height);
    /// Closes the dialog without asking.
    void Close();
    bool IsOpen() const;
    /// Opens the dialog again where it stood when the host was closed; for CommandData::RestoreLayout.
    bool RestoreLayout(int32_t pluginId, void* secret);

    void SetTitle(const String& title);
    /// Milliseconds between Timer calls; 0 stops them.
    void SetTimer(int32_t milliseconds);

    bool AddStaticText(int32_t id, int32_t width, int32_t height, const String& text);
    bool AddButton(int32_t id, int32_t width, int32_t height, const String& text);
    bool AddCheckbox(int32_t id, int32_t width, int32_t height, const String& text);
    bool AddEditText(int32_t id, int32_t width, int32_t height);
    bool AddEditNumber(int32_t id, int32_t width, int32_t height);
    bool AddComboBox(int32_t id, int32_t width, int32_t height);
    bool AddChild(int32_t comboId, int32_t value, const String& text);
    bool GroupBegin(int32_t id, const String& title);
    /// A group whose gadgets stand in columns.
    bool GroupBegin(int32_t id, int32_t columns, const String& title);
    /// A group that shows a part of what it holds, with bars to move it; ends as every group.
    bool ScrollGroupBegin(int32_t id);
    bool GroupEnd();
    bool AddColorField(int32_t id, int32_t width, int32_t height);
    bool AddUserArea(int32_t id, int32_t width, int32_t height);
    /// Makes the gadgets of a dialog resource, res/dialogs/<name of the number>.res.
    bool LoadDialogResource(int32_t resourceId);
    /// Opens a group again, without the gadgets that it held; gadgets are then added until GroupEnd.
    void LayoutFlushGroup(int32_t id);
    /// The group's new gadgets are to be shown.
    void LayoutChanged(int32_t id);
    /// Shows the area in a user area gadget; it must outlive the window.
    bool AttachUserArea(GeUserArea& area, int32_t gadgetId);

    bool SetValue(int32_t id, const GeData& value);
    bool GetValue(int32_t id, GeData& value) const;
    void Enable(int32_t id, bool enabled);
    bool SetReal(int32_t id, float value, float minimum, float maximum, float step);
    bool SetColorField(int32_t id, const Vector& colour, float brightness, float maximumBrightness);
    bool GetColorField(int32_t id, Vector& colour, float& brightness) const;
};

void MessageDialog(const String& text);
/// True when the artist said yes.
bool QuestionDialog(const String& text);
