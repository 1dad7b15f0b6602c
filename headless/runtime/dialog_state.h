// SPDX-License-Identifier: MIT
#pragma once

#include "host/tables.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace headless {

/// Limits of a number's entries, and what its arrows add.
struct NumberRange {
    float minimum = 0.0f;
    float maximum = 0.0f;
    float step = 0.0f;
};

struct Gadget {
    GadgetKind kind = GADGET_STATICTEXT;
    int32_t id = 0;
    int32_t width = 0;
    int32_t height = 0;
    /// What is written on it; of a group its title.
    String text;
    /// Its name in the dialog resource; "" when code made it.
    std::string symbol;
    /// Of a choice the number of what is chosen, of a colour field the colour without its brightness.
    GeData value;
    bool enabled = true;
    /// Of a combo box or radio group: value and text.
    std::vector<std::pair<int32_t, String>> choices;
    /// Of a group: how many gadgets stand side by side.
    int32_t columns = 1;
    /// Of a number.
    std::optional<NumberRange> range;
    /// Of a colour field.
    float brightness = 1.0f;
    float maximumBrightness = 1.0f;

    bool isGroup() const { return kind == GADGET_GROUP_BEGIN || kind == GADGET_SCROLLGROUP_BEGIN; }
    bool hasChoices() const { return kind == GADGET_COMBOBOX || kind == GADGET_RADIOGROUP; }
    /// True when a user can do something with it.
    bool isUsable() const;
    /// What becomes of a user's entry: a number is brought into its range. Nothing for an entry that can't be
    /// made, such as a choice that isn't there.
    std::optional<GeData> entry(const GeData& value) const;
};

/// What the host knows of a dialog. Gadgets come in the order of the layout and live as long as the window;
/// those of a group stand between its beginning and its end, which is always there.
struct DialogState {
    GeDialog* dialog = nullptr;
    bool open = false;
    bool modal = false;
    int32_t width = 0;
    int32_t height = 0;
    String title;
    std::vector<Gadget> gadgets;
    /// Milliseconds between Timer calls, 0 for none; `timer` is the loop's number of it.
    int32_t timerInterval = 0;
    int timer = 0;
    /// Numbers of the loop's timers that stand for what the user will do.
    std::vector<int> actions;

    /// Null when there is none; number 0 names no gadget.
    Gadget* find(int32_t id);
    const Gadget* find(int32_t id) const;
    /// By the name in the resource or the text on it, whatever the case of ASCII letters, or by the number.
    const Gadget* findNamed(std::string_view name) const;

    /// Adds a gadget to the group that is open. A group's beginning opens it, with its end behind it. False
    /// when the number is taken, and for an end without an open group.
    bool add(GadgetKind kind, int32_t id, int32_t gadgetWidth, int32_t gadgetHeight, const String& text);
    /// The gadget that `add` made last. There must be one.
    Gadget& lastAdded() { return gadgets[cursor_ - 1]; }
    /// Takes out what is in a group and opens it again; gives what was taken out. Nothing, and no change,
    /// when there is no such group.
    std::optional<std::vector<Gadget>> flushGroup(int32_t id);
    /// Back to an empty layout.
    void clearLayout();

private:
    /// Index of the end of the group that a place lies in; the number of gadgets at the top.
    size_t endOfGroup(size_t place) const;

    /// Where the next gadget goes.
    size_t cursor_ = 0;
};

} // namespace headless
