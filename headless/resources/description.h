// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace headless::resources {

/// What an entry of a description is. `other` stands for a keyword that this reader doesn't know: its name
/// and properties are kept.
enum class EntryKind {
    group,
    separator,
    staticText,
    boolean,
    integer,
    real,
    vector,
    colour,
    string,
    filename,
    link,
    shaderLink,
    inExclude,
    button,
    time,
    gradient,
    spline,
    other
};

/// How a real is shown. `meter` is a length in document units, `percent` a fraction shown times 100, `degree`
/// radians shown as degrees.
enum class Unit { none, real, percent, degree, meter, time };

/// A default as the container stores it: bool, whole number, real, three reals of a vector or colour, text of
/// a string or file name. Empty when the resource gives none.
using Value = std::variant<std::monostate, bool, int32_t, double, std::array<double, 3>, std::string>;

struct CycleItem {
    int32_t value = 0;
    std::string symbol;
    std::string label;
};

/// A property of an element that has no field of its own, such as `ANIM OFF`.
struct Property {
    std::string name;
    std::vector<std::string> arguments;
};

struct Entry {
    /// Parameter number; 0 of a group, separator or text without a name.
    int32_t id = 0;
    std::string symbol;
    /// The keyword of the file: "REAL", "IN_EXCLUDE".
    std::string keyword;
    EntryKind kind = EntryKind::other;
    std::string label;
    /// Name of the description that declares it, which differs from the one loaded when it was included.
    std::string origin;
    /// Index of the group that holds it in `Description::entries`; nothing at the top.
    std::optional<size_t> group;

    /// This and the ranges are in the unit that is stored, not the one shown: a percentage of 40 stands here
    /// as 0.4.
    Value defaultValue;
    std::optional<double> min, max, step, minSlider, maxSlider;
    Unit unit = Unit::none;
    std::string customGui;

    /// True of an integer chosen from a list. The list can be empty: then the plug-in fills it at run time.
    bool isCycle = false;
    std::vector<CycleItem> cycle;
    /// Names of the types that a link takes and doesn't take.
    std::vector<std::string> accepts, refuses;

    bool hidden = false;
    /// Of a group: whether it is open at first, and how many columns it has.
    bool open = false;
    int32_t columns = 1;

    std::vector<Property> properties;
};

/// One description with all that it includes, in the order in which an artist sees it: a group stands before
/// what it holds.
struct Description {
    std::string name;
    std::string label;
    std::vector<Entry> entries;

    /// Null when there is none. The number 0 finds nothing.
    const Entry* find(int32_t id) const;
    const Entry* findSymbol(std::string_view symbol) const;

    /// The groups that hold an entry of this description, outermost first.
    std::vector<const Entry*> groupPath(const Entry& entry) const;
};

} // namespace headless::resources
