// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "headless/documents/load_document.h"
#include "headless/documents/save_document.h"

namespace headless {

std::optional<int32_t> openDocumentFile(Host& host, const std::string& file) {
    host.status().setWork("Opening " + file);
    LoadedDocument loaded = openDocument(file);
    for (const std::string& warning : loaded.warnings) {
        host.errors().print(warning);
    }
    if (loaded.unit) {
        host.worldPreferences().SetLong(WPREF_UNITS_BASIC, *loaded.unit);
    }
    host.open(std::move(loaded.document));
    host.status().setWork("");
    return loaded.unit;
    return loaded.unit;
}

ExitStatus openCommand(Host& host, const Arguments& arguments) {
    const std::optional<std::string> target = arguments.value("--save");
    if (!target) {
        throw UsageError("open needs --save FILE.json");
    }
    const std::optional<int32_t> unit = openDocumentFile(host, arguments.operands.front());
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    saveDocument(*host.document(), *target, unit);
    return ExitStatus::done;
}

} // namespace headless
