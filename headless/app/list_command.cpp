// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include <array>
#include <charconv>
#include <cstdio>

#include "headless/app/description_list.h"
#include "headless/app/menu_list.h"
#include "headless/app/text_table.h"

namespace headless {

namespace {

std::string flagsText(int32_t flags) {
    std::array<char, 16> buffer{};
    const auto [end, error] =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<uint32_t>(flags), 16);
    return "0x" + std::string(buffer.data(), end);
}

void listPlugins(const Registrations& registrations) {
    TextTable table({"#", "KIND", "ID", "NAME", "DESCRIPTION OR HELP", "ICON", "INFO", "PRIORITY"});
    for (const std::unique_ptr<Registration>& registration : registrations.all()) {
        const PluginInfo& info = registration->info;
        const String& text = info.description.Content() ? info.description : info.help;
        table.add({std::to_string(&registration - registrations.all().data() + 1),
                   std::string(kindName(registration->kind)), std::to_string(info.id), info.name.GetUtf8(),
                   text.GetUtf8(), info.icon.GetUtf8(), flagsText(info.info),
                   registration->kind == PLUGINKIND_VIDEOPOST ? std::to_string(info.priority) : ""});
    }
    std::fputs(table.text().c_str(), stdout);
}

} // namespace

ExitStatus listCommand(Host& host, const Arguments& arguments) {
    const std::optional<std::string> file = arguments.value("--document");
    const std::string& what = arguments.operands.front();
    if (what != "descriptions" && arguments.operands.size() > 1) {
        throw UsageError("Only descriptions have a class");
    }
    if (what == "plugins" && file) {
        throw UsageError("Only descriptions and menus have a document");
    }
    if (file) {
        openDocumentFile(host, *file);
    }
    if (what == "descriptions") {
        listDescriptions(host,
                         arguments.operands.size() > 1 ? std::optional(arguments.operands[1]) : std::nullopt,
                         host.document());
    } else if (what == "menus") {
        if (!file) {
            // The host always has one open.
            host.open(std::make_unique<Document>());
        }
        std::fputs(menuList(host).c_str(), stdout);
    } else {
        listPlugins(host.registrations());
    }
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    // Lists are how an installation is looked at.
    return host.isWhole() ? ExitStatus::done : ExitStatus::failed;
}

} // namespace headless
