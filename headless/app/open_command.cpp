// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "foundation/native_path.h"
#include "headless/documents/load_document.h"
#include "headless/documents/save_document.h"

namespace headless {

std::optional<int32_t> openDocumentFile(Host& host, const std::string& file,
                                        const std::string& textureFolder) {
    host.status().setWork("Opening " + file);
    // The document's folder goes into scenes and links, which are read from anywhere.
    const std::filesystem::path path = std::filesystem::absolute(Quenza::nativePath(file));
    LoadedDocument loaded = openDocument(
        Quenza::utf8Path(path.lexically_normal()),
        [&host](int32_t unit) { host.worldPreferences().SetLong(WPREF_UNITS_BASIC, unit); }, textureFolder);
    for (const std::string& warning : loaded.warnings) {
        host.errors().print(warning);
    }
    host.open(std::move(loaded.document));
    host.status().setWork("");
    return loaded.unit;
}

std::string folderOf(const std::string& file) {
    const std::filesystem::path path = std::filesystem::absolute(Quenza::nativePath(file));
    return Quenza::utf8Path(path.lexically_normal().parent_path());
}

std::string saveTarget(const Arguments& arguments) {
    const std::optional<std::string> target = arguments.value("--save");
    if (!target) {
        throw UsageError(std::string(arguments.command->name) + " needs --save FILE.json");
    }
    return *target;
}

ExitStatus openCommand(Host& host, const Arguments& arguments) {
    const std::string target = saveTarget(arguments);
    const std::optional<int32_t> unit = openDocumentFile(host, arguments.operands.front(), folderOf(target));
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    saveDocument(*host.document(), target, unit);
    return ExitStatus::done;
}

} // namespace headless
