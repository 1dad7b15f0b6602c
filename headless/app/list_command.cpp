// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <type_traits>

#include "headless/app/export_settings.h"
#include "headless/app/text_table.h"

namespace headless {

namespace {

using resources::Entry;
using resources::EntryKind;

template <typename Number>
std::string numberText(Number number, auto... format) {
    std::array<char, 64> buffer{};
    return std::string(buffer.data(),
                       std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, format...).ptr);
}

std::string defaultText(const Entry& entry) {
    return std::visit(
        [](const auto& value) -> std::string {
            using Type = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Type, std::monostate>) {
                return "";
            } else if constexpr (std::is_same_v<Type, bool>) {
                return value ? "true" : "false";
            } else if constexpr (std::is_same_v<Type, std::string>) {
                return value;
            } else if constexpr (std::is_same_v<Type, std::array<double, 3>>) {
                return numberText(value[0]) + "," + numberText(value[1]) + "," + numberText(value[2]);
            } else {
                return numberText(value);
            }
        },
        entry.defaultValue);
}

bool holdsValue(const Entry& entry) {
    return entry.id != 0 && entry.kind != EntryKind::group && entry.kind != EntryKind::separator &&
           entry.kind != EntryKind::staticText;
}

void listPlugins(const Registrations& registrations) {
    TextTable table({"#", "KIND", "ID", "NAME", "DESCRIPTION OR HELP", "ICON", "INFO"});
    for (const std::unique_ptr<Registration>& registration : registrations.all()) {
        const PluginInfo& info = registration->info;
        const String& text = info.description.Content() ? info.description : info.help;
        table.add({std::to_string(&registration - registrations.all().data() + 1),
                   std::string(kindName(registration->kind)), std::to_string(info.id), info.name.GetUtf8(),
                   text.GetUtf8(), info.icon.GetUtf8(),
                   "0x" + numberText(static_cast<uint32_t>(info.info), 16)});
    }
    std::fputs(table.text().c_str(), stdout);
}

void printDescription(PluginKind kind, int32_t id, const resources::Description& description) {
    std::printf("%s (%s %d, \"%s\")\n", description.name.c_str(), std::string(kindName(kind)).c_str(), id,
                description.label.c_str());
    TextTable table({"ID", "NAME", "TYPE", "DEFAULT", "LABEL"});
    for (const Entry& entry : description.entries) {
        if (holdsValue(entry)) {
            table.add(
                {std::to_string(entry.id), entry.symbol, entry.keyword, defaultText(entry), entry.label});
        }
        for (const resources::CycleItem& item : entry.cycle) {
            table.add({"", "", "", "", numberText(item.value) + " " + item.symbol + " " + item.label});
        }
    }
    std::fputs(table.text().c_str(), stdout);
}

/// What --set takes, when the plug-in has the page without having registered its type.
void listRenderSettings(Host& host, bool isFirst) {
    if (host.registrations().find(RENDER_SETTINGS)) {
        return;
    }
    if (const auto loaded = host.resources()->loadDescription(RENDER_SETTINGS_DESCRIPTION)) {
        std::fputs(isFirst ? "" : "\n", stdout);
        printDescription(PLUGINKIND_VIDEOPOST, RENDER_SETTINGS, *loaded);
    }
}

void listDescriptions(Host& host) {
    bool isFirst = true;
    bool isWhole = true;
    for (const std::unique_ptr<Registration>& registration : host.registrations().all()) {
        if (!registration->info.description.Content()) {
            continue;
        }
        const resources::Description* const description = host.descriptionOf(registration->info.id);
        if (!description) {
            isWhole = false;
            continue;
        }
        std::fputs(isFirst ? "" : "\n", stdout);
        printDescription(registration->kind, registration->info.id, *description);
        isFirst = false;
    }
    listRenderSettings(host, isFirst);
    if (!isWhole) {
        throw HostError("Some descriptions could not be read");
    }
}

} // namespace

ExitStatus listCommand(Host& host, const Arguments& arguments) {
    if (arguments.operands.front() == "plugins") {
        listPlugins(host.registrations());
    } else {
        listDescriptions(host);
    }
    return host.wasInterrupted() ? ExitStatus::interrupted : ExitStatus::done;
}

} // namespace headless
