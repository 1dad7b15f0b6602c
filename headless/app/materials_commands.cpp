// SPDX-License-Identifier: MIT
#include "headless/app/commands.h"

#include "foundation/native_path.h"
#include "headless/app/document_nodes.h"
#include "headless/app/plugin_numbers.h"
#include "headless/documents/save_document.h"
#include "headless/runtime/files.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace headless {

namespace {

size_t countPluginMaterials(const Document& document) {
    const std::vector<Material*> materials = materialsOf(document);
    return static_cast<size_t>(std::ranges::count(materials, QUENZA_MATERIAL, &Material::type));
}

std::string counted(size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

constexpr std::string_view TEXTURE_FAILED = "Failed to load texture from: ";

std::vector<std::string> consoleLines(Host& host, size_t linesBefore) {
    const std::vector<std::string> lines = host.console().lines();
    return {lines.begin() + static_cast<ptrdiff_t>(linesBefore), lines.end()};
}

/// The plug-in tells why it stopped on its console. "no qzm" also follows an archive that can't be unpacked.
std::string importFailure(const std::vector<std::string>& lines) {
    if (lines.empty()) {
        return "";
    }
    if (lines.back() != "no qzm") {
        return ": " + lines.back();
    }
    const bool isUnpacked = std::ranges::none_of(
        lines, [](const std::string& line) { return line.starts_with("Could not unpack "); });
    return isUnpacked ? ": it is no .qzm, nor a .pqzm with one at its top" : ": it can't be unpacked";
}

} // namespace

ExitStatus convertMaterialsCommand(Host& host, const Arguments& arguments) {
    const std::string target = saveTarget(arguments);
    const std::optional<int32_t> unit = openDocumentFile(host, arguments.operands.front(), folderOf(target));
    Document& document = *host.document();
    for (const std::string& name : arguments.values("--material")) {
        for (Material* const material : nodesNamed(name, materialsOf(document), "material")) {
            if (material->type() == QUENZA_MATERIAL) {
                throw UsageError("The material \"" + name + "\" is one of the plug-in's already");
            }
            material->info |= BIT_ACTIVE;
        }
    }
    if (arguments.has("--material")) {
        // To "Convert only selected materials?".
        host.user().addAnswer(true);
    }
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    const size_t before = countPluginMaterials(document);
    if (!host.executeCommand(CONVERT_MATERIALS)) {
        throw HostError("Not all materials could be converted");
    }
    saveDocument(document, target, unit);
    std::puts((counted(countPluginMaterials(document) - before, "material") + " converted").c_str());
    return ExitStatus::done;
}

ExitStatus importMaterialsCommand(Host& host, const Arguments& arguments) {
    const std::string target = saveTarget(arguments);
    std::optional<int32_t> unit;
    if (const std::optional<std::string> into = arguments.value("--into")) {
        unit = openDocumentFile(host, *into, folderOf(target));
    } else {
        host.open(std::make_unique<Document>());
    }
    const std::filesystem::path file = Quenza::nativePath(arguments.operands.front());
    if (!files::isFile(file)) {
        throw HostError(arguments.operands.front() + ": there is no such file");
    }
    host.user().addFileAnswer(Quenza::utf8Path(std::filesystem::absolute(file).lexically_normal()));
    if (host.wasInterrupted()) {
        return ExitStatus::interrupted;
    }
    Document& document = *host.document();
    const size_t before = countPluginMaterials(document);
    const size_t linesBefore = host.console().lines().size();
    if (!host.executeCommand(IMPORT_MATERIALS)) {
        throw HostError(arguments.operands.front() + ": the materials can't be read" +
                        importFailure(consoleLines(host, linesBefore)));
    }
    for (const std::string& line : consoleLines(host, linesBefore)) {
        if (line.starts_with(TEXTURE_FAILED)) {
            host.errors().print("the texture " + line.substr(TEXTURE_FAILED.size()) + " was not found");
        }
    }
    saveDocument(document, target, unit);
    std::puts((counted(countPluginMaterials(document) - before, "material") + " imported").c_str());
    return ExitStatus::done;
}

} // namespace headless
