// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"

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
    bool GroupEnd();

    bool SetValue(int32_t id, const GeData& value);
    bool GetValue(int32_t id, GeData& value) const;
    void Enable(int32_t id, bool enabled);
};

void MessageDialog(const String& text);
/// True when the artist said yes.
bool QuestionDialog(const String& text);
