// SPDX-License-Identifier: MIT
#include "headless/app/parameter_setting.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <optional>

#include "foundation/native_path.h"
#include "headless/app/arguments.h"
#include "headless/app/closest_names.h"
#include "host/document.h"
#include "host/material.h"
#include "host/object.h"

namespace headless {

namespace {

using resources::Entry;
using resources::EntryKind;

template <typename Number>
std::optional<Number> parseNumber(std::string_view text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && !text.empty() ? std::optional(number) : std::nullopt;
}

std::optional<double> parseReal(std::string_view text) {
    const std::optional<double> number = parseNumber<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

bool sameIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [&](char x, char y) { return lower(x) == lower(y); });
}

[[noreturn]] void fail(const Entry& entry, std::string_view text, const std::string& expected) {
    throw UsageError(entry.symbol + " can't be \"" + std::string(text) + "\": " + expected);
}

std::string numberText(double number) {
    std::array<char, 32> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return std::string(buffer.data(), end);
}

void requireRange(const Entry& entry, std::string_view text, double number) {
    if (entry.min && number < *entry.min) {
        fail(entry, text, "the least value is " + numberText(*entry.min));
    }
    if (entry.max && number > *entry.max) {
        fail(entry, text, "the greatest value is " + numberText(*entry.max));
    }
}

GeData readFlag(const Entry& entry, std::string_view text) {
    for (const char* const word : {"true", "on", "yes", "1"}) {
        if (sameIgnoringCase(text, word)) {
            return GeData(true);
        }
    }
    for (const char* const word : {"false", "off", "no", "0"}) {
        if (sameIgnoringCase(text, word)) {
            return GeData(false);
        }
    }
    fail(entry, text, "a flag is true or false");
}

GeData readChoice(const Entry& entry, std::string_view text) {
    const std::optional<int32_t> number = parseNumber<int32_t>(text);
    std::vector<std::string> names;
    for (const resources::CycleItem& item : entry.cycle) {
        if (number ? item.value == *number
                   : sameIgnoringCase(text, item.symbol) || sameIgnoringCase(text, item.label)) {
            return GeData(item.value);
        }
        names.push_back(item.symbol);
    }
    std::string expected = "it is one of";
    for (const std::string& name : names) {
        expected += " " + name;
    }
    fail(entry, text, expected + suggestion(text, names));
}

GeData readInteger(const Entry& entry, std::string_view text) {
    if (entry.isCycle && !entry.cycle.empty()) {
        return readChoice(entry, text);
    }
    const std::optional<int32_t> number = parseNumber<int32_t>(text);
    if (!number) {
        fail(entry, text, "it takes a whole number");
    }
    requireRange(entry, text, *number);
    return GeData(*number);
}

GeData readReal(const Entry& entry, std::string_view text) {
    const std::optional<double> number = parseReal(text);
    if (!number) {
        fail(entry, text, "it takes a number");
    }
    requireRange(entry, text, *number);
    return GeData(*number);
}

GeData readVector(const Entry& entry, std::string_view text) {
    std::array<float, 3> numbers{};
    std::string_view rest = text;
    for (size_t i = 0; i < numbers.size(); ++i) {
        const size_t comma = rest.find(',');
        const std::optional<double> number = parseReal(rest.substr(0, comma));
        const bool isLast = i + 1 == numbers.size();
        if (!number || (comma == std::string_view::npos) != isLast) {
            fail(entry, text, "it takes three numbers x,y,z");
        }
        numbers[i] = static_cast<float>(*number);
        rest = isLast ? "" : rest.substr(comma + 1);
    }
    return GeData(Vector(numbers[0], numbers[1], numbers[2]));
}

GeData readPath(std::string_view text) {
    if (text.empty()) {
        return GeData(Filename());
    }
    const std::filesystem::path path = std::filesystem::absolute(Quenza::nativePath(text));
    return GeData(Filename(String(Quenza::utf8Path(path.lexically_normal()))));
}

BaseObject* nextInTree(BaseObject* object) {
    if (BaseObject* const child = object->GetDown()) {
        return child;
    }
    while (object && !object->GetNext()) {
        object = object->GetUp();
    }
    return object ? object->GetNext() : nullptr;
}

/// Objects, or materials for a link that takes them.
std::vector<BaseList2D*> linkTargets(const Entry& entry, const BaseDocument& document) {
    std::vector<BaseList2D*> targets;
    if (std::ranges::find(entry.accepts, "Mbase") != entry.accepts.end()) {
        for (BaseMaterial* material = document.GetFirstMaterial(); material; material = material->GetNext()) {
            targets.push_back(material);
        }
        return targets;
    }
    for (BaseObject* object = document.GetFirstObject(); object; object = nextInTree(object)) {
        targets.push_back(object);
    }
    return targets;
}

GeData readLink(const Entry& entry, std::string_view text, const BaseDocument* document) {
    if (text.empty() || !document) {
        return GeData(static_cast<BaseList2D*>(nullptr));
    }
    std::vector<std::string> names;
    for (BaseList2D* const target : linkTargets(entry, *document)) {
        names.push_back(target->GetName().GetUtf8());
        if (names.back() == text) {
            return GeData(target);
        }
    }
    fail(entry, text, "the document has nothing of that name that it takes" + suggestion(text, names));
}

const Entry& findEntry(const resources::Description& description, std::string_view name) {
    const std::optional<int32_t> number = parseNumber<int32_t>(name);
    if (const Entry* const found = number ? description.find(*number) : description.findSymbol(name)) {
        return *found;
    }
    std::vector<std::string> names;
    for (const Entry& entry : description.entries) {
        if (entry.kind != EntryKind::group && entry.id != 0) {
            if (sameIgnoringCase(entry.symbol, name)) {
                return entry;
            }
            names.push_back(entry.symbol);
        }
    }
    throw UsageError(description.label + " has no parameter " + std::string(name) + suggestion(name, names) +
                     " (\"quenza-headless list descriptions\" names them all)");
}

} // namespace

GeData readSettingValue(const Entry& entry, std::string_view text, const BaseDocument* document) {
    switch (entry.kind) {
    case EntryKind::boolean:
        return readFlag(entry, text);
    case EntryKind::integer:
        return readInteger(entry, text);
    case EntryKind::real:
        return readReal(entry, text);
    case EntryKind::vector:
    case EntryKind::colour:
        return readVector(entry, text);
    case EntryKind::string:
        return GeData(String(text));
    case EntryKind::filename:
        return readPath(text);
    case EntryKind::link:
        return readLink(entry, text, document);
    default:
        throw UsageError(entry.symbol +
                         " can't be set here: it is no flag, number, vector, text, path or link");
    }
}

void applySetting(BaseList2D& node, const resources::Description& description, const std::string& setting) {
    const size_t equals = setting.find('=');
    if (equals == 0 || equals == std::string::npos) {
        throw UsageError("\"" + setting + "\" is no setting: it takes NAME=VALUE");
    }
    const Entry& entry = findEntry(description, std::string_view(setting).substr(0, equals));
    const GeData value =
        readSettingValue(entry, std::string_view(setting).substr(equals + 1), node.GetDocument());
    if (!node.SetParameter(DescID(entry.id), value)) {
        throw UsageError("The plug-in refused " + setting);
    }
}

} // namespace headless
