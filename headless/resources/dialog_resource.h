// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace headless::resources {

enum class DialogElementKind {
    group,
    scrollGroup,
    groupEnd,
    staticText,
    button,
    checkbox,
    editText,
    editNumber,
    comboBox,
    radioGroup,
    colourField,
    userArea,
    separator
};

/// One entry of a combo box or radio group.
struct DialogChoice {
    int32_t value = 0;
    std::string text;
};

struct DialogRange {
    double minimum = 0.0;
    double maximum = 0.0;
    /// What one press on an arrow adds.
    double step = 1.0;
};

struct DialogElement {
    DialogElementKind kind = DialogElementKind::staticText;
    /// 0 of a group, text or separator without a name.
    int32_t id = 0;
    std::string symbol;
    std::string text;
    /// In pixels, 0 for what it needs.
    int32_t width = 0;
    int32_t height = 0;
    /// Of a group: how many gadgets stand side by side.
    int32_t columns = 1;
    bool isDisabled = false;
    std::optional<DialogRange> range;
    std::vector<DialogChoice> choices;
};

/// A dialog as its files describe it. Elements come in the order of the layout, those of a group between its
/// beginning and its end.
struct DialogResource {
    /// As the resource spells it: "IDD_REALTIME".
    std::string name;
    std::string title;
    std::vector<DialogElement> elements;
};

} // namespace headless::resources
